// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_ADD_CORE_H
#define OXAUTILS_DESIGN_ADD_CORE_H

#include "oxautils/design/design_index.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

namespace OXA {

/// A core to be made, with names of a design. Lists of signals are as in `chooseSignals`.
struct OXAUTILS_EXPORT CoreRequest {
    QString clock; ///< the sample clock
    bool fallingEdge = false; ///< the active edge of the sample clock
    QStringList data; ///< the data signals
    QList<QStringList> triggers; ///< signals of T0 and the next ports; not for Lite cores
    int samples = 1024; ///< in each window
    int position = 0; ///< samples in each window before its trigger; not for Lite cores
    int windows = 1; ///< not for Lite cores
};

/// Messages about a request, as lines to show.
struct OXAUTILS_EXPORT CoreNotes {
    QStringList warnings; ///< the core can be used
    QStringList errors; ///< the core cannot be used
};

/// Sets up the new `core` for `request`. Its memory is as large as the windows need. It triggers at
/// once: each port has a unit of the same number that matches any value, and the expression
/// requires all of these units; without ports, the expression is 1'b1. False with `errors`.
OXAUTILS_EXPORT bool fillCore(
    const DesignIndex& index, const CoreRequest& request, AoCore& core, CoreNotes& notes);
/// The same for a Lite core, which has no trigger.
OXAUTILS_EXPORT bool fillCore(
    const DesignIndex& index, const CoreRequest& request, AOCore_Lite& core, CoreNotes& notes);

}

#endif
