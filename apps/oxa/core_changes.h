// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_CORE_CHANGES_H
#define APPS_OXA_CORE_CHANGES_H

#include "command.h"
#include "core_words.h"

#include "oxacapture/message.h"
#include "oxautils/config/configuration.h"
#include "oxautils/encoding/unit_text.h"

#include <QStringList>

#include <vector>

/// A setting of a core given as a number or a word.
struct CoreSetting {
    const char* option; ///< "--samples"
    const char* value; ///< "N"
    const char* help;
    bool inRuns; ///< can be changed in a run, without another synthesis
    Words words; ///< its values in order from 0; none: any number
    void (*set)(OXA::AoCore& core, int value); ///< null: Standard cores do not have it
    void (*setLite)(OXA::AOCore_Lite& core, int value); ///< null: Lite cores do not have it
};

const std::vector<CoreSetting>& coreSettings();

/// The options that change a configuration. CORE is a position from 0, and may be left out when
/// there is one core.
struct CoreChanges {
    QStringList ports; ///< "CORE.T0=u/start, u/data"
    QStringList units; ///< "CORE.M3=T0 == 5"
    QStringList expressions; ///< "CORE.0=M1 && M2"
    QStringList stores; ///< "CORE=changes, gap 16"
    QStringList forcedBys; ///< "CORE=0,2"
    /// "CORE=256", a list for each of `coreSettings`
    std::vector<QStringList> settings = std::vector<QStringList>(coreSettings().size());
    OXA::ValueNames valueNames; ///< for units; may be empty
};

enum class Changed {
    All,
    InRuns, ///< what can be changed in a run
};

/// Adds the options.
void addCoreChanges(Command& command, CoreChanges& changes, Changed changed);

/// Applies `changes`. Options that cannot be read or name something unknown are added to
/// `problems`; `OXA::checkCores` checks the changed cores.
void changeCores(
    const CoreChanges& changes, OXA::Configuration& configuration, OXA_CAPTURE::Messages& problems);

/// The core and the unit of an entry of `CoreChanges::units`; null when there is none.
const OXA::MatchUnit* changedUnit(
    const QString& text, const OXA::Configuration& configuration, int* core);

#endif
