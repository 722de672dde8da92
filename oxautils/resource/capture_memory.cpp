// SPDX-License-Identifier: Apache-2.0
#include "oxautils/resource/capture_memory.h"

#include "oxautils/model/ao_core.h"
#include "oxautils/model/limits.h"
#include "oxautils/resource/resource_estimate.h"

#include <dev/device_db.h>
#include <dev/device_facts.h>

#include <limits>

namespace OXA_TOOL {

namespace {

constexpr int kMostFactor = 4; // largest factor of a rule for the number of bits

using BlockRule = int (*)(int width, int depth);

struct BlockRules {
    BlockRule plain;
    BlockRule withMark;
};

BlockRules blockRules(const QString& device)
{
    switch (DEV::deviceFacts(device).blocks) {
    case DEV::Blocks9k:
        return {bsramNumberRequiredAdjustFor20k, bsramNumberRequiredWithAdjustFor20k};
    case DEV::Blocks1N9C:
        return {bsramNumberRequiredFor1N9C, bsramNumberRequiredWithAdjustFor1N9C};
    default:
        return {bsramNumberRequired, bsramNumberRequiredWithAdjust};
    }
}

}

int MemoryAmounts::of(int kind) const
{
    const int* amount = const_cast<MemoryAmounts*>(this)->find(kind);
    return amount ? *amount : 0;
}

int* MemoryAmounts::find(int kind)
{
    switch (kind) {
    case OXA::BlockSram:
        return &blockSram;
    case OXA::Registers:
        return &registers;
    case OXA::ShadowSram:
        return &shadowSram;
    default:
        return nullptr;
    }
}

int storedBits(const OXA::AoCore& core)
{
    return int(core.dataSignals().size()) + core.storage.extraBits();
}

MemoryAmounts captureMemory(int width, int depth, bool mark, const QString& device)
{
    constexpr int kMost = std::numeric_limits<int>::max();
    if (width < 1 || depth < 1)
        return {};
    if ((qint64(width) + 1) * depth > kMost / kMostFactor)
        return {kMost, kMost, kMost};
    const BlockRules rules = blockRules(device);
    return {(mark ? rules.withMark : rules.plain)(width, depth),
        regNumberRequiredWidthAdjust(width, depth, mark),
        ssramNumberRequiredWithAdjust(width, depth, mark)};
}

MemoryAmounts deviceMemory(const QString& partNumber, const QString& device)
{
    return {currentDeviceBsramAmount(partNumber, device),
        currentDeviceRegAmount(partNumber, device), currentDeviceSsramAmount(partNumber, device)};
}

int builtKind(int kind, const QString& partNumber, const QString& device)
{
    const DEV::ChipInfo chip = DEV::DeviceDb::instance().find(partNumber, device);
    const bool hasNone = chip.resources.value(DEV::ShadowSramEntry).isEmpty();
    return kind == OXA::ShadowSram && hasNone ? int(OXA::BlockSram) : kind;
}

}
