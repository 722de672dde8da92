#ifndef OXAUTILS_CHECK_PART_RULES_H
#define OXAUTILS_CHECK_PART_RULES_H

#include "oxautils/check/rule.h"

namespace OXA {

// What a configuration can break on a part; nothing without one.
void findMissingShadowSram(const Configuration& configuration, Findings& findings);
void findLutFit(const Configuration& configuration, Findings& findings);
void findRegisterFit(const Configuration& configuration, Findings& findings);
void findBlockSramFit(const Configuration& configuration, Findings& findings);
void findShadowSramFit(const Configuration& configuration, Findings& findings);
void findNearLimit(const Configuration& configuration, Findings& findings);

}

#endif
