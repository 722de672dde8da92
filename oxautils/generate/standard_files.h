// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_STANDARD_FILES_H
#define OXAUTILS_GENERATE_STANDARD_FILES_H

#include "oxautils/generate/oxa_arg.h"
#include "oxautils/model/ao_core.h"

#include <QList>
#include <QString>

namespace OXA {

/// `name` as a reference in Verilog (IEEE 1364, escaped identifiers): with a backslash before and a
/// space after it when it has other characters than letters, digits, "_" and "$". Empty names and
/// those that begin with a backslash are not changed.
OXAUTILS_EXPORT QString escapedSignalName(const QString& name);

/// Writes the control core's two files below the work directory. False, with a critical message,
/// when one cannot be written.
OXAUTILS_EXPORT bool std_generateFileForAoCtrl(const OxaArg& arg, const QList<AoCore*>& cores);

/// Writes the defines, parameters, expressions and initial values of every core below the work
/// directory: in the directory of its position, under the name of its index. False, with a critical
/// message, at the first file that cannot be written; the files before it are kept.
OXAUTILS_EXPORT bool std_generateFilesForAoCore(const OxaArg& arg, const QList<AoCore*>& cores);

/// Writes the top wrapper: the JTAG primitive, the control core and the analyzer cores, with every
/// watched signal as a port. False, with a critical message, when it cannot be written.
OXAUTILS_EXPORT bool std_generateOxaTop(const OxaArg& arg, const QList<AoCore*>& cores);

}

#endif
