// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/core_identity.h"

#include "files/fail.h"
#include "oxautils/encoding/events_text.h"
#include "oxautils/model/limits.h"

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr quint32 kMagic = 0x3141584f;
constexpr int kVersion = 5;
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
constexpr Field kKeepField = {52, 2};
constexpr Field kEndsField = {54, 1};
constexpr Field kStampsField = {55, 1};
constexpr Field kSourcesField = {56, 4};
constexpr Field kSignalsField = {64, 16};
constexpr Field kExpressionsField = {80, 8};
constexpr Field kPortsField = {88, 8};
constexpr Field kUnitsField = {96, 8};
constexpr Field kAddressField = {112, 8};
constexpr Field kGapField = {120, 8};
constexpr Field kDepthField = {128, 32};
constexpr Field kWindowsField = {160, 32};

// The fields of a port's and a unit's entry.
constexpr Field kNumber = {0, 8};
constexpr Field kPortSignals = {8, 24};
constexpr Field kUnitPort = {8, 8};
constexpr Field kUnitType = {16, 8};
constexpr Field kUnitCounter = {24, 8};
constexpr Field kForcedBy = {0, OXA::kMostCores};

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

QString kindName(bool lite) { return lite ? "a Lite core" : "a Standard core"; }

QString edgeName(bool falling) { return falling ? "falling edges" : "rising edges"; }

QString stampsName(bool stamps)
{
    return stamps ? "windows with stamps" : "windows without stamps";
}

QString sourcesName(const CoreIdentity& core)
{
    return "inputs for the triggers of cores " + OXA::forcedByText(core.forcedBy);
}

QString expressionsName(bool dynamic)
{
    return dynamic ? "dynamic expressions" : "static expressions";
}

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

QString unitText(const CoreIdentity::Unit& unit)
{
    return QString("M%1 at T%2").arg(QString::number(unit.number), QString::number(unit.port));
}

QString wholeText(const CoreIdentity::Unit& unit)
{
    return QString("M%1 of type \"%2\" at T%3, counter of %4 bits")
        .arg(QString::number(unit.number), OXA::type2string(unit.matchType),
            QString::number(unit.port), QString::number(unit.counterBits));
}

template <typename Entry> const Entry* entryOf(const std::vector<Entry>& entries, int number)
{
    const auto found = std::find_if(entries.begin(), entries.end(),
        [number](const Entry& entry) { return entry.number == number; });
    return found == entries.end() ? nullptr : &*found;
}

void comparePorts(const CoreIdentity& is, const CoreIdentity& wanted, Comparison& comparison)
{
    comparison.text(listText(numbersOf(is.ports, "T"), "trigger ports"),
        listText(numbersOf(wanted.ports, "T"), "trigger ports"));
    for (const CoreIdentity::Port& port : is.ports) {
        if (const CoreIdentity::Port* other = entryOf(wanted.ports, port.number))
            comparison.number(
                port.signalCount, other->signalCount, QString("signals of T%1").arg(port.number));
    }
}

void compareUnits(
    const CoreIdentity& is, const CoreIdentity& wanted, Compared compared, Comparison& comparison)
{
    comparison.text(listText(numbersOf(is.units, "M"), "match units"),
        listText(numbersOf(wanted.units, "M"), "match units"));
    for (const CoreIdentity::Unit& unit : is.units) {
        const CoreIdentity::Unit* other = entryOf(wanted.units, unit.number);
        if (other && compared == Compared::Fixed)
            comparison.text(unitText(unit), unitText(*other));
        else if (other)
            comparison.text(wholeText(unit), wholeText(*other));
    }
}

// What only a Standard core has.
void setIdentity(const OXA::AoCore& core, CoreIdentity& identity)
{
    identity.armedAtPowerUp = core.captureInitDataEnabled;
    identity.dynamic = core.expressionType == OXA::DynamicExpressions;
    identity.expressions = int(core.expressions.size());
    identity.keep = core.storage.keep;
    if (!core.storage.isDefault()) {
        identity.gapBits = core.storage.gapBits;
        identity.marksEnds = core.storage.limit > 0;
    }
    identity.depth = core.storageDepth;
    identity.mostWindows = qint64(1) << bitsToCount(core.windowNum);
    identity.stamps = core.events.stamps;
    for (const OXA::TriggerPort* port : core.availableTriggers())
        identity.ports.push_back({port->index, int(port->singleSignals().size())});
    for (const OXA::MatchUnit* unit : core.enabledMatchUnits()) {
        const int port = unit->trigger ? unit->trigger->index : -1;
        identity.units.push_back(
            {unit->index, port, unit->matchType, unit->counterEnable ? unit->counterWidth : 0});
    }
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
    if (get(bits, kKeepField) > OXA::CoreStorage::When
        || get(bits, kGapField) > OXA::CoreStorage::kMostGapBits)
        return "it stores its samples in a way that this program does not know";
    return {};
}

}

QString storageText(const CoreIdentity& core)
{
    static const QStringList names {"all samples", "changes", "samples by an expression"};
    const QString gaps = QString(" with gaps of %1 bits").arg(core.gapBits);
    return names.value(core.keep) + (core.gapBits > 0 ? gaps : QString())
        + (core.marksEnds ? " and a limit" : "");
}

int bitsToCount(qint64 count)
{
    int bits = 0;
    while (qint64(1) << bits < count)
        ++bits;
    return bits;
}

int identityBits(const BitString& head)
{
    const quint64 entries = get(head, kPortsField) + get(head, kUnitsField);
    const int sources = get(head, kSourcesField) > 0 ? kEntryBits : 0;
    return kIdentityHeadBits + kEntryBits * int(entries) + sources;
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
    identity.keep = OXA::CoreStorage::Keep(get(bits, kKeepField));
    identity.gapBits = int(get(bits, kGapField));
    identity.marksEnds = get(bits, kEndsField);
    identity.stamps = get(bits, kStampsField);
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
    const quint64 sources = get(bits, kSourcesField) > 0 ? get(bits, kForcedBy, at) : 0;
    for (int place = 0; place < OXA::kMostCores; ++place) {
        if (sources >> place & 1)
            identity.forcedBy += place;
    }
    if (quint64(identity.forcedBy.size()) != get(bits, kSourcesField))
        return OXA::fail(error, "its number of cores that force it is not that of their positions");
    return true;
}

CoreIdentity identityOf(const CorePlan& core, int position)
{
    CoreIdentity identity;
    identity.position = position;
    identity.fallingEdge = core.request.fallingEdge;
    identity.signalCount = int(core.request.fields.front().size());
    identity.lite = core.lite != nullptr;
    if (identity.lite) {
        identity.armedAtPowerUp = core.lite->captureInitDataEnabled;
        identity.depth = core.lite->captureAmount;
    } else {
        setIdentity(*core.core, identity);
        identity.forcedBy = core.setup.forcedBy;
    }
    identity.addressBits = std::max(bitsToCount(identity.depth), 1);
    return identity;
}

QStringList differences(const CoreIdentity& is, const CoreIdentity& wanted, Compared compared)
{
    Comparison comparison;
    comparison.text(kindName(is.lite), kindName(wanted.lite));
    comparison.text(edgeName(is.fallingEdge), edgeName(wanted.fallingEdge));
    comparison.number(is.signalCount, wanted.signalCount, "data signals");
    comparison.number(is.depth, wanted.depth, "words of memory");
    if (is.lite || wanted.lite)
        return comparison.texts;
    comparison.text(expressionsName(is.dynamic), expressionsName(wanted.dynamic));
    comparison.text("memory for " + storageText(is), "memory for " + storageText(wanted));
    comparison.text(stampsName(is.stamps), stampsName(wanted.stamps));
    comparePorts(is, wanted, comparison);
    compareUnits(is, wanted, compared, comparison);
    if (compared == Compared::All) {
        comparison.text(sourcesName(is), sourcesName(wanted));
        comparison.number(is.expressions, wanted.expressions, "expressions");
    }
    return comparison.texts;
}

}
