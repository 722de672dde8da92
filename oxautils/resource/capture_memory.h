// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_RESOURCE_CAPTURE_MEMORY_H
#define OXAUTILS_RESOURCE_CAPTURE_MEMORY_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {
class AoCore;
}

namespace OXA_TOOL {

/// Amounts of memory: blocks of block SRAM, registers, 64-bit blocks of shadow SRAM.
struct OXAUTILS_EXPORT MemoryAmounts {
    int blockSram = 0; ///< blocks
    int registers = 0; ///< flip-flops
    int shadowSram = 0; ///< blocks of 64 bits

    /// The amount of one kind; 0 for a number that is not a kind.
    int of(int kind) const;

    /// The same, to be changed; null for a number that is not a kind.
    int* find(int kind);
};

/// Bits of a word in the capture memory of `core` without its mark: the sample, and with a
/// `OXA::CoreStorage` the gap and the mark of a window's end.
OXAUTILS_EXPORT int storedBits(const OXA::AoCore& core);

/// What a memory of `width` data bits and `depth` samples takes on the device named `device`, for
/// each of the kinds. `mark` adds the bit that Standard cores store with each sample. A memory
/// without bits takes nothing; one with more bits than fit a 32-bit number takes INT_MAX.
OXAUTILS_EXPORT MemoryAmounts captureMemory(int width, int depth, bool mark, const QString& device);

/// What the part has of each kind; `partNumber` and `device` are the catalogue's keys.
OXAUTILS_EXPORT MemoryAmounts deviceMemory(const QString& partNumber, const QString& device);

/// The kind that a core with `kind` gets on a part: block SRAM instead of shadow SRAM when the part
/// has no shadow SRAM.
OXAUTILS_EXPORT int builtKind(int kind, const QString& partNumber, const QString& device);

}

#endif
