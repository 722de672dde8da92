#ifndef OXAUTILS_CONFIG_STANDARD_CONFIG_H
#define OXAUTILS_CONFIG_STANDARD_CONFIG_H

#include "oxautils/model/ao_core.h"

#include <QList>
#include <QString>

namespace OXA {

/// Replaces the file `path` by a Standard configuration of `cores`, checksum included. The old file
/// stays whole until the new one is. Reports nothing when the file cannot be opened; callers that
/// need to know check the file afterwards. A text with a character that XML cannot hold leaves the
/// old file and a critical message.
OXAUTILS_EXPORT void writeOXAConfigToXml(const QList<AoCore*>& cores, const QString& path);

/// The cores of the Standard file `path`, in document order; the caller owns them.
///
/// On failure the list is empty, `ok` is false and `error` says why; either may be null. Attributes
/// that are no numbers read as 0; the checksum is not looked at (see `readOXACRCForXml`).
OXAUTILS_EXPORT QList<AoCore*> readOXAConfigFromXml(
    const QString& path, bool* ok = nullptr, QString* error = nullptr);

/// Whether the file `path` can be parsed and every core, port and unit in it carries the attributes
/// that the Standard form requires.
OXAUTILS_EXPORT bool checkOXAStandardFile(const QString& path);

/// The checksum that the file `path`, of either mode, carries; empty when there is none to be read.
OXAUTILS_EXPORT QString readOXACRCForXml(const QString& path);

}

#endif
