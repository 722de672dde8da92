// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_ICARUS_H
#define OXACAPTURE_SIMULATOR_ICARUS_H

#include <QStringList>

#include <functional>

class QProcess;

namespace OXA_CAPTURE {

/// Compiles Verilog with Icarus: `arguments` of iverilog, whose paths are absolute. Its words go to
/// iverilog.log in the directory `workDir`, and temporary files. False when that fails, with the
/// reason in `error`, which is empty when `goesOn` returned false.
bool compileVerilog(const QStringList& arguments, const QString& workDir,
    const std::function<bool()>& goesOn, QString* error);

/// Lets a compiler work in `directory`, also with its temporary files, which it leaves when it is
/// ended.
void workIn(const QString& directory, QProcess& compiler);

/// Waits for the end of `process`. When `goesOn` returns false, ends it and returns false.
bool finishes(QProcess& process, const std::function<bool()>& goesOn);

}

#endif
