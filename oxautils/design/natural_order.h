// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_NATURAL_ORDER_H
#define OXAUTILS_DESIGN_NATURAL_ORDER_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// Whether `a` is before `b` when numbers in names are compared by value: "lane[2]" before
/// "lane[10]".
OXAUTILS_EXPORT bool naturallyLess(const QString& a, const QString& b);

}

#endif
