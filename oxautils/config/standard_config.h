// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_STANDARD_CONFIG_H
#define OXAUTILS_CONFIG_STANDARD_CONFIG_H

#include "oxautils/model/ao_core.h"

#include <QList>
#include <QString>

namespace OXA {

/// Replaces the file `path` by a Standard configuration of `cores`, checksum included. The old file
/// is unchanged when the new one cannot be opened, which is not reported (callers can check the
/// file afterwards), and when a text contains a character that XML cannot, which is a critical
/// message.
OXAUTILS_EXPORT void writeOXAConfigToXml(const QList<AoCore*>& cores, const QString& path);

/// The cores of the Standard file `path`, in document order; the caller owns them.
///
/// On failure the list is empty, `ok` is false and `error` has the reason; both may be null.
/// Attributes that are not numbers read as 0; the checksum is not checked (see `readOXACRCForXml`).
OXAUTILS_EXPORT QList<AoCore*> readOXAConfigFromXml(
    const QString& path, bool* ok = nullptr, QString* error = nullptr);

/// Whether the file `path` can be parsed and every core, port and unit in it has the attributes
/// that the Standard form requires.
OXAUTILS_EXPORT bool checkOXAStandardFile(const QString& path);

/// The checksum stored in the file `path`, of either mode; empty when there is none.
OXAUTILS_EXPORT QString readOXACRCForXml(const QString& path);

}

#endif
