// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_TRIGGER_PORT_H
#define OXAUTILS_MODEL_TRIGGER_PORT_H

#include "oxautils/model/signal_item.h"

class QDebug;

namespace OXA {

class AoCore;

/// A group of signals that match units compare as one number. Owned by its core.
///
/// A port is available when its `signalList` is not empty.
class OXAUTILS_EXPORT TriggerPort {
public:
    AoCore* core = nullptr; ///< the owner
    int index = 0; ///< 0 to 15
    QList<SignalItem> signalList; ///< most significant first

    /// `signalList` as names bit by bit: the port's width is their count.
    QList<QString> singleSignals() const;
};

/// For the debug log; nothing parses it.
OXAUTILS_EXPORT QDebug operator<<(QDebug debug, const TriggerPort& port);

}

#endif
