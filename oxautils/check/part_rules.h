// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_PART_RULES_H
#define OXAUTILS_CHECK_PART_RULES_H

#include "oxautils/check/rule.h"

namespace OXA {

// Rules about a configuration on a part; they find nothing without a part.
void findMissingShadowSram(const AllCores& configuration, Findings& findings);
void findLutFit(const AllCores& configuration, Findings& findings);
void findRegisterFit(const AllCores& configuration, Findings& findings);
void findBlockSramFit(const AllCores& configuration, Findings& findings);
void findShadowSramFit(const AllCores& configuration, Findings& findings);
void findNearLimit(const AllCores& configuration, Findings& findings);

}

#endif
