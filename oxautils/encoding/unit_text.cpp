// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/unit_text.h"

#include "files/fail.h"
#include "oxautils/encoding/value_text.h"
#include "oxautils/model/ao_core.h"

#include <QRegularExpression>

#include <algorithm>
#include <climits>

namespace OXA {

namespace {

struct Comparison {
    const char* text;
    const char* pattern;
    MatchFunc func;
    const char* value; // the value of the word, for a port of one signal; null: values follow
};

// In the order of trial.
constexpr Comparison kComparisons[] = {
    {"==",      "==",           MatchEqual,        nullptr},
    {"!=",      "!=",           MatchNotEqual,     nullptr},
    {">=",      ">=",           MatchGreaterEqual, nullptr},
    {"<=",      "<=",           MatchLessEqual,    nullptr},
    {">",       ">",            MatchGreater,      nullptr},
    {"<",       "<",            MatchLess,         nullptr},
    {"in",      "in\\b",        MatchInRange,      nullptr},
    {"not in",  "not\\s+in\\b", MatchNotInRange,   nullptr},
    {"rises",   "rises\\b",     MatchEqual,        "R"    },
    {"falls",   "falls\\b",     MatchEqual,        "F"    },
    {"changes", "changes\\b",   MatchEqual,        "B"    },
};

int widthOf(const TriggerPort* port) { return port ? port->singleSignals().size() : 0; }

/// `value`, by its name if that is read back as the same value.
QString namedValueText(const QString& value, const MatchUnit& unit, const StateNames& states)
{
    const int width = widthOf(unit.trigger);
    const QString name = states.isEmpty() || !unit.trigger
        ? QString()
        : statesOf(states, unit.trigger->singleSignals()).value(value);
    static const QRegularExpression word("^[A-Za-z_]\\w*$");
    QString read;
    QString expected;
    const auto names = [&](const QString&, QStringList&) { return value; };
    const bool isReadBack = word.match(name).hasMatch()
        && valueFromText(name, width, names, read, expected) && read == value;
    return isReadBack ? name : valueText(value, width);
}

QString comparisonText(const MatchUnit& unit, const StateNames& states)
{
    const int width = widthOf(unit.trigger);
    for (const Comparison& comparison : kComparisons) {
        if (comparison.value && unit.matchFunc == comparison.func && width == 1
            && unit.value0 == comparison.value)
            return comparison.text;
    }
    for (const Comparison& comparison : kComparisons) {
        if (unit.matchFunc != comparison.func)
            continue;
        const QString text
            = QString(comparison.text) + ' ' + namedValueText(unit.value0, unit, states);
        return isRangeFunction(unit.matchFunc)
            ? text + ".." + namedValueText(unit.value1, unit, states)
            : text;
    }
    return QString("function %1").arg(unit.matchFunc);
}

QString counterText(const MatchUnit& unit)
{
    if (!unit.counterEnable)
        return {};
    return QString(", %1 times%2 (counter of %3 bits)")
        .arg(QString::number(unit.counter), unit.continuous ? " in a row" : "",
            QString::number(unit.counterWidth));
}

QStringList typeNames()
{
    QStringList names;
    for (int type = MatchBasic; type <= MatchRangeEdges; ++type)
        names += type2string(MatchType(type));
    return names;
}

/// Whether hardware of `type` has the function and the edges of `unit`.
bool suffices(MatchType type, const MatchUnit& unit)
{
    const QString values
        = isRangeFunction(unit.matchFunc) ? unit.value0 + unit.value1 : unit.value0;
    return optionalFunctions(type).contains(unit.matchFunc)
        && (matchTypeHasEdges(type) || !valueHasEdges(values));
}

/// The first sufficient type.
MatchType sufficientType(const MatchUnit& unit)
{
    int type = MatchBasic;
    while (type < MatchRangeEdges && !suffices(MatchType(type), unit))
        ++type;
    return MatchType(type);
}

int sufficientWidth(int counter)
{
    int width = 1;
    while (qint64(1) << width < counter)
        ++width;
    return width;
}

constexpr char kTimes[] = "(\\d+)\\s+times?\\b(\\s+in\\s+a\\s+row\\b)?";

/// Reads a text from start to end.
class UnitReader {
public:
    UnitReader(const QString& text, const MatchUnit& unit, const ValueNames& names)
        : m_text(text)
        , m_names(names)
        , m_old(unit)
    {
        m_unit.core = unit.core;
        m_unit.index = unit.index;
    }

    bool read();

    const MatchUnit& unit() const { return m_unit; }
    const QString& error() const { return m_error; }

private:
    bool take(const QString& pattern);
    bool fail(const QString& expected) { return failAt(m_at, expected); }
    bool failAt(int place, const QString& expected);
    bool readSwitch();
    bool readNewParts();
    bool readType();
    bool readPort();
    bool readComparison();
    bool readValues(MatchFunc func);
    bool readValue(QString& value);
    bool readCounter(bool behindComma = true);

    QString taken(int group = 1) const { return m_match.captured(group); }

    const QString& m_text;
    const ValueNames& m_names;
    const MatchUnit& m_old;
    MatchUnit m_unit;
    int m_at = 0;
    int m_typed = -1; ///< the type in the text
    QRegularExpressionMatch m_match; ///< of the last `take`
    QString m_error;
};

/// Reads `pattern` at the current position, and the spaces after it.
bool UnitReader::take(const QString& pattern)
{
    m_match = QRegularExpression(QString("\\G(?:%1)\\s*").arg(pattern)).match(m_text, m_at);
    if (m_match.hasMatch())
        m_at = m_match.capturedEnd();
    return m_match.hasMatch();
}

bool UnitReader::failAt(int place, const QString& expected)
{
    const QString rest = m_text.mid(place);
    m_error
        = (rest.isEmpty() ? QString("at the end: ")
                          : QString("character %1, \"%2\": ").arg(QString::number(place + 1), rest))
        + expected;
    return false;
}

bool UnitReader::read()
{
    take("");
    if (readSwitch())
        return true;
    const bool isWhole = m_at == m_text.size() || take("(?=[A-Za-z/ ]+:|nothing\\b|T\\d{1,2}\\b)");
    if (!(isWhole ? readType() && readPort() && readComparison() && readCounter() : readNewParts()))
        return false;
    m_unit.enabled = true;
    if (m_typed >= 0)
        m_unit.matchType = MatchType(m_typed);
    else if (isWhole || !suffices(m_unit.matchType, m_unit))
        m_unit.matchType = sufficientType(m_unit);
    if (unitText(m_unit) == unitText(m_old))
        m_unit = m_old;
    return true;
}

/// Reads other values, another counter or both, for the unit as it is.
bool UnitReader::readNewParts()
{
    m_unit = m_old;
    if (!m_unit.trigger)
        return fail("the unit has no port yet; write a trigger port, T0 to T15, and what it is "
                    "compared with");
    const bool onlyCounter = take(QString("(?=%1)").arg(kTimes));
    if ((onlyCounter || readValues(m_unit.matchFunc)) && readCounter(!onlyCounter))
        return true;
    if (!onlyCounter)
        m_error += "; or write a trigger port first, T0 to T15, and what it is compared with";
    return false;
}

bool UnitReader::readSwitch()
{
    if (!take("(on|off)\\s*$"))
        return false;
    m_unit = m_old;
    m_unit.enabled = taken() == "on";
    return true;
}

bool UnitReader::readType()
{
    const int place = m_at;
    if (!take("([A-Za-z/ ]+?)\\s*:"))
        return true;
    const QStringList names = typeNames();
    for (int type = 0; type < names.size(); ++type) {
        if (names.at(type).compare(taken(), Qt::CaseInsensitive) == 0)
            m_typed = type;
    }
    return m_typed >= 0 || failAt(place, QString("the types are \"%1\"").arg(names.join("\", \"")));
}

bool UnitReader::readPort()
{
    if (take("nothing\\b"))
        return true;
    const int place = m_at;
    if (take("T(\\d{1,2})\\b"))
        m_unit.trigger = m_unit.core->getTrigger(taken().toInt());
    return m_unit.trigger
        || failAt(place, "write a trigger port, T0 to T15, and what it is compared with");
}

bool UnitReader::readComparison()
{
    QStringList texts;
    const int place = m_at;
    for (const Comparison& comparison : kComparisons) {
        texts += comparison.text;
        if (!take(comparison.pattern))
            continue;
        m_unit.matchFunc = comparison.func;
        if (!comparison.value)
            return readValues(comparison.func);
        m_unit.value0 = comparison.value;
        return widthOf(m_unit.trigger) == 1
            || failAt(place,
                QString("the port has %1 signals, \"%2\" is for one; write == and a digit for each "
                        "signal, %3 for one that %2")
                    .arg(QString::number(widthOf(m_unit.trigger)), comparison.text,
                        comparison.value));
    }
    return fail("write one of " + texts.join(", "));
}

bool UnitReader::readValues(MatchFunc func)
{
    if (!readValue(m_unit.value0) || !isRangeFunction(func))
        return m_error.isEmpty();
    if (!take("\\.\\."))
        return fail("write \"..\" and the range's upper bound, as in T0 in 3..7");
    return readValue(m_unit.value1);
}

bool UnitReader::readValue(QString& value)
{
    const int place = m_at;
    if (take("\"([^\"]*)\"")) {
        value = taken();
        return true;
    }
    if (!take("((?:(?!\\.\\.)[^\\s,\"])+)"))
        return fail("write a value");
    const QString word = taken();
    const int width = widthOf(m_unit.trigger);
    if (width == 0)
        return failAt(place, "the port has no signals, so it has no values");
    const auto ofPort = [this](const QString& name, QStringList& known) {
        return m_names(*m_unit.trigger, name, known);
    };
    QString expected;
    return valueFromText(word, width, m_names ? ofPort : NameToBits(), value, expected)
        || failAt(place, expected);
}

/// Without a width in the text, a counter keeps its own if that is sufficient.
bool UnitReader::readCounter(bool behindComma)
{
    const int place = m_at;
    bool ok = true;
    if (take((behindComma ? ",\\s*" : "") + QString(kTimes))) {
        const int before = m_unit.counterEnable ? m_unit.counterWidth : 0;
        m_unit.counterEnable = true;
        m_unit.continuous = !taken(2).isEmpty();
        m_unit.counter = taken().toInt(&ok);
        m_unit.counterWidth = std::max(before, sufficientWidth(m_unit.counter));
        if (ok && take("\\(\\s*counter\\s+of\\s+(\\d+)\\s+bits?\\s*\\)"))
            m_unit.counterWidth = taken().toInt(&ok);
    }
    if (!ok)
        return failAt(place, QString("write numbers up to %1").arg(INT_MAX));
    return m_at == m_text.size()
        || fail("write \", N times\", \", N times in a row\", optionally \"(counter of N bits)\", "
                "or nothing");
}

}

QString unitText(const MatchUnit& unit) { return unitText(unit, {}); }

QString unitText(const MatchUnit& unit, const StateNames& states)
{
    if (!unit.enabled)
        return "off";
    const QString type = type2string(unit.matchType);
    const QString port
        = unit.trigger ? QString("T%1").arg(unit.trigger->index) : QString("nothing");
    return QString("%1: %2 ").arg(
               type.isEmpty() ? QString("type %1").arg(unit.matchType) : type, port)
        + comparisonText(unit, states) + counterText(unit);
}

ValueNames valueNames(const StateNames& states)
{
    return [&states](const TriggerPort& port, const QString& name, QStringList& known) {
        const QMap<QString, QString> values = valuesOf(states, port.singleSignals());
        known += values.keys();
        return values.value(name);
    };
}

bool unitFromText(const QString& text, MatchUnit& unit, QString* error, const ValueNames& names)
{
    UnitReader reader(text, unit, names);
    if (reader.read()) {
        unit = reader.unit();
        return true;
    }
    return fail(error, reader.error());
}

QString expressionFromText(const QString& text, bool dynamic)
{
    QString expression = text.trimmed().toUpper();
    return dynamic ? expression.remove(' ').remove('\t') : expression;
}

}
