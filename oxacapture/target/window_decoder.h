// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_WINDOW_DECODER_H
#define OXACAPTURE_TARGET_WINDOW_DECODER_H

#include "oxacapture/target/core_status.h"
#include "oxacapture/trigger/trigger_model.h"

namespace OXA_CAPTURE {

/// A window, read from a core's memory.
struct DecodedWindow {
    SampleTable samples; ///< field 0: the data signals; none is unknown
    qint64 triggerOffset = kNoSample; ///< where the trigger sample is in `samples`
    /// The numbers of the samples, counted from the first one; empty: they are consecutive, or of a
    /// core that stores no gaps.
    std::vector<qint64> stored {};
    bool forced = false; ///< a trigger of another core was seen at the trigger sample
    std::optional<quint32> stamp {}; ///< the trigger sample's number in the run, modulo 2^32
};

/// Words of memory that `decodeWindows` needs, for a run with the settings of `setup`.
OXACAPTURE_EXPORT qint64 usedWords(
    const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup);

/// Words after those, of a window that still waited for its trigger when the core was stopped.
OXACAPTURE_EXPORT qint64 waitingWords(
    const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup);

/// Whether the windows can be found without their marks: when there is only one and it is complete,
/// because the status has its end.
OXACAPTURE_EXPORT bool samplesSuffice(
    const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup);

/// The windows in the memory of a core at rest, in the order in which they were taken.
///
/// `memory` has `usedWords` words, without their marks when `samplesSuffice`; `windowWords` has a
/// word for each window of `setup`, or for those that are complete. False, with `error`, when a
/// window has no mark or the status cannot be that of such a run. A Lite core has one window,
/// without a trigger.
OXACAPTURE_EXPORT bool decodeWindows(const CoreIdentity& core, const CoreStatus& status,
    const TriggerSetup& setup, const BitString& windowWords, const BitString& memory,
    std::vector<DecodedWindow>& windows, QString* error);

/// The last samples of a core at rest that still waited for a trigger when it was stopped, the
/// oldest first; none when it did not wait. `memory` has the words of `usedWords` and
/// `waitingWords`. False, with `error`, when the status cannot be that of such a run.
OXACAPTURE_EXPORT bool decodeWaiting(const CoreIdentity& core, const CoreStatus& status,
    const TriggerSetup& setup, const BitString& memory, DecodedWindow& waiting, QString* error);

}

#endif
