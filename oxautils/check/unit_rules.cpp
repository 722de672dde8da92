// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/unit_rules.h"

#include <QSet>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kUnsetCounter = 2; // the value of a new unit

struct Value {
    const char* name;
    QString text;
};

/// The values that the unit's function uses.
QList<Value> valuesOf(const Unit& unit)
{
    QList<Value> values {
        {"value0", unit.unit.value0}
    };
    if (isRangeFunction(unit.unit.matchFunc))
        values += {"value1", unit.unit.value1};
    return values;
}

int widthOf(const Unit& unit) { return unit.unit.trigger->singleSignals().size(); }

/// The characters allowed in values of the unit.
QString charactersFor(const Unit& unit)
{
    const bool equality = unit.unit.matchFunc == MatchEqual || unit.unit.matchFunc == MatchNotEqual;
    if (!equality)
        return "01";
    return matchTypeHasEdges(unit.unit.matchType) ? "01XRFBN" : "01X";
}

/// The characters of `text`, each once, that are not among `allowed`.
QString foreignCharacters(const QString& text, const QString& allowed)
{
    QString foreign;
    QSet<QChar> seen(allowed.begin(), allowed.end());
    for (const QChar c : text) {
        if (!seen.contains(c))
            foreign += c;
        seen << c;
    }
    return foreign;
}

bool counterWidthIsGood(const MatchUnit& unit)
{
    return unit.counterWidth >= 1 && unit.counterWidth <= kWidestCounter;
}

bool isNamed(const Unit& unit)
{
    const QStringList expressions = allExpressions(*unit.unit.core);
    for (const QString& expression : expressions) {
        if (namedUnits(tokensOf(expression)).contains(unit.unit.index))
            return true;
    }
    return false;
}

}

void findUnboundUnit(const Unit& unit, Findings& findings)
{
    if (!unit.unit.trigger)
        findings.add(unit.place(),
            QString("it is switched on%1, but bound to no trigger port")
                .arg(isNamed(unit) ? " and named by an expression" : ""));
}

void findEmptyPort(const Unit& unit, Findings& findings)
{
    if (unit.unit.trigger && !unit.watches())
        findings.add(unit.place(),
            QString("it is switched on, but its port T%1 has no signals")
                .arg(unit.unit.trigger->index));
}

void findMatchType(const Unit& unit, Findings& findings)
{
    if (type2string(unit.unit.matchType).isEmpty())
        findings.add(unit.place(), QString("there is no match type %1").arg(unit.unit.matchType));
}

void findFunction(const Unit& unit, Findings& findings)
{
    const MatchUnit& u = unit.unit;
    const QString type = type2string(u.matchType);
    if (type.isEmpty() || optionalFunctions(u.matchType).contains(u.matchFunc))
        return;
    const QString known = func2string(u.matchFunc);
    findings.add(unit.place(),
        QString("its type \"%1\" has no function %2")
            .arg(type, known.isEmpty() ? QString::number(u.matchFunc) : '"' + known + '"'));
}

void findLongValue(const Unit& unit, Findings& findings)
{
    for (const Value& value : unit.watches() ? valuesOf(unit) : QList<Value>()) {
        if (value.text.size() > widthOf(unit))
            findings.add(unit.place(),
                QString("%1 \"%2\" has %3 characters for the %4 signals of T%5, and loses its last")
                    .arg(value.name, value.text, QString::number(value.text.size()),
                        QString::number(widthOf(unit)), QString::number(unit.unit.trigger->index)));
    }
}

void findShortValue(const Unit& unit, Findings& findings)
{
    for (const Value& value : unit.watches() ? valuesOf(unit) : QList<Value>()) {
        if (value.text.size() < widthOf(unit))
            findings.add(unit.place(),
                QString("%1 \"%2\" has %3 characters for the %4 signals of T%5, and is filled up "
                        "with \"0\" on the left")
                    .arg(value.name, value.text, QString::number(value.text.size()),
                        QString::number(widthOf(unit)), QString::number(unit.unit.trigger->index)));
    }
}

void findValueCharacters(const Unit& unit, Findings& findings)
{
    const QString allowed = charactersFor(unit);
    for (const Value& value : valuesOf(unit)) {
        const QString foreign = foreignCharacters(value.text, allowed);
        if (!foreign.isEmpty())
            findings.add(unit.place(),
                QString(
                    "%1 \"%2\" contains \"%3\"; function \"%4\" of type \"%5\" allows only \"%6\"")
                    .arg(value.name, value.text, foreign, func2string(unit.unit.matchFunc),
                        type2string(unit.unit.matchType), allowed));
    }
}

void findRangeOrder(const Unit& unit, Findings& findings)
{
    const MatchUnit& u = unit.unit;
    const bool comparable = foreignCharacters(u.value0 + u.value1, "01").isEmpty();
    const int width = std::max(u.value0.size(), u.value1.size());
    if (isRangeFunction(u.matchFunc) && comparable
        && u.value0.rightJustified(width, '0') > u.value1.rightJustified(width, '0'))
        findings.add(unit.place(),
            QString("its range begins at %1 and ends below, at %2").arg(u.value0, u.value1));
}

void findCounterWidth(const Unit& unit, Findings& findings)
{
    if (unit.unit.counterEnable && !counterWidthIsGood(unit.unit))
        findings.add(unit.place(),
            QString("its counter has %1 bits, there are 1 to %2")
                .arg(QString::number(unit.unit.counterWidth), QString::number(kWidestCounter)));
}

void findCounter(const Unit& unit, Findings& findings)
{
    const MatchUnit& u = unit.unit;
    if (!u.counterEnable || !counterWidthIsGood(u))
        return;
    if (u.counter < 1 || u.counter > qint64(1) << u.counterWidth)
        findings.add(unit.place(),
            QString("a counter of %1 bits cannot count to %2")
                .arg(QString::number(u.counterWidth), QString::number(u.counter)));
}

void findIdleCounter(const Unit& unit, Findings& findings)
{
    const MatchUnit& u = unit.unit;
    if (!u.counterEnable && !u.continuous && u.counter > kUnsetCounter)
        findings.add(
            unit.place(), QString("it would count to %1, but its counter is off").arg(u.counter));
}

void findIdleContinuous(const Unit& unit, Findings& findings)
{
    if (unit.unit.continuous && !unit.unit.counterEnable)
        findings.add(unit.place(), "it counts only gapless matches, but its counter is off");
}

void findUnusedUnit(const Unit& unit, Findings& findings)
{
    if (unit.watches() && !unit.unit.core->expressions.isEmpty() && !isNamed(unit))
        findings.add(unit.place(), "it is switched on, but no expression names it");
}

}
