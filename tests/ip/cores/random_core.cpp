// SPDX-License-Identifier: Apache-2.0
#include "random_core.h"

#include "support/signals.h"

#include <QStringList>

namespace {

constexpr int kPortWidths[] = {1, 1, 2, 2, 3, 4, 8, 31, 32, 33, 63, 64, 65};
constexpr int kDepths[] = {16, 32, 48, 64, 100, 128};

QString randomValue(Random& random, int width, bool ordered, bool edges)
{
    // Wide values hold mostly what any sample satisfies.
    const QString letters = ordered ? "01" : edges ? "01XRFBN" : "01X";
    QString value;
    for (int i = 0; i < width; ++i) {
        const bool tame = !ordered && width > 4 && between(random, 0, width) > 2;
        value += tame ? QChar('X') : letters.at(between(random, 0, letters.size() - 1));
    }
    return value;
}

void setUnit(Random& random, OXA::MatchUnit& unit)
{
    const QList<int> functions = OXA::optionalFunctions(unit.matchType);
    unit.matchFunc = OXA::MatchFunc(functions.at(between(random, 0, functions.size() - 1)));
    const int width = unit.trigger->singleSignals().size();
    const bool ordered = unit.matchFunc > 1;
    unit.value0 = randomValue(random, width, ordered, OXA::matchTypeHasEdges(unit.matchType));
    unit.value1 = randomValue(random, width, true, false);
    if (unit.matchFunc > 5 && unit.value1 < unit.value0) // else `oxa` refuses the range
        std::swap(unit.value0, unit.value1);
    if (!unit.counterEnable)
        return;
    unit.counter = between(random, 1, std::min(1 << std::min(unit.counterWidth, 8), 5));
    if (unit.counterWidth < 3 && !between(random, 0, 3))
        unit.counter = 1 << unit.counterWidth;
    unit.continuous = between(random, 0, 1);
}

QString randomExpression(Random& random, const QList<OXA::MatchUnit*>& units)
{
    QString text;
    const int count = between(random, 1, units.size() > 1 ? 3 : 1);
    for (int i = 0; i < count; ++i) {
        if (i)
            text += "&|^"[between(random, 0, 2)];
        const QString name
            = QString("M%1").arg(units.at(between(random, 0, units.size() - 1))->index);
        text += between(random, 0, 4) ? name : "(!" + name + ")";
    }
    return text;
}

void addUnits(Random& random, OXA::AoCore& core)
{
    const QList<OXA::TriggerPort*> ports = core.availableTriggers();
    const int count = between(random, 1, 4);
    for (int i = 0; i < count; ++i) {
        const int index = between(random, 0, 15);
        // M1 may be hidden by the name of M10, which `oxa` refuses.
        OXA::MatchUnit& unit = *core.matchUnits[index == 1 ? 0 : index];
        unit.enabled = true;
        unit.trigger = ports.at(between(random, 0, ports.size() - 1));
        unit.matchType = OXA::MatchType(between(random, 0, 5));
        unit.counterEnable = !between(random, 0, 2);
        unit.counterWidth = between(random, 1, 33) % 32 + 1;
    }
}

void setStorage(Random& random, OXA::AoCore& core)
{
    constexpr int kGapBits[] = {1, 2, 3, 4, 16, 32};
    OXA::CoreStorage& storage = core.storage;
    storage.keep = OXA::CoreStorage::Keep(between(random, 0, 2));
    storage.gapBits = kGapBits[between(random, 0, int(std::size(kGapBits)) - 1)];
    if (storage.keep == OXA::CoreStorage::When) {
        storage.when = randomExpression(random, core.enabledMatchUnits());
        storage.gapBits *= between(random, 0, 3) ? 1 : 0;
    }
    for (const QString& name : core.dataSignals()) {
        if (storage.keep == OXA::CoreStorage::Changes && !between(random, 0, 3))
            storage.watch += name;
    }
    storage.limit = between(random, 0, 2) ? 0 : between(random, 1, 40);
}

}

int between(Random& random, int low, int high)
{
    return low + int(random() % unsigned(high - low + 1));
}

std::unique_ptr<OXA::AoCore> randomCore(Random& random, int position)
{
    auto core = std::make_unique<OXA::AoCore>(between(random, 0, 3) ? position : 15 - position);
    core->sampleClock = QString("clk%1").arg(position);
    core->trigType = between(random, 0, 1);
    core->forceTriggerByFallingEdge = !between(random, 0, 7);
    core->captureInitDataEnabled = between(random, 0, 1);
    core->signalList = signalsOf(QString("d%1").arg(position), between(random, 1, 40));
    core->captureSignals = core->signalList;
    const int ports = between(random, 1, 3);
    for (int i = 0; i < ports; ++i) {
        const int width = kPortWidths[between(random, 0, int(std::size(kPortWidths)) - 1)];
        OXA::TriggerPort& port = *core->triggers[between(random, 0, 15)];
        port.signalList = signalsOf(QString("t%1_%2").arg(position).arg(port.index), width);
    }
    addUnits(random, *core);
    core->implementation = between(random, 0, 2);
    core->expressionType = between(random, 0, 1);
    core->exImplementation = between(random, 0, 2);
    core->storageDepth = kDepths[between(random, 0, int(std::size(kDepths)) - 1)];
    core->windowNum = between(random, 1, 4);
    const int levels = between(random, 0, 9) ? between(random, 1, 3) : 0;
    for (int level = 0; level < levels; ++level)
        core->expressions += randomExpression(random, core->enabledMatchUnits());
    setStorage(random, *core);
    changeSettings(random, *core);
    return core;
}

void changeSettings(Random& random, OXA::AoCore& core)
{
    for (OXA::MatchUnit* unit : core.enabledMatchUnits())
        setUnit(random, *unit);
    const int most = core.storageDepth / core.windowNum;
    core.captureAmount = between(random, 0, 2) ? between(random, 1, most) : between(random, 1, 4);
    core.captureAmount = std::min(core.captureAmount, most);
    core.triggerPos = between(random, 0, core.captureAmount - 1);
    if (!between(random, 0, 3))
        core.triggerPos = core.captureAmount - 1;
    if (!core.events.forcedBy.isEmpty() && !between(random, 0, 2))
        core.events.forcedBy.removeAt(between(random, 0, core.events.forcedBy.size() - 1));
    if (core.expressionType == 1) {
        for (QString& expression : core.expressions)
            expression = randomExpression(random, core.enabledMatchUnits());
    }
}

void addEvents(Random& random, const QList<OXA::AoCore*>& cores)
{
    for (OXA::AoCore* core : cores) {
        core->events.triggerOut = !between(random, 0, 3);
        core->events.stamps = !between(random, 0, 2);
        QList<int> forcing;
        for (int place = 0; place < cores.size(); ++place) {
            if (cores.at(place) != core && !between(random, 0, 2))
                forcing += place;
        }
        OXA::setForcingPlaces(cores, *core, forcing);
        // Else most cores would trigger before another one does.
        if (core != cores.first() && between(random, 0, 2))
            core->expressions.clear();
    }
}

QByteArray randomSample(Random& random, const QByteArray& before)
{
    QByteArray sample = before;
    for (char& bit : sample) {
        if (!between(random, 0, 2))
            bit = bit == '0' ? '1' : '0';
    }
    return sample;
}
