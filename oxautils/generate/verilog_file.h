#ifndef OXAUTILS_GENERATE_VERILOG_FILE_H
#define OXAUTILS_GENERATE_VERILOG_FILE_H

#include <QString>
#include <QTextStream>

#include <functional>

namespace OXA {

/// Writes the file `path`, in UTF-8, as `write` fills it. Logs `failure` at critical level and is
/// false when the file cannot be opened or holds less than was written to it.
bool writeVerilogFile(
    const QString& path, const QString& failure, const std::function<void(QTextStream&)>& write);

/// The same for the file `name` of `directory`, which is made when it does not exist.
bool writeVerilogFile(
    const QString& directory, const char* name, const std::function<void(QTextStream&)>& write);

/// The directory of the core at `position`, below the work directory.
QString coreDirectory(const QString& workDir, int position);

}

#endif
