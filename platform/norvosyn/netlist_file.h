// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_NETLIST_FILE_H
#define NORVOSYN_NETLIST_FILE_H

#include <QString>

namespace NorvoSyn {

/// Moves the engine's `netlist` to `output` in one step, so that readers get the old or the new
/// file. When there is no netlist or it cannot be written, the result is false, with the reason in
/// `error`, and `output` is unchanged.
bool deliverNetlist(const QString& netlist, const QString& output, QString* error);

}

#endif
