#ifndef OXAUTILS_DESIGN_DESIGN_RULES_H
#define OXAUTILS_DESIGN_DESIGN_RULES_H

#include "oxautils/check/check.h"
#include "oxautils/design/design_index.h"

namespace OXA {

/// Adds to `problems`, which `checkCores` has found in `cores`, those of what the cores name in the
/// design of `index`, in document order: of a waveform only names and bits. What `bus-order` says
/// goes where the design is known to declare the bits of every bus.
OXAUTILS_EXPORT void addDesignProblems(
    const QList<AoCore*>& cores, const DesignIndex& index, QList<Problem>& problems);
OXAUTILS_EXPORT void addDesignProblems(
    const QList<AOCore_Lite*>& cores, const DesignIndex& index, QList<Problem>& problems);

/// The same for the file `path` and what `checkConfigFile` has found in it; nothing when no cores
/// can be read from it.
OXAUTILS_EXPORT void addDesignProblems(
    const QString& path, const DesignIndex& index, QList<Problem>& problems);

/// These rules (docs/checks.md).
OXAUTILS_EXPORT QList<RuleInfo> designRules();

}

#endif
