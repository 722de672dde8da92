// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_SIGNAL_ITEM_H
#define OXAUTILS_MODEL_SIGNAL_ITEM_H

#include "oxautils/oxautils_export.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace OXA {

/// A signal of the design, or a bus of signals. A value type.
class OXAUTILS_EXPORT SignalItem {
public:
    QString name; ///< in the design: a bus's name, or one bit's
    QString text; ///< display text, shown instead of `name`; empty when the signal has none
    QList<SignalItem> subItems; ///< the bits of a bus, most significant first; empty for one signal
    bool hostFlag0 = true; ///< for the host; the library only copies it
    bool hostFlag1 = true; ///< for the host; the library only copies it
    int hostValue = -1; ///< for the host; the library only copies it
    bool captureEnable = true; ///< false: listed as data, but not captured

    bool isBus() const { return !subItems.isEmpty(); } ///< of one bit or more

    /// The number of bits: those of a bus, 1 for a single signal.
    int bitCount() const { return isBus() ? subItems.size() : 1; }
};

/// The names of `items` bit by bit, a bus as its bits: most significant first.
OXAUTILS_EXPORT QStringList flattenedNames(const QList<SignalItem>& items);

/// The same with each bit's `text`.
OXAUTILS_EXPORT QStringList flattenedTexts(const QList<SignalItem>& items);

}

#endif
