// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_VERILOG_NAMES_H
#define OXAUTILS_CHECK_VERILOG_NAMES_H

#include <QString>

namespace OXA {

/// Why the signal name `name`, escaped as in the generated files, is not a Verilog identifier;
/// empty when it is.
QString nameComplaint(const QString& name);

/// Whether the generated wrapper has a net, port or instance of this name.
bool isWrapperName(const QString& name);

}

#endif
