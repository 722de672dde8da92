// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_RUN_SETTINGS_H
#define APPS_OXA_RUN_SETTINGS_H

#include "command.h"
#include "core_changes.h"

/// What a run has that the configuration file has not, in the words of `oxa set`.
struct RunSettings {
    CoreChanges changes;
    QString builtFrom; ///< what the analyzer is built from; empty: the configuration file

    bool change() const; ///< whether there are changes

    /// What the analyzer is built from, for a run of the configuration `file`.
    const QString& builtFile(const QString& file) const
    {
        return builtFrom.isEmpty() ? file : builtFrom;
    }
};

/// Adds --unit, --expression, --store, --forced-by, --position, --samples, --windows and
/// --built-from.
void addRunSettings(Command& command, RunSettings& settings);

/// Changes `configuration`, read from `file`, which also names the design with the names of values.
/// False, with the reasons on `err`, when `oxa check` then finds a new error in its match units or
/// expressions.
bool changeSettings(const RunSettings& settings, const QString& file,
    OXA::Configuration& configuration, TextOut& err);

#endif
