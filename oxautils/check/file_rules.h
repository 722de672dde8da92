// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_FILE_RULES_H
#define OXAUTILS_CHECK_FILE_RULES_H

#include "oxautils/check/rule.h"

namespace OXA {

// Rules about a file. The first four apply to any file, the others to a readable one.
void findUnreadable(const ConfigFile& file, Findings& findings);
void findMalformed(const ConfigFile& file, Findings& findings);
void findVersion(const ConfigFile& file, Findings& findings);
void findMode(const ConfigFile& file, Findings& findings);

void findUnreadElements(const ConfigFile& file, Findings& findings);
void findMissingAttributes(const ConfigFile& file, Findings& findings);
void findBadNumbers(const ConfigFile& file, Findings& findings);
void findBadWords(const ConfigFile& file, Findings& findings);
void findStorageKinds(const ConfigFile& file, Findings& findings);
void findIdleStorage(const ConfigFile& file, Findings& findings);
void findPortNumbers(const ConfigFile& file, Findings& findings);
void findRepeatedPorts(const ConfigFile& file, Findings& findings);
void findUnitNumbers(const ConfigFile& file, Findings& findings);
void findRepeatedUnits(const ConfigFile& file, Findings& findings);
void findUnknownPorts(const ConfigFile& file, Findings& findings);
void findEmptyBuses(const ConfigFile& file, Findings& findings);
void findChecksum(const ConfigFile& file, Findings& findings);

}

#endif
