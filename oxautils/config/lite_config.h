// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_LITE_CONFIG_H
#define OXAUTILS_CONFIG_LITE_CONFIG_H

#include "oxautils/model/ao_core_lite.h"

#include <QList>
#include <QString>

namespace OXA {

/// Replaces the file `path` by a Lite configuration of `cores`, checksum included. The old file is
/// unchanged when the new one cannot be opened, which is not reported, and when a text contains a
/// character that XML cannot, which is a critical message.
OXAUTILS_EXPORT void writeOXAConfigToXml_Lite(
    const QList<AOCore_Lite*>& cores, const QString& path);

/// The cores of the Lite file `path`, in document order; the caller owns them. An empty file is a
/// configuration without cores.
///
/// On failure the list is empty, `ok` is false and `error` has the reason; both may be null. Throws
/// CompareException when the version is not valid; the Standard reader catches it.
OXAUTILS_EXPORT QList<AOCore_Lite*> readOXAConfigFromXml_Lite(
    const QString& path, bool* ok = nullptr, QString* error = nullptr);

/// Whether the file `path` can be parsed and every core in it has the attributes that the Lite form
/// requires.
OXAUTILS_EXPORT bool checkOXALiteFile(const QString& path);

}

#endif
