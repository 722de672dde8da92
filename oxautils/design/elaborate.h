// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_ELABORATE_H
#define OXAUTILS_DESIGN_ELABORATE_H

#include "oxautils/design/rtlil_module.h"
#include "oxautils/design/source_scan.h"

namespace OXA {

/// Adds the signals of all instances below the top of `modules` to `design`, with the clocks of
/// registers. `escapes` distinguishes scopes from dots in names. False when there are too many
/// signals.
bool elaborate(const RtlilDesign& modules, const SourceScan& escapes, Design& design);

}

#endif
