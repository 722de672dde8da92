// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_AO_CORE_LITE_H
#define OXAUTILS_MODEL_AO_CORE_LITE_H

#include "oxautils/model/signal_item.h"

class QDebug;

namespace OXA {

/// One analyzer core of a Lite configuration: it captures its signals when armed, without a
/// trigger. The caller of a reader deletes the cores of its list.
class OXAUTILS_EXPORT AOCore_Lite {
public:
    int index = 0; ///< as in a Standard core
    QString sampleClock; ///< the signal whose edges take samples
    int trigType = 0; ///< sampling edge: 0 rising, 1 falling
    int implementation = 0; ///< of the capture memory: 0 block SRAM, 2 shadow SRAM
    int captureAmount = 1024; ///< samples captured, and the depth of the memory
    bool inputRegisterEnabled = false; ///< a register before the memory
    bool captureInitDataEnabled = false; ///< captures from power-up
    QList<SignalItem> signalList; ///< most significant first
    QString moduleName; ///< the design's module, for the host

    /// `signalList` as names bit by bit.
    QList<QString> dataSignals() const;

    /// The same with each bit's `text`.
    QList<QString> dataSignalsText() const;
};

/// For the debug log; nothing parses it.
OXAUTILS_EXPORT QDebug operator<<(QDebug debug, const AOCore_Lite& core);

}

#endif
