// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_PROBLEM_H
#define OXAUTILS_CHECK_PROBLEM_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// How bad a problem is.
enum class Severity {
    Error, ///< the analyzer cannot be built, or would not match the configuration
    Warning, ///< it can be built, but probably does not do what was intended
};

/// "error" or "warning".
OXAUTILS_EXPORT QString severityText(Severity severity);

/// Where a problem is, for messages and for an editor that goes there. What does not apply is -1;
/// line and column then are 0.
struct OXAUTILS_EXPORT Place {
    int core = -1; ///< position in the list of cores, from 0
    int port = -1; ///< index of a trigger port
    int unit = -1; ///< index of a match unit
    int expression = -1; ///< position in the core's list, from 0
    int line = 0; ///< of the configuration file, from 1
    int column = 0; ///< from 1
    QString signal {}; ///< a name there; its first line is meant; may be empty
    bool storage = false; ///< in what says which samples the core stores
    bool events = false; ///< in what says whose triggers force the core, and what tells of its own

    /// "core 2, M3" or "core 2, events"; outside of cores "line 7", or an empty text.
    QString text() const;
};

/// Something that is wrong with a configuration.
struct OXAUTILS_EXPORT Problem {
    QString rule; ///< name of the rule that it violates, one of `checkRules`
    Severity severity = Severity::Error; ///< as its rule says
    Place place; ///< where it is
    QString text; ///< what is wrong
    QString hint; ///< what to do about it
};

/// Whether programs refuse to build or simulate a configuration with `problem`: every error, except
/// those of a few rules with which an analyzer still works (docs/checks.md).
OXAUTILS_EXPORT bool stopsBuild(const Problem& problem);

}

#endif
