// SPDX-License-Identifier: Apache-2.0
#include "analog_track.h"

#include <cmath>
#include <limits>

namespace {

constexpr size_t kBlock = 16;
constexpr double kInfinite = std::numeric_limits<double>::infinity();

using Range = AnalogTrack::Range;

// A value that is not known changes nothing.
Range united(const Range& a, const Range& b)
{
    return {std::fmin(a.least, b.least), std::fmax(a.greatest, b.greatest)};
}

constexpr Range kNothing {kInfinite, -kInfinite};

}

AnalogTrack::AnalogTrack(const WaveRow& row, bool isSigned)
    : m_isSigned(isSigned)
    , m_all(kNothing)
{
    const qint64 samples = row.samples->size();
    m_values.reserve(size_t(samples));
    for (qint64 sample = 0; sample < samples;) {
        const double value = numberOf(row.valueAt(sample), isSigned);
        const qint64 end = row.changes.next(sample + 1);
        m_values.insert(m_values.end(), size_t(end - sample), value);
        sample = end;
    }
    std::vector<Range> blocks;
    blocks.reserve(m_values.size());
    for (const double value : m_values)
        blocks.push_back({value, value});
    while (blocks.size() > 1) {
        std::vector<Range> above((blocks.size() + kBlock - 1) / kBlock, kNothing);
        for (size_t i = 0; i < blocks.size(); ++i)
            above[i / kBlock] = united(above[i / kBlock], blocks[i]);
        m_levels.push_back(above);
        blocks = std::move(above);
    }
    if (!m_values.empty())
        m_all = range(0, samples);
}

Range AnalogTrack::range(qint64 first, qint64 end) const
{
    Range result = kNothing;
    auto from = size_t(first);
    auto to = size_t(end);
    const auto take = [&](size_t level, size_t i) {
        result = united(
            result, level == 0 ? Range {m_values[i], m_values[i]} : m_levels[level - 1][i]);
    };
    for (size_t level = 0; from < to; ++level) {
        const bool isTop = level == m_levels.size();
        while (from < to && (isTop || from % kBlock != 0))
            take(level, from++);
        while (from < to && to % kBlock != 0)
            take(level, --to);
        from /= kBlock;
        to /= kBlock;
    }
    return result;
}
