// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_DESIGN_RULES_H
#define OXAUTILS_DESIGN_DESIGN_RULES_H

#include "oxautils/check/check.h"
#include "oxautils/design/design_index.h"

namespace OXA {

/// Adds problems with the design of `index` to `problems`, which `checkCores` found in `cores`, in
/// document order; for a waveform, only those of names and bits. Problems of `bus-order` are
/// removed where the design declares the bits of every bus.
OXAUTILS_EXPORT void addDesignProblems(
    const QList<AoCore*>& cores, const DesignIndex& index, QList<Problem>& problems);
/// The same for Lite cores.
OXAUTILS_EXPORT void addDesignProblems(
    const QList<AOCore_Lite*>& cores, const DesignIndex& index, QList<Problem>& problems);

/// The same for the file `path` and the problems that `checkConfigFile` found; adds nothing when no
/// cores can be read.
OXAUTILS_EXPORT void addDesignProblems(
    const QString& path, const DesignIndex& index, QList<Problem>& problems);

/// These rules (docs/checks.md).
OXAUTILS_EXPORT QList<RuleInfo> designRules();

}

#endif
