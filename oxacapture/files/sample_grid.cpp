// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/sample_grid.h"

#include "files/fail.h"
#include "oxacapture/files/capture_writers.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kMostSamples = qint64(1) << 26; // that are not captured ones

// The lowest rate with whole periods for all clocks; 0 without one.
qint64 commonMultiple(const Capture& capture)
{
    qint64 multiple = 1;
    for (const CapturedCore& core : capture) {
        const qint64 hz = std::llround(core.clockHz);
        if (hz < 1 || double(hz) != core.clockHz)
            return 0;
        const qint64 factor = hz / std::gcd(multiple, hz);
        if (multiple > std::numeric_limits<qint64>::max() / factor)
            return 0;
        multiple *= factor;
    }
    return multiple;
}

}

SampleGrid::SampleGrid(const Capture& capture)
    : m_capture(capture)
    , m_axis(capture)
{
    if (m_axis.kind() == TimeKind::Waveform)
        placeTimes();
    else
        placeNumbers();
    const std::vector<std::vector<qint64>> packed = m_starts;
    if (m_axis.isOfRun() && !(placeRun() && lastEnd() <= kMostSamples))
        m_starts = packed;
    m_size = lastEnd();
}

qint64 SampleGrid::lastEnd() const
{
    qint64 end = 0;
    for (size_t core = 0; core < m_capture.size(); ++core) {
        const auto& windows = m_capture[core].windows;
        if (!windows.empty())
            end = std::max(end, at(core, windows.size() - 1, windows.back().samples.size()));
    }
    return end;
}

/// Moves the windows to their places on the axis; false when the grid has no time.
bool SampleGrid::placeRun()
{
    const bool timed = m_axis.kind() == TimeKind::Window;
    if (timed && m_hz <= 0)
        return false;
    const double perUnit = timed ? m_hz * std::pow(10, m_axis.exponent()) : 1;
    for (size_t core = 0; core < m_capture.size(); ++core) {
        const auto& windows = m_capture[core].windows;
        qint64 end = 0;
        for (size_t window = 0; window < windows.size(); ++window) {
            qint64& start = m_starts[core][window];
            start
                = std::max(end, qint64(std::llround(double(m_axis.at(core, window, 0)) * perUnit)));
            end = start
                + windows[window].place.offset(windows[window].samples.size()) * m_steps[core];
        }
    }
    return true;
}

void SampleGrid::placeTimes()
{
    std::vector<quint64> times;
    for (size_t core = 0; core < m_capture.size(); ++core) {
        const auto& windows = m_capture[core].windows;
        for (size_t window = 0; window < windows.size(); ++window) {
            for (qint64 sample = 0; sample < windows[window].samples.size(); ++sample)
                times.push_back(m_axis.at(core, window, sample));
        }
    }
    if (times.empty())
        return;
    m_first = *std::min_element(times.begin(), times.end());
    for (const quint64 time : times)
        m_period = std::gcd(m_period, time - m_first);
    m_period = std::max(m_period, quint64(1));
    m_hz = std::pow(10, -m_axis.exponent()) / double(m_period);
}

void SampleGrid::placeNumbers()
{
    const bool sameClock = std::all_of(m_capture.begin(), m_capture.end(),
        [this](const CapturedCore& core) { return core.clockHz == m_capture.front().clockHz; });
    const bool timed = m_axis.kind() == TimeKind::Window;
    const qint64 multiple = timed && !sameClock ? commonMultiple(m_capture) : 0;
    m_hz = !timed ? 0 : sameClock ? m_capture.front().clockHz : double(multiple);
    m_hasRate = !timed || sameClock || multiple > 0;
    for (const CapturedCore& core : m_capture) {
        m_steps.push_back(multiple > 0 ? multiple / std::llround(core.clockHz) : 1);
        m_starts.emplace_back();
        qint64 start = 0;
        for (const CapturedWindow& window : core.windows) {
            m_starts.back().push_back(start);
            start += window.place.offset(window.samples.size()) * m_steps.back();
        }
    }
}

qint64 SampleGrid::ofTime(quint64 time) const
{
    return qint64((time - m_first + m_period - 1) / m_period);
}

qint64 SampleGrid::ofNumber(size_t core, size_t window, qint64 number) const
{
    return m_starts[core][window] + number * m_steps[core];
}

qint64 SampleGrid::at(size_t core, size_t window, qint64 sample) const
{
    return m_steps.empty()
        ? ofTime(m_axis.at(core, window, sample))
        : ofNumber(core, window, m_capture[core].windows[window].place.offset(sample));
}

qint64 SampleGrid::after(size_t core, size_t window, qint64 sample) const
{
    return m_steps.empty()
        ? ofTime(m_axis.after(core, window, sample))
        : ofNumber(core, window, m_capture[core].windows[window].place.offset(sample) + 1);
}

bool SampleGrid::isUsable(QString* error) const
{
    qint64 captured = 0;
    for (const CapturedCore& core : m_capture)
        captured += capturedSamples(core);
    if (m_hasRate && m_size <= std::max(captured, kMostSamples))
        return true;
    return OXA::fail(error,
        "the format has one sample rate, and no rate below " + QString::number(kMostSamples)
            + " samples suits all of these; choose .vcd, .fst or .csv");
}

}
