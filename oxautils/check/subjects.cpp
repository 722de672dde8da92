// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/subjects.h"

namespace OXA {

namespace {

QStringList labelsOf(const QList<SignalItem>& items)
{
    QStringList labels = flattenedTexts(items);
    for (const SignalItem& item : items)
        labels += item.isBus() ? QStringList {item.name, item.text} : QStringList();
    return labels;
}

}

AnyCore::AnyCore(const QList<AoCore*>& cores, int position)
    : AnyCore(*cores.at(position), position)
{
    if (cores.size() <= kMostCores)
        forcing = forcingPlaces(cores, *cores.at(position));
}

AnyCore::AnyCore(const QList<AOCore_Lite*>& cores, int position)
    : AnyCore(*cores.at(position), position)
{
}

AnyCore::AnyCore(const AoCore& core, int position)
    : position(position)
    , index(core.index)
    , clock(core.sampleClock)
    , trigType(core.trigType)
    , implementation(core.implementation)
    , depth(core.storageDepth)
    , events(core.events)
    , hasExpressions(!core.expressions.isEmpty())
    , tableMemory(core.expressionType == DynamicExpressions ? core.exImplementation : -1)
    , items(core.signalList)
    , data(core.dataSignals())
    , labels(QStringList(core.moduleName) + labelsOf(core.signalList))
{
    for (const TriggerPort* port : core.triggers)
        labels += labelsOf(port->signalList);
    for (const TriggerPort* port : core.availableTriggers())
        ports += port;
}

AnyCore::AnyCore(const AOCore_Lite& core, int position)
    : position(position)
    , lite(true)
    , index(core.index)
    , clock(core.sampleClock)
    , trigType(core.trigType)
    , implementation(core.implementation)
    , depth(core.captureAmount)
    , items(core.signalList)
    , data(core.dataSignals())
    , labels(QStringList(core.moduleName) + labelsOf(core.signalList))
{
}

Place AnyCore::eventsPlace() const
{
    Place place {position};
    place.events = true;
    return place;
}

Place Unit::place() const
{
    Place place {position};
    place.unit = unit.index;
    return place;
}

Place StandardCore::storagePlace() const
{
    Place place {position};
    place.storage = true;
    return place;
}

Expression::Expression(const AoCore& core, int corePosition, int number)
    : Expression(core, corePosition, number, core.expressions.at(number))
{
}

Expression::Expression(const AoCore& core, int corePosition)
    : Expression(core, corePosition, -1, core.storage.when)
{
}

Expression::Expression(const AoCore& core, int corePosition, int number, const QString& text)
    : core(core)
    , position(corePosition)
    , number(number)
    , text(text)
    , tokens(tokensOf(text))
    , parsed(parseStatic(tokens))
    , compiled(dynamic() ? compileExpression(text, unitSwitches(core)) : TruthTable())
{
}

Place Expression::place() const
{
    Place place {position};
    place.expression = number;
    place.storage = number < 0;
    return place;
}

}
