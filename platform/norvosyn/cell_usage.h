#ifndef NORVOSYN_CELL_USAGE_H
#define NORVOSYN_CELL_USAGE_H

#include <QString>
#include <QStringList>

namespace NorvoSyn {

struct TargetDevice;

/// Compares the cells of a netlist with what the device has. A text for each kind of which there
/// are too many; one text when the engine did not leave its count in `usageFile`.
QStringList resourceProblems(const QString& usageFile, const TargetDevice& target);

}

#endif
