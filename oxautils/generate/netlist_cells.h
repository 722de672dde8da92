#ifndef OXAUTILS_GENERATE_NETLIST_CELLS_H
#define OXAUTILS_GENERATE_NETLIST_CELLS_H

#include <QMap>
#include <QString>

namespace OXA {

/// How many cells of each type the netlist `path` holds, as our synthesis engine writes netlists:
/// one module, a cell a statement. Empty when it cannot be read.
QMap<QString, int> cellCounts(const QString& path);

}

#endif
