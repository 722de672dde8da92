// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_CHECK_H
#define OXAUTILS_CHECK_CHECK_H

#include "oxautils/check/problem.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include <QList>

namespace DEV {
struct ChipInfo;
}

namespace OXA {

/// Every problem of the configuration file `path`, of either mode, in document order. With a `part`
/// also what does not fit it. An unreadable or malformed file is reported as a problem too.
OXAUTILS_EXPORT QList<Problem> checkConfigFile(
    const QString& path, const DEV::ChipInfo* part = nullptr);

/// The same for cores in memory, without the rules for files; places have no lines. The cores are
/// not changed, and no pointer is kept. The rules assume a file that is saved as "*.oxa".
OXAUTILS_EXPORT QList<Problem> checkCores(
    const QList<AoCore*>& cores, const DEV::ChipInfo* part = nullptr);
/// The same for Lite cores.
OXAUTILS_EXPORT QList<Problem> checkCores(
    const QList<AOCore_Lite*>& cores, const DEV::ChipInfo* part = nullptr);

/// A rule, described for users.
struct OXAUTILS_EXPORT RuleInfo {
    QString name; ///< "counter-width"
    Severity severity = Severity::Error; ///< of each of its problems
    QString meaning; ///< what violates the rule, a sentence
    QString hint; ///< what to do about it
};

/// All rules (docs/checks.md).
OXAUTILS_EXPORT QList<RuleInfo> checkRules();

/// Where the configuration `path` names the signal `name` first; line 0 when it does not.
OXAUTILS_EXPORT Place placeOfSignal(const QString& path, const QString& name);

}

#endif
