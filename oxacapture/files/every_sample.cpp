// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/every_sample.h"

namespace OXA_CAPTURE {

namespace {

SampleTable everySample(const CapturedWindow& window, bool holds)
{
    const SampleLayout& layout = window.samples.layout();
    const std::vector<quint64> unknown = unknownRow(layout);
    SampleTable all(layout);
    for (qint64 sample = 0; sample < window.samples.size(); ++sample) {
        const quint64* const row = window.samples.row(sample);
        all.append(row);
        while (all.size() < window.place.offset(sample + 1))
            all.append(holds ? row : unknown.data());
    }
    return all;
}

}

bool addPassedOver(CapturedCore& core, qint64 most)
{
    qint64 samples = 0;
    for (const CapturedWindow& window : core.windows)
        samples += window.place.span();
    if (samples > most)
        return false;
    for (CapturedWindow& window : core.windows) {
        if (window.place.stored.empty())
            continue;
        window.samples = everySample(window, core.holds());
        window.place.samples = window.samples.size();
        window.place.stored.clear();
    }
    if (core.knowsGaps())
        core.storage = {};
    return true;
}

}
