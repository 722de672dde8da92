#ifndef OXAUTILS_DESIGN_ADD_CORE_H
#define OXAUTILS_DESIGN_ADD_CORE_H

#include "oxautils/design/design_index.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

namespace OXA {

/// A core, by names of a design. Lists of signals are as `chooseSignals` takes them.
struct OXAUTILS_EXPORT CoreRequest {
    QString clock; ///< the sample clock
    bool fallingEdge = false; ///< of the sample clock takes samples
    QStringList data;
    QList<QStringList> triggers; ///< what T0 and the next ports watch; not for Lite cores
    int samples = 1024; ///< of a window
    int position = 0; ///< samples of a window before its trigger; not for Lite cores
    int windows = 1; ///< the same
};

/// Lines to show about a request.
struct OXAUTILS_EXPORT CoreNotes {
    QStringList warnings;
    QStringList errors;
};

/// Makes the new `core` capture what `request` names. Its memory is as large as the windows need.
/// It triggers at once: with ports, each has a unit of its number that takes any value, and the
/// expression names all of these units; without, the expression is 1'b1. False with `errors`.
OXAUTILS_EXPORT bool fillCore(
    const DesignIndex& index, const CoreRequest& request, AoCore& core, CoreNotes& notes);
OXAUTILS_EXPORT bool fillCore(
    const DesignIndex& index, const CoreRequest& request, AOCore_Lite& core, CoreNotes& notes);

}

#endif
