// SPDX-License-Identifier: Apache-2.0
#include "wave_span.h"

#include <algorithm>

using namespace OXA_CAPTURE;

namespace {

/// The samples of the data signals; null when there are none, or only parts of them.
const SampleTable* dataOf(const Waveform& waveform)
{
    const int width = OXA::flattenedNames(waveform.captured.items).size();
    const auto data
        = std::find_if(waveform.rows.begin(), waveform.rows.end(), [&](const auto& row) {
              return !row->isEvent && row->field == 0 && row->samples->layout().width(0) == width;
          });
    return data == waveform.rows.end() ? nullptr : (*data)->samples.get();
}

/// `spans` in time, those that share samples as one.
WaveSpans united(WaveSpans spans)
{
    std::sort(spans.begin(), spans.end());
    WaveSpans result;
    for (const auto& span : spans) {
        if (!result.empty() && span.first <= result.back().second)
            result.back().second = qMax(result.back().second, span.second);
        else
            result.push_back(span);
    }
    return result;
}

/// `spans`, each divided between the windows of which there are samples.
WaveSpans divided(const WaveSpans& spans, const Waveform& waveform)
{
    if (!waveform.isCut)
        return spans;
    WaveSpans result;
    for (const auto& [first, last] : spans) {
        for (const WaveWindow& window : waveform.windows) {
            const qint64 from = qMax(first, window.first);
            const qint64 to = qMin(last, window.first + window.samples - 1);
            if (from <= to)
                result.emplace_back(from, to);
        }
    }
    return result;
}

/// The trigger among these samples.
qint64 triggerIn(const Waveform& waveform, qint64 first, qint64 last)
{
    const auto found = std::find_if(
        waveform.windows.begin(), waveform.windows.end(), [&](const WaveWindow& window) {
            return window.trigger >= first && window.trigger <= last;
        });
    return found == waveform.windows.end() ? kNoSample : found->trigger;
}

}

CapturedCore cutSpans(const Waveform& waveform, WaveSpans spans)
{
    CapturedCore core = waveform.captured;
    core.windows.clear();
    if (waveform.isEven)
        core.storage = {};
    core.storage.gapBits = 0; // of what is cut out, the gaps are not known
    const SampleTable* data = dataOf(waveform);
    if (!data)
        return core;
    std::vector<Window> places;
    for (const auto& [first, last] : divided(united(std::move(spans)), waveform)) {
        Window place;
        place.firstSample = first;
        place.samples = last - first + 1;
        place.triggerSample = triggerIn(waveform, first, last);
        places.push_back(place);
    }
    core.windows = cutWindows(places, *data);
    if (waveform.times)
        addTimes(core, *waveform.times, waveform.timeExponent);
    return core;
}
