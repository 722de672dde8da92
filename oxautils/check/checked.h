// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_CHECKED_H
#define OXAUTILS_CHECK_CHECKED_H

#include "oxautils/check/problem.h"
#include "oxautils/resource/analyzer_estimate.h"

namespace OXA {

/// What is known of a configuration that was checked.
struct Checked {
    QList<Problem> problems;
    OXA_TOOL::AnalyzerAmounts amounts; ///< what its cores take of the part; 0 without one
};

/// `checkConfigFile`, and the estimate that its rules compare with the part.
Checked checkFile(const QString& path, const DEV::ChipInfo* part);

}

#endif
