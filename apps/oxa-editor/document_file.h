// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_DOCUMENT_FILE_H
#define APPS_OXA_EDITOR_DOCUMENT_FILE_H

#include "core.h"

#include "oxautils/config/oxa_mode.h"

#include <QByteArray>
#include <QStringList>

/// A configuration that was read.
struct LoadedFile {
    OXA::OxaMode mode = OXA::Standard;
    Cores cores;
    QByteArray bytes; ///< of the file
    QStringList warnings; ///< about the file
    bool changed = false; ///< saving the cores would change the file
};

/// Reads the file `path`. False, with the reason in `error`, when it is not a configuration.
bool loadFile(const QString& path, LoadedFile& file, QString* error);

/// The content of a file with `cores`. Empty, with the reason in `error`, when it could not be read
/// again.
QByteArray serialize(OXA::OxaMode mode, const Cores& cores, QString* error);

/// The content of the file `path`; a null array when it cannot be read.
QByteArray fileBytes(const QString& path);

#endif
