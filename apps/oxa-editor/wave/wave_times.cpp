// SPDX-License-Identifier: Apache-2.0
#include "wave_times.h"

#include <algorithm>
#include <cmath>

using OXA_CAPTURE::kNoSample;

WaveTimes::WaveTimes(WaveformPtr waveform, double clockHz)
    : m_waveform(std::move(waveform))
    , m_clockHz(clockHz)
{
}

double WaveTimes::unit() const { return std::pow(10.0, m_waveform->timeExponent); }

std::pair<qint64, qint64> WaveTimes::section(qint64 sample) const
{
    const int number = m_waveform->isCut && !m_waveform->times ? m_waveform->windowAt(sample) : -1;
    if (number < 0)
        return {0, m_waveform->samples};
    const WaveWindow& window = m_waveform->windows[size_t(number)];
    return {window.first, window.first + window.samples};
}

/// The sample whose time is 0.
qint64 WaveTimes::origin(qint64 sample) const
{
    const int number = m_waveform->isCut ? m_waveform->windowAt(sample) : -1;
    if (number < 0)
        return 0;
    const WaveWindow& window = m_waveform->windows[size_t(number)];
    return window.trigger == kNoSample ? window.first : window.trigger;
}

double WaveTimes::at(qint64 sample) const
{
    if (m_waveform->times)
        return double((*m_waveform->times)[size_t(sample)]) * unit();
    return double(sample - origin(sample)) / m_clockHz;
}

double WaveTimes::sampleAt(double seconds, qint64 sample) const
{
    if (!m_waveform->times)
        return double(origin(sample)) + seconds * m_clockHz;
    const std::vector<quint64>& times = *m_waveform->times;
    const double wanted = seconds / unit();
    const auto behind = std::lower_bound(times.begin(), times.end(), wanted,
        [](quint64 time, double value) { return double(time) < value; });
    if (behind == times.begin() || behind == times.end())
        return double(behind - times.begin());
    const double before = double(*std::prev(behind));
    return double(behind - times.begin()) - (double(*behind) - wanted) / (double(*behind) - before);
}

std::optional<double> WaveTimes::between(qint64 a, qint64 b) const
{
    if (!isKnown() || section(a) != section(b))
        return {};
    if (!m_waveform->times)
        return double(b - a) / m_clockHz;
    const std::vector<quint64>& times = *m_waveform->times;
    const quint64 from = times[size_t(qMin(a, b))];
    const double distance = double(times[size_t(qMax(a, b))] - from) * unit();
    return a <= b ? distance : -distance;
}

double clockOf(const std::vector<quint64>& times, int exponent)
{
    if (times.size() < 2)
        return 0;
    std::vector<quint64> periods;
    for (size_t i = 1; i < times.size(); ++i)
        periods.push_back(times[i] - times[i - 1]);
    const auto middle = periods.begin() + std::ptrdiff_t(periods.size() / 2);
    std::nth_element(periods.begin(), middle, periods.end());
    return *middle > 0 ? 1 / (double(*middle) * std::pow(10.0, exponent)) : 0;
}
