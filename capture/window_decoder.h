#ifndef CAPTURE_WINDOW_DECODER_H
#define CAPTURE_WINDOW_DECODER_H

#include "capture/core_status.h"
#include "capture/trigger_model.h"

namespace OXA_CAPTURE {

/// A window as a core's memory holds it.
struct DecodedWindow {
    SampleTable samples; ///< field 0: the data signals; none is unknown
    qint64 triggerOffset = kNoSample; ///< its sample among them
};

/// Words of memory that `decodeWindows` needs; for a run with the settings of `setup`.
OXACAPTURE_EXPORT qint64 usedWords(
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

}

#endif
