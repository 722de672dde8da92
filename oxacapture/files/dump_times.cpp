// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/dump_times.h"

#include "oxacapture/files/capture_writers.h"
#include "oxacapture/waveform/time_text.h"

#include <algorithm>
#include <cmath>

namespace OXA_CAPTURE {

namespace {

constexpr double kMostDelay = 64; // periods from a trigger to where other cores see it

/// The numbers of a window's samples by their times, which have `perSample` units for each. Empty
/// when these do not tell them: numbers grow, and there are no more than `most`.
std::vector<qint64> numbersOf(const CapturedWindow& window, double perSample, qint64 most)
{
    std::vector<qint64> numbers;
    for (qint64 sample = 0; sample < window.samples.size(); ++sample) {
        const double number
            = double(window.times[size_t(sample)] - window.times.front()) / perSample;
        if (!(number < double(most)) || (sample > 0 && std::llround(number) <= numbers.back()))
            return {};
        numbers.push_back(std::llround(number));
    }
    return numbers;
}

/// Where the trigger sample of the first window is that another core has forced, or not; nothing
/// without one.
std::optional<quint64> firstTrigger(const CapturedCore& core, bool forced)
{
    for (const CapturedWindow& window : core.windows) {
        const qint64 trigger = window.triggerOffset();
        if (trigger != kNoSample && window.place.forced == forced)
            return window.times[size_t(trigger)];
    }
    return std::nullopt;
}

/// Lets `core` be forced by `source` as in the run of the file, which has `units` of time in a
/// second: so that the windows get the distance again that they have there.
void align(CapturedCore& core, CapturedCore& source, double tolerance, double units)
{
    const std::optional<quint64> from = firstTrigger(source, false);
    const std::optional<quint64> to = firstTrigger(core, true);
    if (!from || !to || core.clockHz <= 0 || source.clockHz <= 0)
        return;
    const bool same = tolerance == 0; // they sample at the same edges
    const double periods = (double(*to) - double(*from)) / units * source.clockHz;
    const double uncertain = same ? 1 : 0.5 * source.clockHz / core.clockHz;
    const double delay = std::round(periods - uncertain);
    if (!(delay >= 0 && delay < kMostDelay))
        return;
    core.forcedBy = {source.index};
    source.pulseDelay = int(delay);
    if (same)
        core.sampleClock = source.sampleClock = QString("of core %1").arg(source.index);
}

}

void completeTimes(CapturedWindow& window)
{
    std::vector<quint64> times;
    for (size_t sample = 0; sample < window.times.size(); ++sample)
        addTime(window.times[sample], window.place.offset(qint64(sample)) - qint64(times.size()),
            times);
    window.times = std::move(times);
}

void takeNumbers(CapturedCore& core, OXA::CoreStorage::Keep keep, double perSample, qint64& room)
{
    for (CapturedWindow& window : core.windows) {
        std::vector<qint64> numbers = numbersOf(window, perSample, room);
        if (numbers.empty() || numbers.back() < window.samples.size())
            continue;
        room -= numbers.back();
        if (window.place.triggerSample != kNoSample)
            window.place.triggerSample = numbers[size_t(window.place.triggerSample)];
        window.place.stored = std::move(numbers);
        core.storage.keep = keep;
    }
}

void alignAsInText(Capture& capture, const QString& text, double units)
{
    const auto find = [&capture](int index) {
        return std::find_if(capture.begin(), capture.end(),
            [index](const CapturedCore& core) { return core.index == index; });
    };
    for (const AlignedCore& aligned : readAlignedCores(text)) {
        const auto core = find(aligned.core);
        const auto source = find(aligned.source);
        if (core != capture.end() && source != capture.end() && core != source)
            align(*core, *source, aligned.tolerance, units);
    }
}

}
