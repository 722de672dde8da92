// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/match_unit.h"

#include "oxautils/model/trigger_port.h"

#include <QDebug>

namespace OXA {

namespace {

struct TypeFacts {
    const char* text;
    int functionCount; // has functions 0 to functionCount - 1
    bool edges;
};

// In the order of MatchType.
constexpr TypeFacts kTypes[] = {
    {"Basic",            2, false},
    {"Basic w/edges",    2, true },
    {"Extended",         6, false},
    {"Extended w/edges", 6, true },
    {"Range",            8, false},
    {"Range w/edges",    8, true },
};

// In the order of MatchFunc.
constexpr const char* kFunctions[] = {"==", "!=", ">", "<", ">=", "<=", "in range", "not in range"};

const TypeFacts* factsOf(MatchType type)
{
    const int count = int(std::size(kTypes));
    return int(type) >= 0 && int(type) < count ? &kTypes[type] : nullptr;
}

const char* boolText(bool value) { return value ? "true" : "false"; }

}

QString type2string(MatchType type)
{
    const TypeFacts* facts = factsOf(type);
    return facts ? QString(facts->text) : QString();
}

QString func2string(MatchFunc func)
{
    const int count = int(std::size(kFunctions));
    return int(func) >= 0 && int(func) < count ? QString(kFunctions[func]) : QString();
}

QList<int> optionalFunctions(MatchType type)
{
    QList<int> functions;
    const TypeFacts* facts = factsOf(type);
    for (int i = 0; facts && i < facts->functionCount; ++i)
        functions += i;
    return functions;
}

bool matchTypeHasEdges(MatchType type)
{
    const TypeFacts* facts = factsOf(type);
    return facts && facts->edges;
}

bool isRangeFunction(MatchFunc func) { return func == MatchInRange || func == MatchNotInRange; }

QDebug operator<<(QDebug debug, const MatchUnit& unit)
{
    const QDebugStateSaver saver(debug);
    debug.noquote().nospace() << "Match Unit: M" << unit.index << '\n'
                              << "Enable: " << boolText(unit.enabled) << '\n'
                              << "Match Type: " << type2string(unit.matchType) << '\n'
                              << "Match Func: " << func2string(unit.matchFunc) << '\n'
                              << "Value0: " << unit.value0 << '\n'
                              << "Value1: " << unit.value1 << '\n'
                              << "Counter Enable: " << boolText(unit.counterEnable) << '\n'
                              << "Counter Width: " << unit.counterWidth << '\n'
                              << "Counter: " << unit.counter << '\n'
                              << "Continuous " << boolText(unit.continuous) << '\n'
                              << "Bind: ";
    if (unit.trigger)
        debug << unit.trigger->index << '\n';
    else
        debug << "null\n";
    return debug;
}

}
