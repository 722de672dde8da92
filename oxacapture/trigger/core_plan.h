// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TRIGGER_CORE_PLAN_H
#define OXACAPTURE_TRIGGER_CORE_PLAN_H

#include "oxacapture/files/capture_result.h"

namespace OXA_CAPTURE {

/// A core of a configuration with its signals and settings; one of the two pointers is not null.
struct CorePlan {
    const OXA::AoCore* core = nullptr; ///< a Standard core, not owned; else null
    const OXA::AOCore_Lite* lite = nullptr; ///< a Lite core, not owned; else null
    SampleRequest request; ///< the signals that it samples
    TriggerSetup setup; ///< of a Standard core
    /// Replaces `setup.triggerPos` in the power-up capture of a Standard core.
    qint64 powerUpPosition = 0;

    int index() const { return core ? core->index : lite->index; } ///< in the file
    /// The data signals.
    QList<OXA::SignalItem> items() const { return core ? core->captureSignals : lite->signalList; }
    /// "core 0", by its index.
    QString name() const { return QStringLiteral("core %1").arg(index()); }
};

/// The cores that are built on the device that `arg` names: all of a Standard configuration, the
/// first of a Lite one. They point to the given cores, which have to outlive them. What no hardware
/// can do is reported in `messages`; such a core is still in the result.
OXACAPTURE_EXPORT std::vector<CorePlan> corePlans(const QList<OXA::AoCore*>& cores,
    const QList<OXA::AOCore_Lite*>& liteCores, const OXA::OxaArg& arg, Messages& messages);

/// The indexes of those of `cores` whose triggers force a core that runs with `setup`.
OXACAPTURE_EXPORT QList<int> forcingIndexes(
    const std::vector<CorePlan>& cores, const TriggerSetup& setup);

/// A warning when unknown bits, which are common before a reset, decide the trigger in `run`; else
/// an empty text.
OXACAPTURE_EXPORT QString unknownBitsWarning(const CorePlan& core, const SampleTable& samples,
    const ModelRun& run, qint64 forceAt = kNoSample);

/// Core `core` with its signals, and what else is known of it before a run, without windows.
OXACAPTURE_EXPORT CapturedCore capturedCore(const CorePlan& core);
/// The windows of `run`, with their samples from `samples`.
OXACAPTURE_EXPORT CapturedCore capturedCore(
    const CorePlan& core, const SampleTable& samples, const ModelRun& run);

}

#endif
