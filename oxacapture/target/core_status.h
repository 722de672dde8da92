#ifndef OXACAPTURE_TARGET_CORE_STATUS_H
#define OXACAPTURE_TARGET_CORE_STATUS_H

#include "oxacapture/target/core_identity.h"

namespace OXA_CAPTURE {

/// What a core was doing a moment ago (docs/jtag-protocol.md).
struct CoreSnapshot {
    bool fresh = false; ///< the sample clock ticked since the status was last read
    bool open = false; ///< a window's trigger was seen, its end not
    int level = 0; ///< expressions of the sequence satisfied
    qint64 windows = 0; ///< complete ones
    std::vector<int> matches; ///< of the match units while the core waited, up to 255
};

/// What a core is doing, or did (docs/jtag-protocol.md). What is told of a run counts once the core
/// is at rest, but for the snapshot.
struct CoreStatus {
    bool armed = false;
    bool running = false; ///< the sample clock's side has taken notice, or not seen a stop yet
    bool finished = false;
    bool open = false; ///< a window's trigger was seen, and the run stopped before its end
    bool wentRound = false; ///< the window being taken has filled its words once
    bool complete = false; ///< everything was captured
    int level = 0; ///< expressions of the sequence satisfied
    /// Samples in a Lite core's memory; else the word behind the last sample in its window's.
    qint64 position = 0;
    qint64 windows = 0; ///< complete ones; of no meaning when all are
    CoreSnapshot snapshot; ///< at rest: of the run's end

    bool atRest() const { return armed == running && running == finished; }
};

OXACAPTURE_EXPORT int statusBits(const CoreIdentity& identity);
OXACAPTURE_EXPORT CoreStatus parseStatus(const BitString& bits, const CoreIdentity& identity);

}

#endif
