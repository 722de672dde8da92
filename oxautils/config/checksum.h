#ifndef OXAUTILS_CONFIG_CHECKSUM_H
#define OXAUTILS_CONFIG_CHECKSUM_H

#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include <QString>

namespace OXA {

/// The checksum that a Standard file of `cores` ends with, 16 binary digits. Only part of the
/// configuration enters it, and no name of more than four characters does; stored checksums depend
/// on that.
OXAUTILS_EXPORT QString checksumOf(const QList<AoCore*>& cores);

/// The same for a Lite file.
OXAUTILS_EXPORT QString checksumOf(const QList<AOCore_Lite*>& cores);

/// The checksum that the file `path`, of either mode, should carry for what it holds now, to be
/// compared with `readOXACRCForXml`. Empty when it cannot be read. Differs from the checksum of the
/// cores read from it where reading normalises: expressions count as they are written.
OXAUTILS_EXPORT QString computeOXACRCForXml(const QString& path);

}

#endif
