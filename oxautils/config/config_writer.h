// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_CONFIG_WRITER_H
#define OXAUTILS_CONFIG_CONFIG_WRITER_H

#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include <QString>

#include <functional>

class QXmlStreamWriter;

namespace OXA {

constexpr char kModeStandard[] = "Standard";
constexpr char kModeLite[] = "Lite";

/// Replaces the file `path` by a configuration of `mode` (null: no mode element); `writeBody`
/// writes the root's other children. When the file cannot be written, or a text contains what XML
/// cannot, the old file is unchanged and the result is false, with `error`, which names the file.
bool writeConfig(const QString& path, const char* mode,
    const std::function<void(QXmlStreamWriter&)>& writeBody, QString* error);

// The same for a configuration of `cores`, checksum included.
bool writeCores(const QList<AoCore*>& cores, const QString& path, QString* error);
bool writeCores(const QList<AOCore_Lite*>& cores, const QString& path, QString* error);

}

#endif
