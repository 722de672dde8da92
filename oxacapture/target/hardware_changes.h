// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_HARDWARE_CHANGES_H
#define OXACAPTURE_TARGET_HARDWARE_CHANGES_H

#include "oxacapture/target/core_identity.h"
#include "oxacapture/trigger/core_plan.h"

namespace OXA_CAPTURE {

/// Whether cores with these `identities`, built as `built`, can run as `wanted`. Adds what needs
/// another synthesis to `messages`.
OXACAPTURE_EXPORT bool fitsHardware(const std::vector<CoreIdentity>& identities,
    const std::vector<CorePlan>& built, const std::vector<CorePlan>& wanted, Messages& messages);

}

#endif
