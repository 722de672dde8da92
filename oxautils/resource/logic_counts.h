#ifndef OXAUTILS_RESOURCE_LOGIC_COUNTS_H
#define OXAUTILS_RESOURCE_LOGIC_COUNTS_H

#include <dev/device_db.h>

#include <QHash>

namespace OXA {
class AoCore;
class AOCore_Lite;
}

namespace OXA_TOOL {

/// What look-up tables are counted by.
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
};

/// What the cores of an analyzer are made of.
struct LogicCounts {
    double items[kLogicItems] = {};
    qint64 registers = 0; ///< without what is alike in every wrapper and core

    /// The sample clocks' pipelines: for each clock and signal a bit a stage. Two registers of the
    /// same signal in one stage become one, whatever they are for.
    QHash<QString, unsigned> stages;
};

// Each counts one core more, which will be built on `part`. An empty record of it stands for one
// with blocks of 18 kbit and with shadow SRAM.
void countCore(LogicCounts& counts, const OXA::AoCore& core, const DEV::ChipInfo& part);
void countCore(LogicCounts& counts, const OXA::AOCore_Lite& core, const DEV::ChipInfo& part);

}

#endif
