#ifndef OXACAPTURE_TRIGGER_CORE_PLAN_H
#define OXACAPTURE_TRIGGER_CORE_PLAN_H

#include "oxacapture/files/capture_result.h"

namespace OXA_CAPTURE {

/// A core of a configuration with what it samples and looks for; one of the two is not null.
struct CorePlan {
    const OXA::AoCore* core = nullptr;
    const OXA::AOCore_Lite* lite = nullptr;
    SampleRequest request;
    TriggerSetup setup; ///< of a Standard core
    /// Takes the place of `setup.triggerPos` in what a Standard core captures from power-up on.
    qint64 powerUpPosition = 0;

    int index() const { return core ? core->index : lite->index; }
    QList<OXA::SignalItem> items() const { return core ? core->captureSignals : lite->signalList; }
    QString name() const { return QString("core %1").arg(index()); }
};

/// The cores that become hardware on the device that `arg` names: all of a Standard configuration,
/// the first of a Lite one. They look at the given cores, which have to stay. What no hardware does
/// is told in `messages`; the core concerned is among the cores all the same.
OXACAPTURE_EXPORT std::vector<CorePlan> corePlans(const QList<OXA::AoCore*>& cores,
    const QList<OXA::AOCore_Lite*>& liteCores, const OXA::OxaArg& arg, Messages& messages);

/// What the model of `core` makes of `samples`, which are those of its request.
OXACAPTURE_EXPORT ModelRun runModel(
    const CorePlan& core, const SampleTable& samples, qint64 forceAt = kNoSample);

/// Unknown bits are common before a reset; they are worth a word when they decide the trigger. That
/// word for the run with this `progress`, or an empty text.
OXACAPTURE_EXPORT QString unknownBitsWarning(const CorePlan& core, const SampleTable& samples,
    const TriggerProgress& progress, qint64 forceAt = kNoSample);

/// What `run` keeps of `samples`.
OXACAPTURE_EXPORT CapturedCore capturedCore(
    const CorePlan& core, const SampleTable& samples, const ModelRun& run);

}

#endif
