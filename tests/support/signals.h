// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_SIGNALS_H
#define TESTS_SUPPORT_SIGNALS_H

#include "oxautils/model/ao_core.h"

#include <memory>

/// The signal `name`; a bus of `bits` when there are any.
inline OXA::SignalItem signalOf(const QString& name, const QStringList& bits = {})
{
    OXA::SignalItem item;
    item.name = name;
    for (const QString& bit : bits)
        item.subItems += signalOf(bit);
    return item;
}

/// The signals `prefix`[0] to `prefix`[count - 1].
inline QList<OXA::SignalItem> signalsOf(const QString& prefix, int count)
{
    QList<OXA::SignalItem> items;
    for (int i = 0; i < count; ++i)
        items += signalOf(QString("%1[%2]").arg(prefix).arg(i));
    return items;
}

/// The bus `name` of `name`[width - 1] to `name`[0].
inline OXA::SignalItem busOf(const QString& name, int width)
{
    QStringList bits;
    for (int bit = width - 1; bit >= 0; --bit)
        bits += QString("%1[%2]").arg(name).arg(bit);
    return signalOf(name, bits);
}

/// Lets the unit `index` of `core` compare `port` with `value`.
inline OXA::MatchUnit& enableUnit(OXA::AoCore& core, int index, int port, const QString& value)
{
    OXA::MatchUnit& unit = *core.matchUnits[index];
    unit.enabled = true;
    unit.trigger = core.triggers[port];
    unit.value0 = value;
    return unit;
}

/// A core that captures `data` at every rising edge of clk: windows of `amount` samples, of which
/// the one at `position` is the first where `watched`, which is port 0, has `value`.
inline std::unique_ptr<OXA::AoCore> coreOf(int index, const QList<OXA::SignalItem>& data,
    const OXA::SignalItem& watched, const QString& value, int amount, int position)
{
    auto core = std::make_unique<OXA::AoCore>(index);
    core->sampleClock = "clk";
    core->captureSignals = core->signalList = data;
    core->triggers[0]->signalList = {watched};
    enableUnit(*core, 0, 0, value);
    core->expressions = QStringList {"M0"};
    core->storageDepth = 16;
    core->captureAmount = amount;
    core->triggerPos = position;
    return core;
}

#endif
