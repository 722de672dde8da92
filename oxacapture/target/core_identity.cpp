// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/core_identity.h"

#include "files/fail.h"
#include "oxautils/model/limits.h"

namespace OXA_CAPTURE {

namespace {

constexpr quint32 kMagic = 0x3141584f;
constexpr int kVersion = 3;
constexpr int kEntryBits = 32; // of a port, of a unit

// Positions of the fields in the register's head.
struct Field {
    int from, width;
};
constexpr Field kMagicField = {0, 32};
constexpr Field kVersionField = {32, 8};
constexpr Field kKindField = {40, 8};
constexpr Field kFallingField = {48, 1};
constexpr Field kArmedField = {49, 1};
constexpr Field kDynamicField = {50, 1};
constexpr Field kSignalsField = {64, 16};
constexpr Field kExpressionsField = {80, 8};
constexpr Field kPortsField = {88, 8};
constexpr Field kUnitsField = {96, 8};
constexpr Field kAddressField = {112, 8};
constexpr Field kDepthField = {128, 32};
constexpr Field kWindowsField = {160, 32};

// The fields of a port's and a unit's entry.
constexpr Field kNumber = {0, 8};
constexpr Field kPortSignals = {8, 24};
constexpr Field kUnitPort = {8, 8};
constexpr Field kUnitType = {16, 8};
constexpr Field kUnitCounter = {24, 8};

quint64 get(const BitString& bits, Field field, int offset = 0)
{
    return bits.number(offset + field.from, field.width);
}

// Collects numbers that differ.
class Comparison {
public:
    void number(qint64 has, qint64 wanted, const QString& what)
    {
        if (has != wanted)
            texts += QString("%1 %2 instead of %3")
                         .arg(QString::number(has), what, QString::number(wanted));
    }
    void text(const QString& has, const QString& wanted)
    {
        if (has != wanted)
            texts += QString("%1 instead of %2").arg(has, wanted);
    }

    QStringList texts;
};

QString edgeName(bool falling) { return falling ? "falling edges" : "rising edges"; }

template <typename Entry> QStringList numbersOf(const std::vector<Entry>& entries, const char* name)
{
    QStringList numbers;
    for (const Entry& entry : entries)
        numbers += name + QString::number(entry.number);
    return numbers;
}

QString listText(const QStringList& list, const QString& what)
{
    return list.isEmpty() ? "no " + what : what + ' ' + list.join(' ');
}

QString unitText(int number, int port)
{
    return QString("M%1 at T%2").arg(QString::number(number), QString::number(port));
}

QString unitText(int number, int port, OXA::MatchType type, int counterBits)
{
    return QString("M%1 of type \"%2\" at T%3, counter of %4 bits")
        .arg(QString::number(number), OXA::type2string(type), QString::number(port),
            QString::number(counterBits));
}

void comparePorts(const CoreIdentity& identity, const OXA::AoCore& core, Comparison& comparison)
{
    QStringList wanted;
    for (const OXA::TriggerPort* port : core.availableTriggers())
        wanted += QString("T%1").arg(port->index);
    comparison.text(listText(numbersOf(identity.ports, "T"), "trigger ports"),
        listText(wanted, "trigger ports"));
    for (const CoreIdentity::Port& port : identity.ports) {
        if (const OXA::TriggerPort* own = core.getTrigger(port.number))
            comparison.number(port.signalCount, own->singleSignals().size(),
                QString("signals of T%1").arg(port.number));
    }
}

void compareUnits(const CoreIdentity& identity, const OXA::AoCore& core, Compared compared,
    Comparison& comparison)
{
    QStringList wanted;
    for (const OXA::MatchUnit* unit : core.enabledMatchUnits())
        wanted += QString("M%1").arg(unit->index);
    comparison.text(
        listText(numbersOf(identity.units, "M"), "match units"), listText(wanted, "match units"));
    for (const CoreIdentity::Unit& unit : identity.units) {
        const OXA::MatchUnit* own = core.matchUnit(unit.number);
        if (!own || !own->enabled || !own->trigger)
            continue;
        if (compared == Compared::Fixed)
            comparison.text(
                unitText(unit.number, unit.port), unitText(own->index, own->trigger->index));
        else
            comparison.text(unitText(unit.number, unit.port, unit.matchType, unit.counterBits),
                unitText(own->index, own->trigger->index, own->matchType,
                    own->counterEnable ? own->counterWidth : 0));
    }
}

// Properties of every core.
template <typename Core>
void compareCapture(const CoreIdentity& identity, const Core& core, const char* kind, qint64 depth,
    Comparison& comparison)
{
    comparison.text(identity.lite ? "a Lite core" : "a Standard core", kind);
    comparison.text(edgeName(identity.fallingEdge), edgeName(sampleRequest(core).fallingEdge));
    comparison.number(identity.signalCount, core.dataSignals().size(), "data signals");
    comparison.number(identity.depth, depth, "words of memory");
}

// Why `bits` are not the identity of a core that this program knows; empty when they are.
QString complaint(const BitString& bits)
{
    if (bits.size() < kIdentityHeadBits)
        return "its identity is cut off";
    if (get(bits, kMagicField) != kMagic || get(bits, kKindField) > 1)
        return "it is not an analyzer core";
    if (get(bits, kVersionField) != kVersion)
        return QString("it has version %1 of the protocol, not %2; %3")
            .arg(QString::number(get(bits, kVersionField)), QString::number(kVersion),
                get(bits, kVersionField) < kVersion ? "generate and synthesize it again"
                                                    : "it needs a newer version of this program");
    if (bits.size() < identityBits(bits))
        return "its identity is cut off after its head";
    if (get(bits, kKindField) == 0 && get(bits, kSignalsField) == 0)
        return "it captures no signal";
    return {};
}

}

int identityBits(const BitString& head)
{
    const quint64 entries = get(head, kPortsField) + get(head, kUnitsField);
    return kIdentityHeadBits + kEntryBits * int(entries);
}

bool parseIdentity(const BitString& bits, int position, CoreIdentity& identity, QString* error)
{
    identity = {};
    const QString fault = complaint(bits);
    if (!fault.isEmpty())
        return OXA::fail(error, fault);
    identity.position = position;
    identity.lite = get(bits, kKindField) == 0;
    identity.fallingEdge = get(bits, kFallingField);
    identity.armedAtPowerUp = get(bits, kArmedField);
    identity.dynamic = get(bits, kDynamicField);
    identity.signalCount = int(get(bits, kSignalsField));
    identity.expressions = int(get(bits, kExpressionsField));
    identity.addressBits = int(get(bits, kAddressField));
    identity.depth = qint64(get(bits, kDepthField));
    identity.mostWindows = qint64(get(bits, kWindowsField));
    int at = kIdentityHeadBits;
    for (quint64 i = 0; i < get(bits, kPortsField); ++i, at += kEntryBits)
        identity.ports.push_back({int(get(bits, kNumber, at)), int(get(bits, kPortSignals, at))});
    for (quint64 i = 0; i < get(bits, kUnitsField); ++i, at += kEntryBits)
        identity.units.push_back({int(get(bits, kNumber, at)), int(get(bits, kUnitPort, at)),
            OXA::MatchType(get(bits, kUnitType, at)), int(get(bits, kUnitCounter, at))});
    return true;
}

QStringList differences(const CoreIdentity& identity, const OXA::AoCore& core, Compared compared)
{
    Comparison comparison;
    compareCapture(identity, core, "a Standard core", core.storageDepth, comparison);
    comparison.text(identity.dynamic ? "dynamic expressions" : "static expressions",
        core.expressionType == OXA::DynamicExpressions ? "dynamic expressions"
                                                       : "static expressions");
    comparePorts(identity, core, comparison);
    compareUnits(identity, core, compared, comparison);
    if (compared == Compared::All)
        comparison.number(identity.expressions, core.expressions.size(), "expressions");
    return comparison.texts;
}

QStringList differences(const CoreIdentity& identity, const OXA::AOCore_Lite& core)
{
    Comparison comparison;
    compareCapture(identity, core, "a Lite core", core.captureAmount, comparison);
    return comparison.texts;
}

}
