#ifndef APPS_OXA_CORE_CHANGES_H
#define APPS_OXA_CORE_CHANGES_H

#include "core_words.h"

#include "oxacapture/message.h"
#include "oxautils/config/configuration.h"
#include "oxautils/encoding/unit_text.h"

#include <QStringList>

#include <vector>

/// A setting of a core that a number or a word gives.
struct CoreSetting {
    const char* option; ///< "--samples"
    const char* value; ///< "N"
    const char* help;
    Words words; ///< its values in order from 0; none: any number
    void (*set)(OXA::AoCore& core, int value); ///< null: Standard cores do not have it
    void (*setLite)(OXA::AOCore_Lite& core, int value); ///< null: Lite cores do not have it
};

const std::vector<CoreSetting>& coreSettings();

/// What a call changes of a configuration, as its options say it. CORE is a position from 0, and
/// may be left out when there is one core.
struct CoreChanges {
    QStringList ports; ///< "CORE.T0=u/start, u/data"
    QStringList units; ///< "CORE.M3=T0 == 5"
    QStringList expressions; ///< "CORE.0=M1 && M2"
    std::vector<QStringList> settings; ///< "CORE=256", a list for each of `coreSettings`
    OXA::ValueNames valueNames; ///< that units may have; may be empty
};

/// Applies `changes`. What cannot be read or found is told in `problems`; whether the cores are as
/// the rules want them is for `OXA::checkCores`.
void changeCores(
    const CoreChanges& changes, OXA::Configuration& configuration, OXA_CAPTURE::Messages& problems);

/// The core and the unit that `text` of `CoreChanges::units` names; null when there is none.
const OXA::MatchUnit* changedUnit(
    const QString& text, const OXA::Configuration& configuration, int* core);

#endif
