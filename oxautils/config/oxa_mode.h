#ifndef OXAUTILS_CONFIG_OXA_MODE_H
#define OXAUTILS_CONFIG_OXA_MODE_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// What a configuration file describes. Hosts compare with the numbers.
enum OxaMode : int {
    Invalid = 10086, ///< it cannot be read, or its mode is neither of the two
    Standard = 10087, ///< cores with triggers; also a readable file that names no mode
    Lite = 10088, ///< cores that only capture
};

/// The mode of the file `path`.
OXAUTILS_EXPORT OxaMode oxaModeFromOxaConfigFile(const QString& path);

/// The text of the version element of the file `path`; null when it cannot be read or has none.
OXAUTILS_EXPORT QString versionFromOxaConfigFile(const QString& path);

/// Writes the skeleton of a configuration without cores into `path`, with no mode element when
/// `mode` is Invalid. Fails silently when the file cannot be written, and then leaves it alone.
OXAUTILS_EXPORT void fillInfoForEmptyOxaConfig(const QString& path, OxaMode mode);

}

#endif
