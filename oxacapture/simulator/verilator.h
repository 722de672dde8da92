// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_VERILATOR_H
#define OXACAPTURE_SIMULATOR_VERILATOR_H

#include <QStringList>

#include <functional>

namespace OXA_CAPTURE {

constexpr char kVerilatedPrefix[] = "Vdesign"; ///< of Verilator's class and its files

/// Whether Verilator and g++ are installed.
bool hasVerilator();

/// Compiles Verilog, whose top is the module oxa_testbench, with Verilator into the library
/// design.so in the directory `workDir`, together with the C++ text `frame`, in which the header
/// Vdesign.h is included. `arguments` are Verilator's, with absolute paths. The words of the
/// compilers go to files `*.log` in that directory. False when that fails, with the reason in
/// `error`, which is empty when `goesOn` returned false.
bool compileVerilated(const QStringList& arguments, const QByteArray& frame, const QString& workDir,
    const std::function<bool()>& goesOn, QString* error);

}

#endif
