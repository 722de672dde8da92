// SPDX-License-Identifier: Apache-2.0
#include "oxautils/resource/analyzer_estimate.h"

#include "oxautils/config/configuration.h"
#include "oxautils/encoding/expression_tokens.h"
#include "oxautils/model/limits.h"
#include "oxautils/resource/capture_memory.h"
#include "oxautils/resource/logic_costs.h"
#include "oxautils/resource/logic_counts.h"

#include <dev/device_db.h>

#include <cmath>

namespace OXA_TOOL {

namespace {

constexpr int kLutEntry = 0; // of ChipInfo::resources

/// Adds `memory` for the kind that is built; registers are counted elsewhere.
void addMemory(
    AnalyzerAmounts& amounts, const MemoryAmounts& memory, int kind, const DEV::ChipInfo& part)
{
    const int built = part.name.isEmpty() ? kind : builtKind(kind, part.partNumber, part.name);
    if (built == OXA::BlockSram)
        amounts.blockSram += memory.blockSram;
    else if (built == OXA::ShadowSram)
        amounts.shadowSram += memory.shadowSram;
}

/// The tables of dynamic expressions: one word for each state of the units.
MemoryAmounts tableMemory(const OXA::AoCore& core, const QString& device)
{
    const int units = std::max(int(core.enabledMatchUnits().size()), 1);
    return captureMemory(OXA::allExpressions(core).size(), 1 << units, false, device);
}

}

struct AnalyzerEstimate::State {
    DEV::ChipInfo part;
    LogicCounts logic;
    AnalyzerAmounts memories;
};

AnalyzerEstimate::AnalyzerEstimate(const DEV::ChipInfo& part)
    : m_state(new State {part, {}, {}})
{
}

AnalyzerEstimate::~AnalyzerEstimate() = default;

void AnalyzerEstimate::add(const OXA::AoCore& core)
{
    const DEV::ChipInfo& part = m_state->part;
    countCore(m_state->logic, core, part);
    addMemory(m_state->memories,
        captureMemory(storedBits(core), core.storageDepth, true, part.name), core.implementation,
        part);
    m_state->memories.blockSram += windowBlocks(core, part);
    if (core.expressionType == OXA::DynamicExpressions)
        addMemory(m_state->memories, tableMemory(core, part.name), core.exImplementation, part);
}

void AnalyzerEstimate::add(const OXA::AOCore_Lite& core)
{
    if (m_state->logic.items[LiteCores] > 0)
        return;
    const DEV::ChipInfo& part = m_state->part;
    countCore(m_state->logic, core, part);
    addMemory(m_state->memories,
        captureMemory(core.dataSignals().size(), core.captureAmount, false, part.name),
        core.implementation, part);
}

AnalyzerAmounts AnalyzerEstimate::amounts() const
{
    const LogicCounts& logic = m_state->logic;
    AnalyzerAmounts amounts = m_state->memories;
    double luts = 0;
    for (int item = 0; item < kLogicItems; ++item)
        luts += kLutCosts[item] * logic.items[item];
    amounts.luts = std::llround(luts);
    amounts.registers = logic.registers;
    for (int item : {Wrappers, StandardCores, LiteCores})
        amounts.registers += qint64(logic.items[item]) * kCommonRegisters[item];
    return amounts;
}

AnalyzerAmounts estimateOf(const OXA::Configuration& configuration, const DEV::ChipInfo& part)
{
    AnalyzerEstimate estimate(part);
    for (const OXA::AoCore* core : configuration.cores)
        estimate.add(*core);
    for (const OXA::AOCore_Lite* core : configuration.liteCores)
        estimate.add(*core);
    return estimate.amounts();
}

AnalyzerAmounts amountsOf(const DEV::ChipInfo& part)
{
    const MemoryAmounts memory = deviceMemory(part.partNumber, part.name);
    return {part.resources.value(kLutEntry).toLongLong(), memory.registers, memory.blockSram,
        memory.shadowSram};
}

bool AnalyzerResource::exceeds(
    const AnalyzerAmounts& estimate, const AnalyzerAmounts& available) const
{
    // Every device has logic, so 0 means unknown.
    const bool known = low == 0 || available.*amount > 0;
    return known && estimate.*amount > available.*amount;
}

bool AnalyzerResource::cannotFit(
    const AnalyzerAmounts& estimate, const AnalyzerAmounts& available) const
{
    return exceeds(estimate, available)
        && double(estimate.*amount) * 100 > double(available.*amount) * (100 + high);
}

bool AnalyzerResource::isNear(
    const AnalyzerAmounts& estimate, const AnalyzerAmounts& available) const
{
    return low > 0 && available.*amount > 0 && estimate.*amount <= available.*amount
        && double(estimate.*amount) * (100 + low) > double(available.*amount) * 100;
}

const QList<AnalyzerResource>& analyzerResources()
{
    // Logic: checked by bench/estimates. Memories: docs/estimates.md lists where synthesis uses
    // fewer blocks, down to half.
    static const QList<AnalyzerResource> resources {
        {"look-up tables", "look-up tables", "luts",       &AnalyzerAmounts::luts,       15, 15 },
        {"registers",      "registers",      "registers",  &AnalyzerAmounts::registers,  5,  5  },
        {"block SRAM",     "block SRAMs",    "blockSram",  &AnalyzerAmounts::blockSram,  0,  100},
        {"shadow SRAM",    "shadow SRAMs",   "shadowSram", &AnalyzerAmounts::shadowSram, 0,  0  },
    };
    return resources;
}

}
