// SPDX-License-Identifier: Apache-2.0
#include "core.h"

#include <algorithm>
#include <tuple>

using namespace OXA;

namespace {

AoCore* copyOf(const AoCore& from)
{
    auto* core = new AoCore(from.index);
    core->hostData = from.hostData;
    core->sampleClock = from.sampleClock;
    core->trigType = from.trigType;
    core->expressionType = from.expressionType;
    core->exImplementation = from.exImplementation;
    core->implementation = from.implementation;
    core->storageDepth = from.storageDepth;
    core->captureAmount = from.captureAmount;
    core->triggerPos = from.triggerPos;
    core->windowNum = from.windowNum;
    core->expressions = from.expressions;
    core->captureSignals = from.captureSignals;
    core->signalList = from.signalList;
    core->moduleName = from.moduleName;
    core->forceTriggerByFallingEdge = from.forceTriggerByFallingEdge;
    core->captureInitDataEnabled = from.captureInitDataEnabled;
    core->events = from.events;
    core->storage = from.storage;
    core->events = from.events;
    for (const TriggerPort* port : from.triggers)
        core->getTrigger(port->index)->signalList = port->signalList;
    for (const MatchUnit* unit : from.matchUnits) {
        MatchUnit& copy = *core->matchUnit(unit->index);
        copy = *unit;
        copy.core = core;
        copy.trigger = unit->trigger ? core->getTrigger(unit->trigger->index) : nullptr;
    }
    return core;
}

}

Core::Core(AoCore* core)
    : standard(core)
{
}

Core::Core(AOCore_Lite* core)
    : lite(core)
{
}

int& Core::index() const { return standard ? standard->index : lite->index; }

QString& Core::sampleClock() const { return standard ? standard->sampleClock : lite->sampleClock; }

int& Core::trigType() const { return standard ? standard->trigType : lite->trigType; }

int& Core::implementation() const
{
    return standard ? standard->implementation : lite->implementation;
}

int& Core::captureAmount() const
{
    return standard ? standard->captureAmount : lite->captureAmount;
}

bool& Core::captureInitData() const
{
    return standard ? standard->captureInitDataEnabled : lite->captureInitDataEnabled;
}

QList<SignalItem>& Core::signalList() const
{
    return standard ? standard->signalList : lite->signalList;
}

QString& Core::moduleName() const { return standard ? standard->moduleName : lite->moduleName; }

CorePtr Core::clone() const
{
    return standard ? std::make_shared<Core>(copyOf(*standard))
                    : std::make_shared<Core>(new AOCore_Lite(*lite));
}

void Core::updateCaptured() const
{
    if (!standard)
        return;
    standard->captureSignals.clear();
    for (const SignalItem& item : qAsConst(standard->signalList)) {
        if (item.captureEnable)
            standard->captureSignals += item;
    }
}

QList<AoCore*> standardCores(const Cores& cores)
{
    QList<AoCore*> list;
    for (const CorePtr& core : cores) {
        if (core->standard)
            list += core->standard.get();
    }
    return list;
}

QList<AOCore_Lite*> liteCores(const Cores& cores)
{
    QList<AOCore_Lite*> list;
    for (const CorePtr& core : cores) {
        if (core->lite)
            list += core->lite.get();
    }
    return list;
}

bool same(const SignalItem& a, const SignalItem& b)
{
    return a.name == b.name && a.text == b.text && a.captureEnable == b.captureEnable
        && same(a.subItems, b.subItems);
}

bool same(const QList<SignalItem>& a, const QList<SignalItem>& b)
{
    return a.size() == b.size()
        && std::equal(a.begin(), a.end(), b.begin(),
            [](const SignalItem& x, const SignalItem& y) { return same(x, y); });
}

bool same(const MatchUnit& a, const MatchUnit& b)
{
    const auto fields = [](const MatchUnit& unit) {
        return std::tie(unit.enabled, unit.matchType, unit.matchFunc, unit.counterEnable,
            unit.counterWidth, unit.counter, unit.continuous, unit.value0, unit.value1,
            unit.trigger);
    };
    return fields(a) == fields(b);
}
