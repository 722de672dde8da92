#ifndef OXACAPTURE_TARGET_FIND_ANALYZER_H
#define OXACAPTURE_TARGET_FIND_ANALYZER_H

#include "oxacapture/target/capture_session.h"
#include "oxacapture/target/openocd_link.h"

namespace OXA_CAPTURE {

/// Finds the device whose analyzer `isWanted`, a session that has begun: tries `taps`, one after
/// the other. Null, with `error`, when none of them has it, when `goesOn` says no, or after two
/// minutes.
OXACAPTURE_EXPORT std::unique_ptr<CaptureSession> findAnalyzer(OpenOcdLink& link,
    const QStringList& taps, const std::function<bool(CaptureSession&)>& isWanted,
    const std::function<bool()>& goesOn, QString& error);

/// Says yes for a second longer than `goesOn`: so long cores that were armed have to be stopped.
OXACAPTURE_EXPORT std::function<bool()> aSecondLonger(const std::function<bool()>& goesOn);

}

#endif
