// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/trigger/core_plan.h"

namespace OXA_CAPTURE {

std::vector<CorePlan> corePlans(const QList<OXA::AoCore*>& cores,
    const QList<OXA::AOCore_Lite*>& liteCores, const OXA::OxaArg& arg, Messages& messages)
{
    std::vector<CorePlan> all;
    for (const OXA::AoCore* core : cores) {
        CorePlan simulated;
        simulated.core = core;
        simulated.request = sampleRequest(*core);
        triggerSetup(*core, simulated.name(), simulated.setup, messages);
        simulated.setup.forcedBy = OXA::forcingPlaces(cores, *core);
        simulated.powerUpPosition = powerUpPosition(*core, arg);
        all.push_back(std::move(simulated));
    }
    // Only the first core of a Lite configuration is built.
    for (const OXA::AOCore_Lite* core : liteCores.mid(0, 1)) {
        CorePlan simulated;
        simulated.lite = core;
        simulated.request = sampleRequest(*core);
        all.push_back(std::move(simulated));
    }
    return all;
}

QString unknownBitsWarning(
    const CorePlan& core, const SampleTable& samples, const ModelRun& run, qint64 forceAt)
{
    const std::vector<qint64>& firstUnknown = run.progress.firstUnknown;
    for (size_t unit = 0; unit < firstUnknown.size(); ++unit) {
        const qint64 first = firstUnknown[unit];
        if (first == kNoSample || !dependsOnUnknown(core.setup, samples, forceAt, run.pulses))
            continue;
        return QString("unknown values decide when it triggers; M%1 first compares one at sample "
                       "%2, as 0")
            .arg(QString::number(core.setup.units[unit].index), QString::number(first));
    }
    return {};
}

QList<int> forcingIndexes(const std::vector<CorePlan>& cores, const TriggerSetup& setup)
{
    QList<int> indexes;
    for (const int place : setup.forcedBy) {
        if (size_t(place) < cores.size())
            indexes += cores[size_t(place)].index();
    }
    return indexes;
}

CapturedCore capturedCore(const CorePlan& core)
{
    CapturedCore captured;
    captured.index = core.index();
    captured.items = core.items();
    captured.sampleClock = core.request.clock;
    captured.fallingEdge = core.request.fallingEdge;
    if (core.core) {
        captured.storage = core.core->storage;
        captured.pulseDelay = pulseDelay(*core.core);
    }
    return captured;
}

CapturedCore capturedCore(const CorePlan& core, const SampleTable& samples, const ModelRun& run)
{
    CapturedCore captured = capturedCore(core);
    captured.windows = cutWindows(run.windows, samples);
    if (core.core)
        captured.progress = progressText(core.setup, run.progress);
    return captured;
}

}
