// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_CHECKSUM_H
#define OXAUTILS_CONFIG_CHECKSUM_H

#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include <QString>

namespace OXA {

/// The checksum at the end of a Standard file of `cores`, 16 binary digits. It covers only part of
/// the configuration, and no name of more than four characters: the format's rule.
OXAUTILS_EXPORT QString checksumOf(const QList<AoCore*>& cores);

/// The same for a Lite file.
OXAUTILS_EXPORT QString checksumOf(const QList<AOCore_Lite*>& cores);

/// The correct checksum for the content of the file `path`, of either mode, to compare with
/// `readOXACRCForXml`. Empty when the file cannot be read. It differs from the checksum of the
/// cores read from the file where reading normalises: here expressions count as written.
OXAUTILS_EXPORT QString computeOXACRCForXml(const QString& path);

}

#endif
