#ifndef OXAUTILS_CONFIG_CONFIG_WRITER_H
#define OXAUTILS_CONFIG_CONFIG_WRITER_H

#include <QString>

#include <functional>

class QXmlStreamWriter;

namespace OXA {

constexpr char kModeStandard[] = "Standard";
constexpr char kModeLite[] = "Lite";

/// Replaces the file `path` by a configuration of `mode` (null: no mode element) with the root's
/// further children as `writeBody` writes them. The old file stays whole until the new one is, and
/// for good when that cannot be written or a text holds what XML cannot: then a critical message
/// names the file.
void writeConfig(
    const QString& path, const char* mode, const std::function<void(QXmlStreamWriter&)>& writeBody);

}

#endif
