// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_HARDWARE_CHANGES_H
#define OXACAPTURE_TARGET_HARDWARE_CHANGES_H

#include "oxacapture/target/capture_session.h"

namespace OXA_CAPTURE {

/// Whether the chip of `session` can run as `wanted`. Adds what needs another synthesis to
/// `messages`.
bool fitsHardware(
    const CaptureSession& session, const std::vector<CorePlan>& wanted, Messages& messages);

}

#endif
