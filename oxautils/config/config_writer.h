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

/// Replaces the file `path` by a configuration of `mode` (null: no mode element) with the root's
/// further children as `writeBody` writes them. The old file stays whole until the new one is, and
/// for good when that cannot be written or a text holds what XML cannot: then false, and `error`
/// names the file.
bool writeConfig(const QString& path, const char* mode,
    const std::function<void(QXmlStreamWriter&)>& writeBody, QString* error);

// The same for a configuration of `cores`, checksum included.
bool writeCores(const QList<AoCore*>& cores, const QString& path, QString* error);
bool writeCores(const QList<AOCore_Lite*>& cores, const QString& path, QString* error);

}

#endif
