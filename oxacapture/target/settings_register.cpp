// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/settings_register.h"

#include "files/fail.h"
#include "oxautils/encoding/events_text.h"

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr int kFunctionBits = 3;

bool isBasic(OXA::MatchType type) { return OXA::optionalFunctions(type).size() == 2; }

// "==", "!=": those that the type has.
QString functionsText(OXA::MatchType type)
{
    QStringList functions;
    for (const int function : OXA::optionalFunctions(type))
        functions += QString("\"%1\"").arg(OXA::func2string(OXA::MatchFunc(function)));
    return functions.join(", ");
}

QString counterText(const CoreIdentity::Unit& unit)
{
    return unit.counterBits == 0 ? QString("it has no counter")
                                 : QString("only to %1").arg(qint64(1) << unit.counterBits);
}

QString expressionsText(int count)
{
    return count == 1 ? QString("1 expression") : QString("%1 expressions").arg(count);
}

void appendWords(BitString& bits, const std::vector<quint64>& words, int width)
{
    for (int bit = 0; bit < width; ++bit)
        bits.append(bool(words[size_t(bit / 64)] >> (bit % 64) & 1));
}

QString complaint(const CoreIdentity& core, const TriggerSetup& setup)
{
    if (core.lite)
        return "a Lite core has no settings";
    if (setup.windowNum < 1 || setup.windowNum > core.mostWindows)
        return QString("it is built for %1 windows at most").arg(core.mostWindows);
    if (setup.captureAmount < 1 || setup.captureAmount > core.depth / setup.windowNum)
        return QString("%2 windows of %3 samples do not fit into its memory of %1")
            .arg(QString::number(core.depth), QString::number(setup.windowNum),
                QString::number(setup.captureAmount));
    if (setup.triggerPos < 0 || setup.triggerPos >= setup.captureAmount)
        return "the trigger position is outside of the window";
    if (setup.levels.empty() && core.expressions > 0)
        return "it is built to trigger by an expression, and needs at least one";
    if (qint64(setup.levels.size()) > core.expressions)
        return "it is built for " + expressionsText(core.expressions);
    for (const int place : setup.forcedBy) {
        if (!core.forcedBy.contains(place))
            return QString("it is not built to be forced by %1, but by %2")
                .arg(QString::number(place), OXA::forcedByText(core.forcedBy));
    }
    if (setup.units.size() != core.units.size())
        return QString("it has %1 match units").arg(core.units.size());
    return {};
}

QString complaint(const CoreIdentity::Unit& unit, int width, const UnitSetup& setup)
{
    const QString name = QString("M%1").arg(unit.number);
    if (setup.index != unit.number)
        return name + " has no setting";
    if (!OXA::optionalFunctions(unit.matchType).contains(setup.func))
        return QString("%1 does not have the function \"%2\", only %3")
            .arg(name, OXA::func2string(setup.func), functionsText(unit.matchType));
    const bool usesEdges
        = std::any_of(setup.m2.begin(), setup.m2.end(), [](quint64 word) { return word != 0; });
    if (usesEdges && !OXA::matchTypeHasEdges(unit.matchType))
        return name + " does not detect edges, only 0, 1 and X";
    if (int(setup.m0.size()) != (width + 63) / 64)
        return name + " compares values of another width";
    if (setup.counter > 0 && (unit.counterBits == 0 || setup.counter > 1ll << unit.counterBits))
        return QString("%1 does not count to %2, %3")
            .arg(name, QString::number(setup.counter), counterText(unit));
    return {};
}

void appendUnit(BitString& bits, const CoreIdentity::Unit& unit, int width, const UnitSetup& setup)
{
    appendWords(bits, setup.m0, width);
    appendWords(bits, setup.m1, width);
    if (OXA::matchTypeHasEdges(unit.matchType))
        appendWords(bits, setup.m2, width);
    bits.append(quint64(setup.func), isBasic(unit.matchType) ? 1 : kFunctionBits);
    if (unit.counterBits == 0)
        return;
    // A counter cannot be removed: units without one count to 1.
    bits.append(setup.counter > 0 && setup.continuous);
    bits.append(quint64(std::max(setup.counter, qint64(1)) - 1), unit.counterBits);
}

int portWidth(const CoreIdentity& core, int number)
{
    for (const CoreIdentity::Port& port : core.ports) {
        if (port.number == number)
            return port.signalCount;
    }
    return 0;
}

}

QStringList settingsFaults(const CoreIdentity& core, const TriggerSetup& setup)
{
    QStringList faults {complaint(core, setup)};
    for (size_t i = 0; i < core.units.size() && i < setup.units.size(); ++i)
        faults += complaint(core.units[i], portWidth(core, core.units[i].port), setup.units[i]);
    faults.removeAll({});
    return faults;
}

bool settingsBits(
    const CoreIdentity& core, const TriggerSetup& setup, BitString& bits, QString* error)
{
    bits = {};
    const QStringList faults = settingsFaults(core, setup);
    if (!faults.isEmpty())
        return OXA::fail(error, faults.join(", "));
    bits.append(quint64(setup.captureAmount - 1), core.addressBits);
    bits.append(quint64(setup.captureAmount - setup.triggerPos - 1), core.addressBits);
    bits.append(quint64(setup.windowNum - 1), bitsToCount(core.mostWindows));
    if (core.expressions > 1)
        bits.append(quint64(1) << (setup.levels.size() - 1), core.expressions);
    for (const int place : core.forcedBy)
        bits.append(setup.forcedBy.contains(place));
    for (size_t i = 0; i < core.units.size(); ++i)
        appendUnit(bits, core.units[i], portWidth(core, core.units[i].port), setup.units[i]);
    return true;
}

bool tableBits(const CoreIdentity& core, const TriggerSetup& setup, BitString& bits, QString* error)
{
    bits = {};
    if (!core.dynamic)
        return OXA::fail(error, "its expressions are part of the netlist");
    if (int(setup.levels.size()) > core.expressions)
        return OXA::fail(error, "it is built for " + expressionsText(core.expressions));
    for (quint32 row = 0; row < quint32(1) << core.units.size(); ++row) {
        quint32 outputs = 0;
        for (size_t unit = 0; unit < core.units.size(); ++unit)
            outputs |= (row >> unit & 1) << core.units[unit].number;
        for (int level = 0; level < std::max(core.expressions, 1); ++level)
            bits.append(
                size_t(level) < setup.levels.size() && setup.levels[size_t(level)].at(outputs));
        if (core.keep == OXA::CoreStorage::When)
            bits.append(setup.storage.when.at(outputs));
    }
    return true;
}

}
