// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/time_axis.h"

#include "oxacapture/waveform/time_unit.h"

#include <algorithm>
#include <cmath>

namespace OXA_CAPTURE {

namespace {

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

/// The clock of a core that stores only some samples, by the times of all, when they tell it; else
/// 0.
double clockOfStored(const CapturedCore& core)
{
    if (core.storage.isDefault())
        return 0;
    quint64 period = 0;
    for (const CapturedWindow& window : core.windows) {
        for (size_t i = 1; i < window.times.size(); ++i) {
            const quint64 now = window.times[i] - window.times[i - 1];
            period = period == 0 ? now : period;
            if (now != period || now == 0)
                return 0;
        }
    }
    return period > 0 ? std::pow(10, -core.timeExponent) / double(period) : 0;
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
    if (m_kind != TimeKind::Waveform)
        m_placement.emplace(capture, m_kind == TimeKind::Window,
            [this](const CapturedCore& core, double samples) { return length(core, samples); });
}

CoreAlignment TimeAxis::alignment(size_t core) const
{
    return m_placement ? m_placement->alignment(core) : CoreAlignment();
}

std::optional<size_t> TimeAxis::group(size_t core, size_t window) const
{
    if (!m_placement || !m_placement->isJoined(core, window))
        return std::nullopt;
    return m_placement->group(core, window);
}

qint64 TimeAxis::length(const CapturedCore& core, double samples) const
{
    return m_kind == TimeKind::Window ? periodsInUnits(samples, core.clockHz, m_exponent)
                                      : std::llround(samples);
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
        return quint64(m_placement->start(core, window) + length(own, double(number)));
    quint64 time = own.windows[window].times[size_t(number)];
    for (int exponent = own.timeExponent; exponent > m_exponent; --exponent)
        time *= 10;
    return time;
}

QString TimeAxis::text() const
{
    QMap<int, double> clocks;
    for (const CapturedCore& core : m_capture) {
        const double clock = m_kind == TimeKind::Waveform ? clockOfStored(core) : core.clockHz;
        if (m_kind != TimeKind::Waveform || clock > 0)
            clocks.insert(core.index, clock);
    }
    const QString text = timeText(m_kind, clocks, isOfRun());
    const QString places = placesText();
    return places.isEmpty() ? text : text + "; " + places;
}

/// Which distances between windows are known.
QString TimeAxis::placesText() const
{
    QStringList texts;
    for (size_t core = 0; core < m_capture.size(); ++core) {
        const CapturedCore& own = m_capture[core];
        const CoreAlignment aligned = alignment(core);
        const QString name = QString("core %1").arg(own.index);
        if (m_placement && own.windows.size() > 1 && own.windows.front().place.stamp
            && m_placement->group(core, 0) == m_placement->group(core, 1))
            texts += name + ": windows at their distances";
        if (aligned.core >= 0)
            texts += alignedText({own.index, aligned.core, aligned.tolerance});
        else if (aligned.isWanted)
            texts += name + ": not aligned, " + aligned.reason;
    }
    return texts.join("; ");
}

}
