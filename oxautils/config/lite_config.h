#ifndef OXAUTILS_CONFIG_LITE_CONFIG_H
#define OXAUTILS_CONFIG_LITE_CONFIG_H

#include "oxautils/model/ao_core_lite.h"

#include <QList>
#include <QString>

namespace OXA {

/// Replaces the file `path` by a Lite configuration of `cores`, checksum included. The old file
/// stays whole until the new one is. Reports nothing when the file cannot be opened. A text with a
/// character that XML cannot hold leaves the old file and a critical message.
OXAUTILS_EXPORT void writeOXAConfigToXml_Lite(
    const QList<AOCore_Lite*>& cores, const QString& path);

/// The cores of the Lite file `path`, in document order; the caller owns them. An empty file is a
/// configuration without cores.
///
/// On failure the list is empty, `ok` is false and `error` says why; either may be null. Throws
/// CompareException at a version that is none, which the Standard reader catches.
OXAUTILS_EXPORT QList<AOCore_Lite*> readOXAConfigFromXml_Lite(
    const QString& path, bool* ok = nullptr, QString* error = nullptr);

/// Whether the file `path` can be parsed and every core in it carries the attributes that the Lite
/// form requires.
OXAUTILS_EXPORT bool checkOXALiteFile(const QString& path);

}

#endif
