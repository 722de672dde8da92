// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_SOURCE_LIST_H
#define OXAUTILS_GENERATE_SOURCE_LIST_H

#include "oxautils/generate/oxa_arg.h"

#include <QStringList>

namespace OXA {

/// The installed sources of `coreCount` Standard cores, then the control-core top for the device.
/// Paths are concatenated, not cleaned.
QStringList standardSources(const OxaArg& arg, int coreCount);

/// The same for Lite: the sources of one core for any number of cores.
QStringList liteSources(const OxaArg& arg);

/// The generated wrapper.
QString topWrapperPath(const OxaArg& arg);

/// The include directories, cleaned: the work directory, then the installed cores of the mode.
QStringList standardIncludePaths(const OxaArg& arg);
QStringList liteIncludePaths(const OxaArg& arg);

}

#endif
