// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_CELL_USAGE_H
#define NORVOSYN_CELL_USAGE_H

#include <QString>
#include <QStringList>

namespace NorvoSyn {

struct TargetDevice;

/// Compares the cells of a netlist with the device: a text for each resource that is exceeded, or
/// one text when the engine did not write its count to `usageFile`.
QStringList resourceProblems(const QString& usageFile, const TargetDevice& target);

}

#endif
