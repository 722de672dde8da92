// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_RESOURCE_LOGIC_COUNTS_H
#define OXAUTILS_RESOURCE_LOGIC_COUNTS_H

#include <dev/device_db.h>

#include <QHash>
#include <QSet>

namespace OXA {
class AoCore;
class AOCore_Lite;
}

namespace OXA_TOOL {

/// The items by which look-up tables are counted.
enum LogicItem : int {
    Wrappers,
    StandardCores,
    LiteCores,
    TriggerPorts,
    DynamicCores,
    Units,
    LevelBits,
    EdgeBits,
    EdgeSignals,
    OrderedBits,
    CounterBits,
    Levels,
    ExpressionTables,
    AddressBits,
    WindowBits,
    WindowAddressBits,
    LiteAddressBits,
    SampleMux,
    RegisterMux,
    RegisterWords,
    BankMux,
    Banks,
    StoringCores,
    WatchedBits,
    GapBits,
    LimitBits,
    ForcingCores,
    ForcedCores,
    ForcingInputs,
    EventMux,
    StampedCores,
    kLogicItems,
    kCommonItems = TriggerPorts ///< wrappers and cores
};

/// In the order of LogicItem.
constexpr const char* kLogicItemTexts[kLogicItems] = {
    "wrapper and control core of Standard cores",
    "Standard core",
    "Lite core, with wrapper and control core",
    "trigger port",
    "core with dynamic expressions",
    "match unit",
    "bit of a unit without edges",
    "bit of a unit with edges",
    "signal that such units watch",
    "bit of a unit that compares magnitudes",
    "counter bit of a unit that an expression names",
    "level of a sequence of two or more",
    "table of four inputs of a static expression",
    "address bit of a Standard core",
    "bit of its number of windows",
    "address bit of a core with several windows",
    "address bit of a Lite core",
    "table of four inputs that chooses a bit of a sample",
    "the same, a word of a memory made of registers",
    "word of such a memory",
    "the same, a block of blocks behind each other",
    "block behind others",
    "core that does not store all samples",
    "data signal whose changes are stored",
    "bit of a gap between stored samples",
    "bit of a limit behind the trigger",
    "core that forces others",
    "core that others force",
    "core that forces one",
    "table of four inputs that chooses a bit of a window's word",
    "core with stamps",
};

/// The items and registers of the cores of an analyzer.
struct LogicCounts {
    double items[kLogicItems] = {};
    qint64 registers = 0; ///< without those that every wrapper and core has

    /// The sample clocks' pipelines: for each clock and signal one bit for each stage. Synthesis
    /// merges two registers of the same signal in one stage.
    QHash<QString, unsigned> stages;

    QSet<int> forcing; ///< indexes of the cores that force others, as far as those are counted
};

// Each counts one more core, to be built on `part`. An empty record is a part with blocks
// of 18 kbit and with shadow SRAM.
void countCore(LogicCounts& counts, const OXA::AoCore& core, const DEV::ChipInfo& part);
void countCore(LogicCounts& counts, const OXA::AOCore_Lite& core, const DEV::ChipInfo& part);

/// Block SRAMs of the memory with a word for each window of `core`; small ones take registers.
int windowBlocks(const OXA::AoCore& core, const DEV::ChipInfo& part);

}

#endif
