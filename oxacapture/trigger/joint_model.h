// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TRIGGER_JOINT_MODEL_H
#define OXACAPTURE_TRIGGER_JOINT_MODEL_H

#include "oxacapture/trigger/core_plan.h"

#include <functional>

namespace OXA_CAPTURE {

/// How the cores of a waveform are modelled.
struct JointOptions {
    qint64 forceAt = kNoSample; ///< sample of each core that a client forces
    int eventsOf = -1; ///< place of the core whose run gets its events, to the end of the waveform
    std::function<bool()> goesOn {}; ///< called repeatedly; false ends the work
};

/// What all `cores`, in the order of their places, capture of `waveform`, by the trigger model.
///
/// A core with `TriggerSetup::forcedBy` takes a trigger sample at its first edge after each own
/// trigger of those cores, unless a window is open. A core tells its trigger `pulseDelay` edges
/// after the trigger sample, by a change of level: two changes between two edges of a forced core
/// cancel each other. Triggers that another core forced are not passed on. A waveform without edges
/// has no common time, so no core forces another.
///
/// Empty when `goesOn` ended the work.
OXACAPTURE_EXPORT std::vector<ModelRun> runModels(const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, const JointOptions& options = {});

}

#endif
