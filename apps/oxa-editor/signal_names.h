// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_SIGNAL_NAMES_H
#define APPS_OXA_EDITOR_SIGNAL_NAMES_H

#include "oxautils/model/signal_item.h"

/// `text` without characters that a configuration file cannot contain, and without spaces around
/// it.
QString cleanName(const QString& text);

/// Signals from a list of names, one in each line. "data[7:0]" and "[7:0] data" are buses of the
/// bits "data[7]" to "data[0]", in the order written; empty lines are ignored. Lines that are not
/// names are reported in `errors`.
QList<OXA::SignalItem> parseSignals(const QString& text, QStringList& errors);

/// The list of names from which `parseSignals` makes `items`; a bus with other bit names becomes
/// its bits.
QString signalsText(const QList<OXA::SignalItem>& items);

/// The bus of `bits`, most significant first, named by the common part of their names.
OXA::SignalItem groupSignals(const QList<OXA::SignalItem>& bits);

/// Whether `text` contains the signal name `name`, not as part of a longer name.
bool isNamedIn(const QString& text, const QString& name);

/// "1 bit" or "9 bits".
QString bitsText(int bits);

/// `number` padded to the width of two digits.
QString listNumber(int number);

/// The text that users see for a signal: its display text, or its name.
QString shownName(const OXA::SignalItem& item);

/// The value of a match unit after its port's bits changed from `before` to `after`, which are
/// names: characters stay with their bits, a new bit gets `filler`. An empty value stays empty.
QString movedValue(
    const QString& value, const QStringList& before, const QStringList& after, QChar filler);

#endif
