// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_VERILOG_WORD_H
#define OXAUTILS_MODEL_VERILOG_WORD_H

#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

namespace OXA {

/// Why Verilog does not always read the signal name `name`, written by `escapedSignalName`, as one
/// token: "contains white space, ...". Null when it does, or when the name is empty.
///
/// What follows the end of such a token is read as Verilog. Besides white space and control
/// characters, a backquote breaks it: preprocessors also replace macros inside escaped names.
OXAUTILS_EXPORT const char* wordFault(const QString& name);

/// `core 1, T0: the signal name "a b" contains ...`, for each such name in a wrapper of `cores`;
/// each name of a core once.
OXAUTILS_EXPORT QStringList wordFaults(const QList<AoCore*>& cores);
OXAUTILS_EXPORT QStringList wordFaults(const QList<AOCore_Lite*>& cores); ///< Lite cores

}

#endif
