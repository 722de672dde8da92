// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/trigger/trigger_setup.h"

#include "oxautils/encoding/data_depth.h"
#include "oxautils/encoding/match_registers.h"
#include "oxautils/model/limits.h"

#include <dev/device_db.h>

#include <QBitArray>
#include <QSet>

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

// Collects the errors of one core.
class Complaints {
public:
    Complaints(QString place, Messages& messages)
        : m_place(std::move(place))
        , m_messages(messages)
    {
    }

    void add(const QString& part, const QString& text)
    {
        m_messages.append(
            {m_place.isEmpty() || part.isEmpty() ? m_place + part : m_place + ", " + part, text});
    }

private:
    QString m_place;
    Messages& m_messages;
};

// Bit 0 of `bits` is the most significant.
std::vector<quint64> wordsOf(const QBitArray& bits)
{
    std::vector<quint64> words(size_t(bits.size() + 63) / 64);
    for (int bit = 0; bit < bits.size(); ++bit) {
        const int fromLeast = bits.size() - 1 - bit;
        if (bits.testBit(bit))
            words[size_t(fromLeast / 64)] |= quint64(1) << (fromLeast % 64);
    }
    return words;
}

QString unitComplaint(const OXA::MatchUnit& unit)
{
    if (!unit.trigger || unit.trigger->signalList.isEmpty())
        return "it has no trigger port with signals";
    if (OXA::type2string(unit.matchType).isEmpty())
        return QString("there is no match type %1").arg(unit.matchType);
    if (!OXA::optionalFunctions(unit.matchType).contains(unit.matchFunc))
        return QString("its type, \"%1\", has no function %2")
            .arg(OXA::type2string(unit.matchType), QString::number(unit.matchFunc));
    if (!unit.counterEnable)
        return {};
    if (unit.counterWidth < 1 || unit.counterWidth > OXA::kWidestCounter)
        return QString("a counter cannot have %1 bits").arg(unit.counterWidth);
    if (unit.counter < 1 || unit.counter > qint64(1) << unit.counterWidth)
        return QString("a counter of %1 bits cannot count to %2")
            .arg(QString::number(unit.counterWidth), QString::number(unit.counter));
    return {};
}

UnitSetup unitSetup(const OXA::AoCore& core, OXA::MatchUnit& unit)
{
    QBitArray m0;
    QBitArray m1;
    QBitArray m2;
    OXA::bitForM(&unit, m0, m1, m2);
    if (!OXA::matchTypeHasEdges(unit.matchType))
        m2.fill(false);
    UnitSetup setup;
    setup.index = unit.index;
    setup.field = 1 + core.availableTriggers().indexOf(unit.trigger);
    setup.func = unit.matchFunc;
    setup.m0 = wordsOf(m0);
    setup.m1 = wordsOf(m1);
    setup.m2 = wordsOf(m2);
    setup.counter = unit.counterEnable ? unit.counter : 0;
    setup.continuous = unit.continuous;
    return setup;
}

void addUnits(const OXA::AoCore& core, TriggerSetup& setup, Complaints& complaints)
{
    for (OXA::MatchUnit* unit : core.enabledMatchUnits()) {
        const QString complaint = unitComplaint(*unit);
        if (complaint.isEmpty())
            setup.units.push_back(unitSetup(core, *unit));
        else
            complaints.add(QString("M%1").arg(unit->index), complaint);
    }
}

void addLevels(const OXA::AoCore& core, TriggerSetup& setup, Complaints& complaints)
{
    if (core.expressions.size() > OXA::kMostExpressions)
        complaints.add({}, QString("it has more than %1 expressions").arg(OXA::kMostExpressions));
    for (int level = 0; level < core.expressions.size(); ++level) {
        const QString& text = core.expressions.at(level);
        TriggerTable table;
        QString error;
        if (!triggerTable(core, text, table, &error))
            complaints.add(QString("expression %1").arg(level), error);
        setup.levels.push_back(table);
    }
}

void addStorage(const OXA::AoCore& core, TriggerSetup& setup, Complaints& complaints)
{
    StorageSetup& storage = setup.storage;
    storage.keep = core.storage.keep;
    if (storage.all())
        return;
    storage.gapBits = core.storage.gapBits;
    storage.limit = core.storage.limit;
    QBitArray watch(core.dataSignals().size());
    const std::vector<bool> watched = OXA::watchedForChanges(core);
    for (int bit = 0; bit < watch.size(); ++bit)
        watch.setBit(bit, watched[size_t(bit)]);
    storage.watch = wordsOf(watch);
    QString error;
    if (storage.gapBits < (storage.keep == OXA::CoreStorage::Changes ? 1 : 0)
        || storage.gapBits > OXA::CoreStorage::kMostGapBits)
        complaints.add("storage", QString("a gap cannot have %1 bits").arg(storage.gapBits));
    if (storage.limit < 0 || storage.limit > OXA::CoreStorage::kMostLimit)
        complaints.add("storage", QString("there is no limit of %1 samples").arg(storage.limit));
    if (storage.keep == OXA::CoreStorage::When
        && !triggerTable(core, core.storage.when, storage.when, &error))
        complaints.add("storage", error);
}

void addWindows(const OXA::AoCore& core, TriggerSetup& setup, Complaints& complaints)
{
    setup.captureAmount = core.captureAmount;
    setup.triggerPos = core.triggerPos;
    setup.windowNum = core.windowNum;
    if (core.captureAmount < 1 || core.windowNum < 1)
        complaints.add({},
            QString("it takes %1 windows of %2 samples")
                .arg(QString::number(core.windowNum), QString::number(core.captureAmount)));
    else if (setup.captureAmount * setup.windowNum > core.storageDepth)
        complaints.add({},
            QString("%2 windows of %3 samples do not fit into its memory of %1")
                .arg(QString::number(core.storageDepth), QString::number(core.windowNum),
                    QString::number(core.captureAmount)));
    else if (core.triggerPos < 0 || core.triggerPos >= core.captureAmount)
        complaints.add({},
            QString("a window of %1 samples has no trigger position %2")
                .arg(QString::number(core.captureAmount), QString::number(core.triggerPos)));
}

}

int pulseDelay(const OXA::AoCore& core)
{
    return core.expressionType == OXA::DynamicExpressions ? 4 : 3;
}

SampleRequest sampleRequest(const OXA::AoCore& core)
{
    // Forcing at the falling edge also takes the samples there.
    SampleRequest request {
        core.sampleClock, core.trigType == 1 || core.forceTriggerByFallingEdge, {}};
    request.fields.push_back(core.dataSignals());
    for (const OXA::TriggerPort* port : core.availableTriggers())
        request.fields.push_back(port->singleSignals());
    return request;
}

SampleRequest sampleRequest(const OXA::AOCore_Lite& core)
{
    return {core.sampleClock, core.trigType == 1, {core.dataSignals()}};
}

qint64 powerUpPosition(const OXA::AoCore& core, const OXA::OxaArg& arg)
{
    const qint64 behind
        = OXA::samplesBehindTrigger(core, arg.package, OXA::depthFlag(arg.configFile));
    return core.captureAmount - 1 - std::max(behind, qint64(0));
}

PowerUpShift powerUpShift(const OXA::AoCore& core, const QString& configFile)
{
    PowerUpShift shift;
    OXA::OxaArg arg;
    arg.configFile = configFile;
    QSet<QString> seen;
    const QList<DEV::ChipInfo> chips = DEV::DeviceDb::instance().chips();
    for (const DEV::ChipInfo& chip : chips) {
        arg.package = chip.name;
        if (seen.contains(chip.name))
            continue;
        seen += chip.name;
        const qint64 position = powerUpPosition(core, arg);
        if (position == core.triggerPos)
            continue;
        shift.position = position;
        shift.devices += chip.name;
    }
    return shift;
}

QString powerUpText(const OXA::AoCore& core, const QString& configFile)
{
    const PowerUpShift shift = powerUpShift(core, configFile);
    const QString text = QString("%1 samples before the trigger").arg(core.triggerPos);
    return shift.devices.isEmpty()
        ? text
        : text + QString("; %1 on ").arg(shift.position) + shift.devices.join(", ");
}

bool triggerSetup(
    const OXA::AoCore& core, const QString& place, TriggerSetup& setup, Messages& messages)
{
    const int before = messages.size();
    Complaints complaints(place, messages);
    setup = {};
    if (core.trigType != 0 && core.trigType != 1)
        complaints.add({},
            QString("its sampling edge is %1, neither 0 (rising) nor 1 (falling)")
                .arg(core.trigType));
    if (core.dataSignals().isEmpty())
        complaints.add({}, "it captures no signal");
    addUnits(core, setup, complaints);
    addLevels(core, setup, complaints);
    addWindows(core, setup, complaints);
    addStorage(core, setup, complaints);
    setup.stamps = core.events.stamps;
    return messages.size() == before;
}

}
