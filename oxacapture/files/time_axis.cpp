// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/time_axis.h"

#include "oxacapture/waveform/time_unit.h"

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kGap = 16; // a window is this many times as long as the gap behind it

TimeKind kindOf(const Capture& capture)
{
    TimeKind kind = TimeKind::Waveform;
    for (const CapturedCore& core : capture) {
        const bool timed = std::all_of(core.windows.begin(), core.windows.end(),
            [](const CapturedWindow& window) { return !window.times.empty(); });
        if (!core.windows.empty() && !timed)
            kind = std::max(
                kind, core.clockHz > 0 && core.knowsGaps() ? TimeKind::Window : TimeKind::Numbers);
    }
    return kind;
}

}

TimeAxis::TimeAxis(const Capture& capture)
    : m_capture(capture)
    , m_kind(kindOf(capture))
{
    double fastest = 0;
    int finest = kMostTimeExponent;
    for (const CapturedCore& core : capture) {
        fastest = std::max(fastest, core.clockHz);
        finest = std::min(finest, core.timeExponent);
    }
    m_exponent = m_kind == TimeKind::Waveform ? finest
        : m_kind == TimeKind::Window          ? timeExponentFor(fastest)
                                              : kNumbersExponent;
    for (const CapturedCore& core : capture) {
        m_starts.emplace_back();
        quint64 start = 0;
        for (const CapturedWindow& window : core.windows) {
            m_starts.back().push_back(start);
            const qint64 samples = window.place.offset(window.samples.size());
            start += since(core, samples + std::max(samples / kGap, qint64(1)));
        }
    }
}

quint64 TimeAxis::since(const CapturedCore& core, qint64 sample) const
{
    if (m_kind != TimeKind::Window)
        return quint64(sample);
    return quint64(std::llround(double(sample) / core.clockHz * std::pow(10, -m_exponent)));
}

quint64 TimeAxis::at(size_t core, size_t window, qint64 sample) const
{
    return atNumber(core, window, m_capture[core].windows[window].place.offset(sample));
}

quint64 TimeAxis::after(size_t core, size_t window, qint64 sample) const
{
    return atNumber(core, window, m_capture[core].windows[window].place.offset(sample) + 1);
}

quint64 TimeAxis::atNumber(size_t core, size_t window, qint64 number) const
{
    const CapturedCore& own = m_capture[core];
    if (m_kind != TimeKind::Waveform)
        return m_starts[core][window] + since(own, number);
    quint64 time = own.windows[window].times[size_t(number)];
    for (int exponent = own.timeExponent; exponent > m_exponent; --exponent)
        time *= 10;
    return time;
}

QString TimeAxis::text() const
{
    QMap<int, double> clocks;
    for (const CapturedCore& core : m_capture)
        clocks.insert(core.index, core.clockHz);
    return timeText(m_kind, clocks);
}

}
