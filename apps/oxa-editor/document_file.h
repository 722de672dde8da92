#ifndef APPS_OXA_EDITOR_DOCUMENT_FILE_H
#define APPS_OXA_EDITOR_DOCUMENT_FILE_H

#include "core.h"

#include "oxautils/config/oxa_mode.h"

#include <QByteArray>
#include <QStringList>

/// A configuration file, read.
struct LoadedFile {
    OXA::OxaMode mode = OXA::Standard;
    Cores cores;
    QByteArray bytes; ///< of the file
    QStringList warnings; ///< what the user should know about it
    bool changed = false; ///< the cores say something else than the file, or say it otherwise
};

/// Reads the file `path`. False, with the reason in `error`, when it is no configuration.
bool loadFile(const QString& path, LoadedFile& file, QString* error);

/// What the file of `cores` holds. Empty, with the reason in `error`, when it could not be read
/// again.
QByteArray serialize(OXA::OxaMode mode, const Cores& cores, QString* error);

/// The bytes of the file `path`; a null array when it cannot be read.
QByteArray fileBytes(const QString& path);

#endif
