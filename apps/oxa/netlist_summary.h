#ifndef APPS_OXA_NETLIST_SUMMARY_H
#define APPS_OXA_NETLIST_SUMMARY_H

#include <QMap>
#include <QString>

/// How many cells of each type the netlist `path` holds, as our synthesis engine writes netlists:
/// one module, a cell a statement. Empty when it cannot be read.
QMap<QString, int> cellCounts(const QString& path);

#endif
