// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_STATE_NAMES_H
#define OXAUTILS_MODEL_STATE_NAMES_H

#include "oxautils/oxautils_export.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

namespace OXA {

/// The names that the values of one signal have, such as the states of a state machine.
struct OXAUTILS_EXPORT SignalStates {
    /// "[2:0]", as the signal is declared: its first bit is the most significant one. Empty when
    /// that is not known.
    QString range;
    QMap<QString, QString> values; ///< binary digits, most significant first, by name
};

/// Whether range and values are equal.
OXAUTILS_EXPORT bool operator==(const SignalStates& a, const SignalStates& b);

/// The names of values, by the names of signals without a range: "soc/cpu/state".
using StateNames = QMap<QString, SignalStates>;

/// The names of the values of `bits`, most significant first, by their digits, one for each bit.
/// Empty when these are not all bits, in order, of a signal that `states` has. Of several names of
/// a value, the first of the alphabet is shown.
OXAUTILS_EXPORT QHash<QString, QString> statesOf(const StateNames& states, const QStringList& bits);

/// The same by names, with all names of a value.
OXAUTILS_EXPORT QMap<QString, QString> valuesOf(const StateNames& states, const QStringList& bits);

}

#endif
