#ifndef OXAUTILS_CHECK_PART_RULES_H
#define OXAUTILS_CHECK_PART_RULES_H

#include "oxautils/check/rule.h"

namespace OXA {

// What a configuration can break on a part; nothing without one.
void findMissingShadowSram(const AllCores& configuration, Findings& findings);
void findLutFit(const AllCores& configuration, Findings& findings);
void findRegisterFit(const AllCores& configuration, Findings& findings);
void findBlockSramFit(const AllCores& configuration, Findings& findings);
void findShadowSramFit(const AllCores& configuration, Findings& findings);
void findNearLimit(const AllCores& configuration, Findings& findings);

}

#endif
