// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_OXA_MODE_H
#define OXAUTILS_CONFIG_OXA_MODE_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// The mode of a configuration file. Hosts compare with the numbers.
enum OxaMode : int {
    Invalid = 10086, ///< cannot be read, or another mode
    Standard = 10087, ///< cores with triggers; also a readable file without mode
    Lite = 10088, ///< cores that only capture
};

/// The mode of the file `path`.
OXAUTILS_EXPORT OxaMode oxaModeFromOxaConfigFile(const QString& path);

/// The text of the version element of the file `path`; null when it cannot be read or has none.
OXAUTILS_EXPORT QString versionFromOxaConfigFile(const QString& path);

/// Writes a configuration without cores to `path`, without mode element when `mode` is Invalid.
/// When the file cannot be written, it is unchanged, and nothing is reported.
OXAUTILS_EXPORT void fillInfoForEmptyOxaConfig(const QString& path, OxaMode mode);

}

#endif
