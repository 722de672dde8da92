// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/csv_times.h"

#include "files/fail.h"
#include "oxacapture/files/capture_writers.h"
#include "oxacapture/waveform/time_unit.h"

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr int kDigits = 15; // of a frequency
constexpr double kRounding = 0.51; // units, that a time may differ from its period's multiple

using Times = std::vector<quint64>;

bool fits(const Times& times, double hz, double unitsPerSecond)
{
    for (size_t i = 0; i < times.size(); ++i) {
        const double expected = double(i) / hz * unitsPerSecond;
        if (std::abs(expected - double(times[i])) > kRounding)
            return false;
    }
    return true;
}

/// The frequency with the fewest digits, of which the times in all windows are periods; 0 when
/// there is none.
double clockOf(const CapturedCore& core)
{
    const auto longest = std::max_element(core.windows.begin(), core.windows.end(),
        [](const auto& a, const auto& b) { return a.times.size() < b.times.size(); });
    if (longest == core.windows.end() || longest->times.size() < 2 || longest->times.back() == 0)
        return 0;
    const double units = std::pow(10, -core.timeExponent);
    const double average
        = double(longest->times.size() - 1) / double(longest->times.back()) * units;
    for (int digits = 1; digits <= kDigits; ++digits) {
        const double hz = QByteArray::number(average, 'g', digits).toDouble();
        if (std::all_of(core.windows.begin(), core.windows.end(),
                [&](const CapturedWindow& window) { return fits(window.times, hz, units); }))
            return hz;
    }
    return 0;
}

bool hasTimes(const CapturedCore& core)
{
    return !core.windows.empty() && !core.windows.front().times.empty();
}

/// Whether the times of each window begin with 0.
bool isByWindow(const CapturedCore& core)
{
    return std::all_of(core.windows.begin(), core.windows.end(),
        [](const CapturedWindow& window) { return window.times.front() == 0; });
}

bool growsToo(const CapturedCore& core)
{
    for (size_t i = 1; i < core.windows.size(); ++i) {
        if (core.windows[i].times.front() <= core.windows[i - 1].times.back())
            return false;
    }
    return true;
}

/// Whether the cores have the times of clocks. Windows of one sample each tell no clock.
bool takeClocks(Capture& capture)
{
    std::vector<double> clocks;
    for (const CapturedCore& core : capture) {
        const bool byWindow = hasTimes(core) && isByWindow(core);
        const bool isSingle = std::all_of(core.windows.begin(), core.windows.end(),
            [](const CapturedWindow& window) { return window.times.size() < 2; });
        clocks.push_back(byWindow && !isSingle ? clockOf(core) : 0);
        if (hasTimes(core) && clocks.back() == 0 && !(byWindow && isSingle && !growsToo(core)))
            return false;
    }
    for (size_t i = 0; i < capture.size(); ++i) {
        capture[i].clockHz = clocks[i];
        for (CapturedWindow& window : capture[i].windows)
            window.times.clear();
    }
    return true;
}

}

bool readSeconds(const QByteArray& text, quint64& units, int& decimals)
{
    const int point = text.indexOf('.');
    QByteArray digits = text;
    if (point >= 0)
        digits.remove(point, 1);
    const bool isNumber = !digits.isEmpty() && point != 0
        && std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    bool ok = false;
    units = digits.toULongLong(&ok);
    decimals = point < 0 ? 0 : int(text.size()) - point - 1;
    return isNumber && ok && point != text.size() - 1 && decimals <= -kLeastTimeExponent;
}

bool completeTimes(Capture& capture, QString* error)
{
    if (takeClocks(capture))
        return true;
    for (CapturedCore& core : capture) {
        if (hasTimes(core) && !growsToo(core))
            return OXA::fail(error,
                QString("the times of core %1 are neither those of a waveform, which grow, nor"
                        " those of a clock in each window")
                    .arg(core.index));
        for (CapturedWindow& window : core.windows) {
            if (!window.times.empty())
                window.times.push_back(endOfLast(window.times));
        }
    }
    return true;
}

}
