#ifndef OXACAPTURE_TARGET_WINDOW_DECODER_H
#define OXACAPTURE_TARGET_WINDOW_DECODER_H

#include "oxacapture/target/core_status.h"
#include "oxacapture/trigger/trigger_model.h"

namespace OXA_CAPTURE {

/// A window as a core's memory holds it.
struct DecodedWindow {
    SampleTable samples; ///< field 0: the data signals; none is unknown
    qint64 triggerOffset = kNoSample; ///< its sample among them
};

/// Words of memory that `decodeWindows` needs; for a run with the settings of `setup`.
OXACAPTURE_EXPORT qint64 usedWords(
    const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup);

/// Words behind those, of a window that still waited for its trigger when the core was stopped.
OXACAPTURE_EXPORT qint64 waitingWords(
    const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup);

/// Whether the samples tell the windows without their marks: when there is one, which is complete,
/// for it ends where the status says.
OXACAPTURE_EXPORT bool samplesSuffice(
    const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup);

/// The windows in the memory of a core at rest, in the order in which they were taken.
///
/// `memory` holds `usedWords` words, without their marks when `samplesSuffice`; `shortOnes` a bit
/// for each window that `setup` asks for. False, with `error`, when a window has no trigger's mark
/// or the status is none of such a run. A Lite core has one window, without a trigger.
OXACAPTURE_EXPORT bool decodeWindows(const CoreIdentity& core, const CoreStatus& status,
    const TriggerSetup& setup, const BitString& shortOnes, const BitString& memory,
    std::vector<DecodedWindow>& windows, QString& error);

/// The last samples of a core at rest that still waited for a trigger when it was stopped, the
/// oldest first; none when it did not. `memory` holds the words of `usedWords` and `waitingWords`.
/// False, with `error`, when the status is none of such a run.
OXACAPTURE_EXPORT bool decodeWaiting(const CoreIdentity& core, const CoreStatus& status,
    const TriggerSetup& setup, const BitString& memory, SampleTable& samples, QString& error);

}

#endif
