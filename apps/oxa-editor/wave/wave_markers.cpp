// SPDX-License-Identifier: Apache-2.0
#include "wave_markers.h"

#include <algorithm>

namespace {

constexpr int kLetters = 26;
constexpr int kCursors = 2;

}

QString WaveMarkers::name(int marker)
{
    const QString letter = QChar('A' + marker % kLetters);
    return marker < kLetters ? letter : letter + QString::number(marker / kLetters);
}

void WaveMarkers::add(qint64 sample)
{
    auto place = std::find(m_samples.begin() + kCursors, m_samples.end(), -1);
    if (place == m_samples.end())
        place = m_samples.insert(place, -1);
    *place = sample;
}

void WaveMarkers::removeMore() { m_samples.resize(kCursors); }

void WaveMarkers::limit(qint64 samples)
{
    for (qint64& sample : m_samples)
        sample = sample < samples ? sample : -1;
}

std::vector<std::pair<qint64, qint64>> WaveMarkers::spans() const
{
    std::vector<std::pair<qint64, qint64>> spans;
    for (size_t i = 0; i + 1 < m_samples.size(); i += 2) {
        const auto [first, last] = std::minmax(m_samples[i], m_samples[i + 1]);
        if (first >= 0)
            spans.emplace_back(first, last);
    }
    return spans;
}
