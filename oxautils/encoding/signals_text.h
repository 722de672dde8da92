// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_SIGNALS_TEXT_H
#define OXAUTILS_ENCODING_SIGNALS_TEXT_H

#include "oxautils/model/ao_core.h"

namespace OXA {

/// `items` as text, most significant first: "u/start, u/data (8)". A bus has its number of bits; a
/// signal with a display text is shown by that.
OXAUTILS_EXPORT QString signalsText(const QList<SignalItem>& items);

/// Reads what `signalsText` writes: signals, buses and bits of buses that `core` lists as data or
/// watches in a port, by name or display text, separated by commas. Numbers of bits may be omitted.
/// False, with the place in `error`, when there is no such signal; `items` is then not changed.
OXAUTILS_EXPORT bool signalsFromText(
    const QString& text, const AoCore& core, QList<SignalItem>& items, QString* error);

}

#endif
