// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_CORE_RULES_H
#define OXAUTILS_CHECK_CORE_RULES_H

#include "oxautils/check/rule.h"

namespace OXA {

// Rules about cores of either mode, each core alone and all together.
void findNoCores(const AllCores& configuration, Findings& findings);
void findTooManyCores(const AllCores& configuration, Findings& findings);
void findUnbuiltCores(const AllCores& configuration, Findings& findings);
void findSharedSignals(const AllCores& configuration, Findings& findings);
void findForcingCores(const AllCores& configuration, Findings& findings);
void findForcedChains(const AllCores& configuration, Findings& findings);
void findNoExpression(const AllCores& configuration, Findings& findings);
void findWrapperNames(const AllCores& configuration, Findings& findings);

void findCoreIndex(const AnyCore& core, Findings& findings);
void findNoClock(const AnyCore& core, Findings& findings);
void findSamplingEdge(const AnyCore& core, Findings& findings);
void findMemoryKind(const AnyCore& core, Findings& findings);
void findNoData(const AnyCore& core, Findings& findings);
void findRepeatedSignals(const AnyCore& core, Findings& findings);
void findSampledClock(const AnyCore& core, Findings& findings);
void findBusOrder(const AnyCore& core, Findings& findings);
void findRangesAsBits(const AnyCore& core, Findings& findings);
void findUnusableNames(const AnyCore& core, Findings& findings);
void findHiddenCharacters(const AnyCore& core, Findings& findings);

}

#endif
