// SPDX-License-Identifier: Apache-2.0
#include "oxautils/resource/logic_counts.h"

#include "oxautils/encoding/expression_tokens.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"
#include "oxautils/model/limits.h"
#include "oxautils/resource/capture_memory.h"

#include <dev/device_facts.h>

#include <QSet>

#include <algorithm>
#include <bitset>

namespace OXA_TOOL {

namespace {

constexpr int kTallyBits = 8;
constexpr int kStampBits = 32;

// A wide comparison has two steps: equality is compared in parts, magnitude from the lowest bits
// on.
constexpr int kPart = 16;
int bitsOfFirstStep(int width) { return width > kPart ? width * 5 / 8 : width; }

// Bits of the index into what a core reports: its status of 512 bits, of a Lite core 256, or its
// identity.
constexpr int kLeastIndexBits = 9;
constexpr int kLeastLiteIndexBits = 8;
constexpr int kPartUnits = 4; // whose counts are in one part of the status, which has a register
constexpr int kIdentityHead = 192; // bits
constexpr int kIdentityWord = 32; // of each port and unit, and of the cores that force this one

// Bits of memory: smaller ones become registers unless a kind is set.
constexpr qint64 kWorthBlock = 128;

/// Bits that count `n` things, at least one.
int bitsFor(qint64 n)
{
    int bits = 1;
    while (bits < 62 && (qint64(1) << bits) < n)
        ++bits;
    return bits;
}

/// Look-up tables of four inputs for a selector of `n` inputs.
double muxTables(qint64 n)
{
    const qint64 whole = 2 * n / 3;
    return n < 2 ? 0 : double(whole);
}

/// Registers of a large selector of `n` inputs, which has two steps: of its parts, and of the upper
/// half of the index.
qint64 pickRegisters(qint64 n)
{
    if (n < 2)
        return 0;
    const int bits = bitsFor(n);
    const int low = (bits + 1) / 2;
    return ((n - 1) >> low) + 1 + bits - low;
}

// ---- Memories

constexpr int kUnasked = -1; // the best kind
constexpr int kShadowWords = 16; // of a block

struct Memory {
    Memory(int kind, qint64 width, qint64 depth)
        : kind(kind)
        , width(std::max<qint64>(width, 0))
        , depth(std::max<qint64>(depth, 0))
    {
    }

    int kind;
    qint64 width; // bits
    qint64 depth; // words
};

/// Blocks in depth, as synthesis maps memories: the mode with the fewest blocks, and of two equal
/// modes the deeper one.
qint64 banksOf(const Memory& memory, bool smallBlocks)
{
    constexpr int kModeWidths[] = {1, 2, 4, 9, 18, 36};
    qint64 fewest = 0;
    qint64 banks = 1;
    for (int width : kModeWidths) {
        const qint64 depth = (smallBlocks ? 8192 : 16384) / (width < 9 ? width : width / 9 * 8);
        const qint64 behind = (memory.depth + depth - 1) / depth;
        const qint64 blocks = behind * ((memory.width + width - 1) / width);
        if (fewest == 0 || blocks < fewest) {
            fewest = blocks;
            banks = behind;
        }
    }
    return banks;
}

void addBanks(LogicCounts& counts, const Memory& memory, qint64 banks)
{
    if (banks < 2)
        return;
    counts.items[BankMux] += double(memory.width) * muxTables(banks);
    counts.items[Banks] += double(banks);
}

/// A memory and its output register, which is part of a block.
void addMemory(LogicCounts& counts, const Memory& memory, const DEV::ChipInfo& part)
{
    const qint64 bits = memory.width * memory.depth;
    const bool unasked
        = (memory.kind < OXA::BlockSram || memory.kind > OXA::ShadowSram) && bits < kWorthBlock;
    if (memory.kind == OXA::Registers || unasked) {
        counts.registers += bits + memory.width;
        counts.items[RegisterMux] += double(memory.width) * muxTables(memory.depth);
        counts.items[RegisterWords] += double(memory.depth);
    } else if (memory.kind == OXA::ShadowSram) {
        counts.registers += memory.width;
        addBanks(counts, memory, (memory.depth + kShadowWords - 1) / kShadowWords);
    } else {
        const qint64 banks = banksOf(memory, DEV::deviceFacts(part.name).blocks == DEV::Blocks9k);
        addBanks(counts, memory, banks);
        if (banks > 1)
            counts.registers += bitsFor(banks); // of the word read
    }
}

/// The kind that the device gets.
int kindOn(const DEV::ChipInfo& part, int kind)
{
    return part.name.isEmpty() ? kind : builtKind(kind, part.partNumber, part.name);
}

// ---- Standard cores

/// The units that expressions name: synthesis removes the counters of others.
QList<int> namedUnits(const OXA::AoCore& core)
{
    QList<int> units;
    const QStringList expressions = OXA::allExpressions(core);
    if (core.expressionType == OXA::DynamicExpressions && !expressions.isEmpty()) {
        for (const OXA::MatchUnit* unit : core.enabledMatchUnits())
            units += unit->index;
        return units;
    }
    for (const QString& expression : expressions)
        units += OXA::namedUnits(OXA::tokensOf(expression));
    return units;
}

void addUnit(LogicCounts& counts, const OXA::MatchUnit& unit, bool dynamic, bool named)
{
    const int width = unit.trigger->singleSignals().size();
    const bool edges = OXA::matchTypeHasEdges(unit.matchType);
    const bool ordered = unit.matchType >= OXA::MatchExtended;
    counts.items[Units] += 1;
    counts.items[edges ? EdgeBits : LevelBits] += width;
    counts.registers += (edges ? 3 : 2) * width + (ordered ? 3 : 1); // settings
    counts.registers += (width + kPart - 1) / kPart + (ordered ? 2 : 0) + 1; // comparison
    counts.registers += 2 * kTallyBits + (dynamic ? 1 : 0);
    if (ordered)
        counts.items[OrderedBits] += width;
    if (!unit.counterEnable)
        return;
    const qint64 counterBits = std::max(unit.counterWidth, 0);
    counts.registers += counterBits + 1; // settings
    if (named) {
        counts.items[CounterBits] += double(counterBits);
        counts.registers += counterBits + 1;
    }
}

/// Look-up tables of four inputs for a tree over the operands; a unit named twice counts twice.
int expressionTables(const QString& text)
{
    const QList<OXA::Token> tokens = OXA::tokensOf(text);
    const auto isUnit = [](const OXA::Token& token) { return token.kind == OXA::Token::Unit; };
    const int operands = int(std::count_if(tokens.begin(), tokens.end(), isUnit));
    return operands < 2 ? 0 : (operands + 1) / 3;
}

void addExpressions(LogicCounts& counts, const OXA::AoCore& core, const DEV::ChipInfo& part)
{
    const int levels = core.expressions.size();
    if (levels > 1) {
        counts.items[Levels] += levels;
        counts.registers += qint64(2) * levels; // the level, and the settings
    }
    counts.registers += std::max(levels, 1); // in the status
    const QStringList expressions = OXA::allExpressions(core);
    if (core.expressionType != OXA::DynamicExpressions) {
        for (const QString& expression : expressions)
            counts.items[ExpressionTables] += expressionTables(expression);
        return;
    }
    counts.items[DynamicCores] += 1;
    if (expressions.isEmpty())
        return; // nothing reads the table
    const int units = std::max(int(core.enabledMatchUnits().size()), 1);
    addMemory(counts, {kindOn(part, core.exImplementation), expressions.size(), qint64(1) << units},
        part);
    counts.registers += expressions.size() - 1; // for a word to write
}

/// What decides which samples are stored, and counts the others.
void addStorage(LogicCounts& counts, const OXA::AoCore& core)
{
    constexpr int kGroup = 8; // signals that are compared together
    if (core.storage.isDefault())
        return;
    counts.items[StoringCores] += 1;
    counts.registers += 1; // the next sample is the first of a window
    if (core.storage.keep == OXA::CoreStorage::Changes) {
        const std::vector<bool> watched = OXA::watchedForChanges(core);
        const bool dynamic = core.expressionType == OXA::DynamicExpressions;
        counts.items[WatchedBits] += double(std::count(watched.begin(), watched.end(), true));
        counts.registers += (int(watched.size()) + kGroup - 1) / kGroup + (dynamic ? 2 : 1);
    }
    const int gapBits = core.storage.extraBits() - (core.storage.limit > 0 ? 1 : 0);
    counts.items[GapBits] += gapBits;
    counts.registers += gapBits > 0 ? 2 * gapBits + 1 : 0; // counted, stored, and the last one
    const int limitBits = core.storage.limit > 0 ? bitsFor(core.storage.limit + 1) : 0;
    counts.items[LimitBits] += limitBits;
    counts.registers
        += limitBits > 0 ? limitBits + 1 : 0; // samples behind the trigger, the last one
}

/// Bits of a word that is kept for each window: how it began, whether another core forced it, and
/// its stamp.
int windowBits(const OXA::CoreEvents& events)
{
    return 1 + (events.forcedBy.isEmpty() ? 0 : 1) + (events.stamps ? kStampBits : 0);
}

unsigned windowsOf(const OXA::AoCore& core)
{
    return OXA::fixedWindowNum(unsigned(std::max(core.windowNum, 1)));
}

void addWindows(LogicCounts& counts, const OXA::AoCore& core)
{
    const int addressBits = bitsFor(core.storageDepth);
    counts.items[AddressBits] += addressBits;
    counts.registers += qint64(4) * addressBits; // two settings, address, samples after trigger
    const unsigned windows = windowsOf(core);
    if (windows < 2) {
        counts.registers += 1;
        return;
    }
    const int bits = bitsFor(windows);
    counts.items[WindowBits] += bits;
    counts.items[WindowAddressBits] += addressBits;
    counts.registers += 4 * bits + 2 * addressBits + 2; // and the selected bits of two numbers
    addMemory(counts, {kUnasked, windowBits(core.events), windows}, {});
}

/// The clock of a core's registers.
QString clockOf(const OXA::AoCore& core)
{
    const bool falling = core.trigType == 1 || core.forceTriggerByFallingEdge;
    return (falling ? "!" : "") + core.sampleClock;
}

/// Registers of `names` in the first `stages` stages of the pipeline of `clock`.
void addStages(LogicCounts& counts, const QString& clock, const QStringList& names, int stages)
{
    for (const QString& name : names) {
        unsigned& built = counts.stages[clock + ' ' + name];
        const unsigned all = built | ((1U << stages) - 1);
        counts.registers += qint64(std::bitset<8>(all ^ built).count());
        built = all;
    }
}

/// What makes and takes the triggers of other cores, and counts samples.
void addEvents(LogicCounts& counts, const OXA::AoCore& core)
{
    const OXA::CoreEvents& events = core.events;
    const bool dynamic = core.expressionType == OXA::DynamicExpressions;
    for (const int index : events.forcedBy) {
        if (index == core.index)
            continue;
        counts.items[ForcingInputs] += 1;
        addStages(counts, clockOf(core), {QString("of core %1").arg(index)}, 3);
        counts.registers += 1; // setting
        if (counts.forcing.contains(index))
            continue;
        counts.forcing += index;
        counts.items[ForcingCores] += 1;
        counts.registers += 1;
    }
    if (!events.forcedBy.isEmpty()) {
        counts.items[ForcedCores] += 1;
        counts.registers += dynamic ? 3 : 2; // stages, and the last trigger's cause
    }
    if (events.stamps) {
        counts.items[StampedCores] += 1;
        counts.registers += qint64(2) * kStampBits; // counted, and the last one
    }
    counts.items[EventMux] += muxTables(windowBits(events));
    counts.registers += pickRegisters(windowBits(events));
}

void addSignals(LogicCounts& counts, const OXA::AoCore& core)
{
    const QString clock = clockOf(core);
    const bool dynamic = core.expressionType == OXA::DynamicExpressions;
    addStages(counts, clock, core.dataSignals(), dynamic ? 5 : 4);
    counts.registers += dynamic ? 2 : 0; // of the additional stage, beside the data
    QSet<QString> edgeSignals;
    for (const OXA::MatchUnit* unit : core.enabledMatchUnits()) {
        if (!unit->trigger)
            continue;
        const QStringList names = unit->trigger->singleSignals();
        const bool edges = OXA::matchTypeHasEdges(unit->matchType);
        addStages(counts, clock, names, edges ? 2 : 1);
        if (edges) // which bits changed: in a run of this core
            addStages(
                counts, QString("%1 in core %2").arg(clock, QString::number(core.index)), names, 1);
        if (unit->matchType >= OXA::MatchExtended) { // the inverted value
            const int second = int(names.size()) - bitsOfFirstStep(int(names.size()));
            addStages(counts, '~' + clock, names, 1);
            addStages(counts, '~' + clock, names.mid(0, second), 2);
        }
        if (edges)
            edgeSignals += QSet<QString>(names.begin(), names.end());
    }
    counts.items[EdgeSignals] += edgeSignals.size();
}

void addUnits(LogicCounts& counts, const OXA::AoCore& core)
{
    const QList<int> named = namedUnits(core);
    counts.registers += (core.enabledMatchUnits().size() + kPartUnits - 1) / kPartUnits;
    for (const OXA::MatchUnit* unit : core.enabledMatchUnits()) {
        if (unit->trigger)
            addUnit(counts, *unit, core.expressionType == OXA::DynamicExpressions,
                named.contains(unit->index));
    }
}

/// The capture memory, and the registers that count its words and bits.
void addCaptureMemory(LogicCounts& counts, const Memory& memory, int indexBits, int bitBits,
    const DEV::ChipInfo& part)
{
    counts.items[SampleMux] += muxTables(memory.width);
    addMemory(counts, memory, part);
    counts.registers
        += pickRegisters(memory.width) + bitBits + std::max(indexBits, bitsFor(memory.depth));
}

}

void countCore(LogicCounts& counts, const OXA::AoCore& core, const DEV::ChipInfo& part)
{
    const bool dynamic = core.expressionType == OXA::DynamicExpressions;
    const int units = core.enabledMatchUnits().size();
    const int ports = core.availableTriggers().size();
    const int width = storedBits(core) + 1; // the mark
    counts.items[Wrappers] = 1;
    counts.items[StandardCores] += 1;
    counts.items[TriggerPorts] += ports;
    addSignals(counts, core);
    addUnits(counts, core);
    addExpressions(counts, core, part);
    addWindows(counts, core);
    addStorage(counts, core);
    addEvents(counts, core);
    const int words = ports + units + (core.events.forcedBy.isEmpty() ? 0 : 1);
    const int identityBits = bitsFor(kIdentityHead + kIdentityWord * words);
    addCaptureMemory(counts, {kindOn(part, core.implementation), width, core.storageDepth},
        std::max({kLeastIndexBits, identityBits, dynamic ? units : 0}),
        bitsFor(std::max({width, int(OXA::allExpressions(core).size()), windowBits(core.events)})),
        part);
}

int windowBlocks(const OXA::AoCore& core, const DEV::ChipInfo& part)
{
    const int width = windowBits(core.events);
    const qint64 windows = windowsOf(core);
    return windows < 2 || width * windows < kWorthBlock
        ? 0
        : captureMemory(width, int(windows), false, part.name).blockSram;
}

void countCore(LogicCounts& counts, const OXA::AOCore_Lite& core, const DEV::ChipInfo& part)
{
    const QStringList names = core.dataSignals();
    const bool registered = core.inputRegisterEnabled;
    counts.items[LiteCores] += 1;
    counts.items[LiteAddressBits] += bitsFor(core.captureAmount);
    addStages(counts, core.sampleClock, names, registered ? 4 : 3);
    counts.registers += (registered ? 1 : 0) + bitsFor(core.captureAmount);
    addCaptureMemory(counts, {kindOn(part, core.implementation), names.size(), core.captureAmount},
        kLeastLiteIndexBits, bitsFor(names.size()), part);
}

}
