// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_EVERY_SAMPLE_H
#define OXACAPTURE_FILES_EVERY_SAMPLE_H

#include "oxacapture/files/capture_result.h"

namespace OXA_CAPTURE {

/// Adds the samples of `core` that were passed over, with the values of the stored one before; with
/// unknown ones when signals may have changed (`CapturedCore::holds`). Cores that do not know their
/// gaps stay as they are. False, without a change, when that makes more than `most` samples.
OXACAPTURE_EXPORT bool addPassedOver(CapturedCore& core, qint64 most);

}

#endif
