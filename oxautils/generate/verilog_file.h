// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_VERILOG_FILE_H
#define OXAUTILS_GENERATE_VERILOG_FILE_H

#include <QString>
#include <QTextStream>

#include <functional>

namespace OXA {

/// Writes the file `path`, in UTF-8, with the content from `write`. False, with `failure` logged at
/// critical level, when the file cannot be opened or not be written completely.
bool writeVerilogFile(
    const QString& path, const QString& failure, const std::function<void(QTextStream&)>& write);

/// The same for the file `name` of `directory`, which is created when it does not exist.
bool writeVerilogFile(
    const QString& directory, const char* name, const std::function<void(QTextStream&)>& write);

/// The directory of the core at `position`, below the work directory.
QString coreDirectory(const QString& workDir, int position);

}

#endif
