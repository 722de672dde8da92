#ifndef APPS_OXA_EDITOR_SIGNAL_NAMES_H
#define APPS_OXA_EDITOR_SIGNAL_NAMES_H

#include "oxautils/model/signal_item.h"

/// `text` without what a configuration file cannot hold, and without blanks at its ends.
QString cleanName(const QString& text);

/// Signals from a list of names, one a line. "data[7:0]" and "[7:0] data" are buses of the bits
/// "data[7]" to "data[0]", in the order written; empty lines do not count. Lines that are no names
/// are said in `errors`.
QList<OXA::SignalItem> parseSignals(const QString& text, QStringList& errors);

/// The list of names that `parseSignals` makes `items` of; a bus whose bits are named otherwise
/// becomes its bits.
QString signalsText(const QList<OXA::SignalItem>& items);

/// The bus of `bits`, most significant first, named by what their names have in common.
OXA::SignalItem groupSignals(const QList<OXA::SignalItem>& bits);

/// "1 bit" or "9 bits".
/// Whether `text` names the signal `name`, and not one of a longer name.
bool isNamedIn(const QString& text, const QString& name);

QString bitsText(int bits);

/// `number` as text of a list, as wide as any below 100.
QString listNumber(int number);

/// What users see of a signal: its text, or its name when it has none.
QString shownName(const OXA::SignalItem& item);

/// The value of a match unit after its port's bits changed from those named `before` to `after`:
/// characters follow their bits, a new bit gets `filler`. Without a value there is none after.
QString movedValue(
    const QString& value, const QStringList& before, const QStringList& after, QChar filler);

#endif
