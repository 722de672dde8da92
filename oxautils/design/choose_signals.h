#ifndef OXAUTILS_DESIGN_CHOOSE_SIGNALS_H
#define OXAUTILS_DESIGN_CHOOSE_SIGNALS_H

#include "oxautils/design/design_index.h"
#include "oxautils/model/signal_item.h"

namespace OXA {

/// What a core can take of a design, and what was to be said about it.
struct OXAUTILS_EXPORT ChosenSignals {
    QList<SignalItem> items;
    QStringList warnings; ///< lines to show
    QStringList errors; ///< the same; `items` then are not all that was meant
};

/// All of `signal` as a configuration has it: a bus of its bits, most significant first, or its
/// bit.
OXAUTILS_EXPORT SignalItem wholeSignal(const DesignSignal& signal);

/// The signals that `words` mean, in their order, those of a pattern in the design's. A word is a
/// name or a pattern, both perhaps with bits of it: "soc/cpu/*", "pc[7:4]", "state[0]". Each bit is
/// taken once. Memories, and `clock`, where it is a clock of the design, are left out of a pattern
/// with a warning; a memory that is named is an error.
OXAUTILS_EXPORT ChosenSignals chooseSignals(
    const DesignIndex& index, const QStringList& words, const QString& clock = {});

}

#endif
