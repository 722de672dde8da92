// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_NETLIST_CELLS_H
#define OXAUTILS_GENERATE_NETLIST_CELLS_H

#include <QMap>
#include <QString>

namespace OXA {

/// The number of cells of each type in the netlist `path`, written by our synthesis engine: one
/// module, a statement for each cell. Empty when it cannot be read.
QMap<QString, int> cellCounts(const QString& path);

}

#endif
