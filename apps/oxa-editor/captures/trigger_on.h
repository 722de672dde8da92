// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CAPTURES_TRIGGER_ON_H
#define APPS_OXA_EDITOR_CAPTURES_TRIGGER_ON_H

#include "oxa-editor/core.h"

/// Signals with values that a unit is to match: a digit for each signal, 0, 1, X, R or F.
struct TriggerValue {
    QStringList signalNames; ///< as they are shown: texts, or names
    QString digits;

    bool hasEdge() const { return digits.contains('R') || digits.contains('F'); }
};

/// Makes the unit that matches the value: of those that compare a port with all signals, the first
/// that is switched on and can do it, for another one needs a synthesis; else the first that is
/// switched off. False, with the reason in `error`, when there is none.
bool unitOn(
    const OXA::AoCore& core, const TriggerValue& value, OXA::MatchUnit& unit, QString* error);

#endif
