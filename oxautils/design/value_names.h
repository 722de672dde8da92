// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_VALUE_NAMES_H
#define OXAUTILS_DESIGN_VALUE_NAMES_H

#include "oxautils/design/design_index.h"
#include "oxautils/encoding/unit_text.h"

namespace OXA {

/// The values of enumerations by name, for ports that watch all bits of one signal and no others.
/// `index` has to outlive the function.
OXAUTILS_EXPORT ValueNames valueNames(const DesignIndex& index);

/// The enumerations of the signals that `bits` are bits of, by their names there.
OXAUTILS_EXPORT StateNames statesOf(const DesignIndex& index, const QStringList& bits);

}

#endif
