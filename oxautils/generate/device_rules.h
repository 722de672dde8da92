// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_DEVICE_RULES_H
#define OXAUTILS_GENERATE_DEVICE_RULES_H

#include "oxautils/generate/oxa_arg.h"

#include <dev/device_db.h>

namespace OXA {

/// The catalogue's record of the part in `arg`; empty when there is none.
DEV::ChipInfo chipOf(const OxaArg& arg);

/// The file name of the control-core top that the device needs.
QString controlTopName(const DEV::ChipInfo& chip);

/// Whether the device has distributed memory.
bool hasShadowSram(const DEV::ChipInfo& chip);

/// Whether the device is a "ZV" variant that the cores have to be configured for.
bool needsZvDefine(const DEV::ChipInfo& chip);

}

#endif
