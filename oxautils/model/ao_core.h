// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_AO_CORE_H
#define OXAUTILS_MODEL_AO_CORE_H

#include "oxautils/model/core_events.h"
#include "oxautils/model/core_storage.h"
#include "oxautils/model/match_unit.h"
#include "oxautils/model/signal_item.h"
#include "oxautils/model/trigger_port.h"

#include <QList>
#include <QString>

class QDebug;

namespace OXA {

/// `n` rounded up to a power of two, as the hardware counts windows; 0 stays 0, and a result that
/// does not fit `unsigned` becomes 0.
OXAUTILS_EXPORT unsigned fixedWindowNum(unsigned n);

/// One analyzer core of a Standard configuration, as its file describes it.
///
/// Owns its 16 trigger ports and 16 match units, numbered 0 to 15; their number never changes.
/// Lists of cores are lists of plain pointers: the caller of a reader deletes the cores.
class OXAUTILS_EXPORT AoCore {
public:
    explicit AoCore(int index); ///< with 16 empty ports and 16 units, all off
    ~AoCore();
    AoCore(const AoCore&) = delete;
    AoCore& operator=(const AoCore&) = delete;

    int index; ///< identifies the core in generated text, not its position in a list
    int hostData = 0; ///< for the host; the library does not use it
    QString sampleClock; ///< the signal whose edges take samples
    int trigType = 0; ///< sampling edge: 0 rising, 1 falling
    int expressionType = 0; ///< 0 static: in the netlist; 1 dynamic: tables, rewritten at run time
    int exImplementation = 0; ///< of dynamic tables: 0 block SRAM, 1 registers, 2 shadow SRAM
    int implementation = 0; ///< of the capture memory: 0 block SRAM, 1 registers, 2 shadow SRAM
    int storageDepth = 1024; ///< samples
    int captureAmount = 1024; ///< samples of a window
    int triggerPos = 0; ///< trigger position: samples of a window before its trigger
    int windowNum = 1; ///< windows of a run
    QList<TriggerPort*> triggers; ///< 16, owned
    QList<MatchUnit*> matchUnits; ///< 16, owned
    QStringList expressions; ///< in the order of the sequence
    QList<SignalItem> captureSignals; ///< what is sampled, most significant first
    QList<SignalItem> signalList; ///< data signals as the user listed them
    QString moduleName; ///< the design's module, for the host
    bool forceTriggerByFallingEdge = false; ///< samples at falling edges, whatever `trigType` is
    bool captureInitDataEnabled = false; ///< armed at power-up
    CoreStorage storage; ///< which samples are stored
    CoreEvents events; ///< what it tells of its triggers, and takes of others

    /// The port numbered `i`; null when there is none.
    TriggerPort* getTrigger(int i) const;

    /// The unit numbered `i`; null when there is none.
    MatchUnit* matchUnit(int i) const;

    /// The ports with signals, in port order.
    QList<TriggerPort*> availableTriggers() const;

    /// The units switched on, in unit order.
    QList<MatchUnit*> enabledMatchUnits() const;

    /// `captureSignals` as names bit by bit.
    QList<QString> dataSignals() const;

    /// The sampled bit number `i`; a bus counts as its bits. Past the end: a default item.
    SignalItem signalItemAt(int i) const;

    /// Bits of the register that shifts data out: the widest of the counters in use, the available
    /// ports, and a sample with its mark, which counts as at least 16.
    int dataOutShiftWidth() const;
};

/// For the debug log; nothing parses it.
OXAUTILS_EXPORT QDebug operator<<(QDebug debug, const AoCore& core);

}

#endif
