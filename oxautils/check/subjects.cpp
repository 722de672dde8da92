#include "oxautils/check/subjects.h"

namespace OXA {

AnyCore::AnyCore(const AoCore& core, int position)
    : position(position)
    , index(core.index)
    , clock(core.sampleClock)
    , trigType(core.trigType)
    , implementation(core.implementation)
    , depth(core.storageDepth)
    , tableMemory(core.expressionType == 1 ? core.exImplementation : -1)
    , data(core.dataSignals())
{
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
    , data(core.dataSignals())
{
}

Place Unit::place() const
{
    Place place {position};
    place.unit = unit.index;
    return place;
}

Expression::Expression(const AoCore& core, int corePosition, int number)
    : core(core)
    , position(corePosition)
    , number(number)
    , text(core.expressions.at(number))
    , tokens(tokensOf(text))
{
}

Place Expression::place() const
{
    Place place {position};
    place.expression = number;
    return place;
}

}
