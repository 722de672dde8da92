// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_UNIT_RULES_H
#define OXAUTILS_CHECK_UNIT_RULES_H

#include "oxautils/check/rule.h"

namespace OXA {

// Rules about a match unit that is switched on.
void findUnboundUnit(const Unit& unit, Findings& findings);
void findEmptyPort(const Unit& unit, Findings& findings);
void findMatchType(const Unit& unit, Findings& findings);
void findFunction(const Unit& unit, Findings& findings);
void findLongValue(const Unit& unit, Findings& findings);
void findShortValue(const Unit& unit, Findings& findings);
void findValueCharacters(const Unit& unit, Findings& findings);
void findRangeOrder(const Unit& unit, Findings& findings);
void findCounterWidth(const Unit& unit, Findings& findings);
void findCounter(const Unit& unit, Findings& findings);
void findIdleCounter(const Unit& unit, Findings& findings);
void findIdleContinuous(const Unit& unit, Findings& findings);
void findUnusedUnit(const Unit& unit, Findings& findings);

}

#endif
