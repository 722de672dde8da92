// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_STANDARD_RULES_H
#define OXAUTILS_CHECK_STANDARD_RULES_H

#include "oxautils/check/rule.h"

namespace OXA {

// Rules about a whole Standard core: its amounts, depth and windows.
void findStorageDepth(const StandardCore& core, Findings& findings);
void findWindowCount(const StandardCore& core, Findings& findings);
void findCaptureAmount(const StandardCore& core, Findings& findings);
void findTriggerPosition(const StandardCore& core, Findings& findings);
void findShortWindow(const StandardCore& core, Findings& findings);
void findNarrowRegisters(const StandardCore& core, Findings& findings);
void findTableMemory(const StandardCore& core, Findings& findings);
void findTooManyExpressions(const StandardCore& core, Findings& findings);

// Rules about which samples a core stores.
void findGapBits(const StandardCore& core, Findings& findings);
void findFewGapBits(const StandardCore& core, Findings& findings);
void findStorageLimit(const StandardCore& core, Findings& findings);
void findUnknownWatched(const StandardCore& core, Findings& findings);

/// The only one of these rules that applies to Lite cores too.
void findLiteAmount(const AnyCore& core, Findings& findings);

}

#endif
