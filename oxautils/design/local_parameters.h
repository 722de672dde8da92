// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_LOCAL_PARAMETERS_H
#define OXAUTILS_DESIGN_LOCAL_PARAMETERS_H

#include "oxautils/oxautils_export.h"

#include <QMap>
#include <QString>
#include <QStringList>

namespace OXA {

/// The constants of the Verilog sources `files` whose names begin with `prefix`, in binary digits:
/// `localparam` and `parameter` that have a number, and `define`. Yosys does not keep them.
OXAUTILS_EXPORT QMap<QString, QString> localParameters(
    const QStringList& files, const QString& prefix);

}

#endif
