// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_CHOOSE_SIGNALS_H
#define OXAUTILS_DESIGN_CHOOSE_SIGNALS_H

#include "oxautils/design/design_index.h"
#include "oxautils/model/signal_item.h"

namespace OXA {

/// Chosen signals, and messages.
struct OXAUTILS_EXPORT ChosenSignals {
    QList<SignalItem> items; ///< in the order of the words
    QStringList warnings; ///< lines to show
    QStringList errors; ///< the same; `items` are then incomplete
};

/// The bits of `signal` at the positions `high` to `low` as in a configuration: a bus, most
/// significant first, or a bit. A part of the signal has the range in its name.
OXAUTILS_EXPORT SignalItem partOfSignal(const DesignSignal& signal, int high, int low);

/// The signals for `words`, in their order; those of a pattern in the design's order. A word is a
/// name or a pattern, optionally with bits: "soc/cpu/*", "pc[7:4]", "state[0]". Each bit is chosen
/// once. From the matches of a pattern, memories and, when it is a clock of the design, `clock` are
/// left out with a warning; a memory given by name is an error.
OXAUTILS_EXPORT ChosenSignals chooseSignals(
    const DesignIndex& index, const QStringList& words, const QString& clock = {});

}

#endif
