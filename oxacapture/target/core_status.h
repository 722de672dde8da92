// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_CORE_STATUS_H
#define OXACAPTURE_TARGET_CORE_STATUS_H

#include "oxacapture/target/core_identity.h"

namespace OXA_CAPTURE {

/// The snapshot of a core's status (docs/jtag-protocol.md).
struct CoreSnapshot {
    bool fresh = false; ///< the sample clock had edges since the status was last read
    bool open = false; ///< a window's trigger was seen, its end not
    int level = 0; ///< expressions of the sequence satisfied
    qint64 windows = 0; ///< number of complete windows
    std::vector<int> matches; ///< of the match units while the core waited, up to 255
};

/// The status register of a core (docs/jtag-protocol.md). Except for the snapshot, the fields about
/// a run are valid when the core is at rest.
struct CoreStatus {
    bool armed = false; ///< in TCK's clock domain
    bool running = false; ///< the sample clock's domain has received the arming, or not yet a stop
    bool finished = false; ///< everything was captured, and not yet stopped
    bool open = false; ///< a window's trigger was seen, and the run stopped before its end
    bool wentRound = false; ///< the window being taken has filled all its words
    bool complete = false; ///< everything was captured
    int level = 0; ///< expressions of the sequence satisfied
    /// Samples in a Lite core's memory; else the word after the last sample, in its window.
    qint64 position = 0;
    qint64 windows = 0; ///< number of complete windows; undefined when all are
    CoreSnapshot snapshot; ///< at rest: of the run's end

    /// Nothing in the core changes with its sample clock now.
    bool atRest() const { return armed == running && running == finished; }
};

/// Bits of the status register of a core.
OXACAPTURE_EXPORT int statusBits(const CoreIdentity& identity);
/// Decodes it; `bits` has `statusBits` or more.
OXACAPTURE_EXPORT CoreStatus parseStatus(const BitString& bits, const CoreIdentity& identity);

}

#endif
