// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_LITE_FILES_H
#define OXAUTILS_GENERATE_LITE_FILES_H

#include "oxautils/generate/oxa_arg.h"
#include "oxautils/model/ao_core_lite.h"

#include <QList>

namespace OXA {

// Only the first core of a Lite configuration is built; the signals of the others become ports.

/// Writes the control core's define file below the work directory. False, with a critical message,
/// when it cannot be written.
OXAUTILS_EXPORT bool lite_generateFilesForAoCtrl(const OxaArg& arg, QList<AOCore_Lite*> cores);

/// Writes the defines and parameters of the first core below the work directory. False, with a
/// critical message, at the first file that cannot be written.
OXAUTILS_EXPORT bool lite_generateFilesForAoCore(const OxaArg& arg, QList<AOCore_Lite*> cores);

/// Writes the top wrapper. False, with a critical message, when it cannot be written.
OXAUTILS_EXPORT bool lite_generateOxaTop(const OxaArg& arg, QList<AOCore_Lite*> cores);

}

#endif
