#ifndef OXAUTILS_GENERATE_DEVICE_RULES_H
#define OXAUTILS_GENERATE_DEVICE_RULES_H

#include "oxautils/generate/oxa_arg.h"

#include <dev/device_db.h>

namespace OXA {

/// The catalogue's record of the part that `arg` asks for; empty when there is none.
DEV::ChipInfo chipOf(const OxaArg& arg);

/// The file name of the control-core top that the device needs.
QString controlTopName(const DEV::ChipInfo& chip);

/// Whether the device has distributed memory.
bool hasShadowSram(const DEV::ChipInfo& chip);

/// Whether the device is one of those whose "ZV" variant the cores have to know about, and is that.
bool needsZvDefine(const DEV::ChipInfo& chip);

}

#endif
