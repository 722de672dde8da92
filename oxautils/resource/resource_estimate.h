// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_RESOURCE_RESOURCE_ESTIMATE_H
#define OXAUTILS_RESOURCE_RESOURCE_ESTIMATE_H

#include "oxautils/oxautils_export.h"

class QString;

/// @file
/// What a capture memory of `width` bits and `depth` samples takes, and what a device has.
///
/// `WithAdjust` adds one bit of width: the mark that a core stores with each sample. A width of 0
/// takes no block SRAM. Products are 32-bit two's complement, and wrap on overflow.

/// Estimates of what an analyzer takes of a device.
namespace OXA_TOOL {

/// Blocks of 18 kbit: 16384 bits, or 18432 where the width uses every ninth bit. Up to 256 samples
/// a block is 36 bits wide.
OXAUTILS_EXPORT int bsramNumberRequired(int width, int depth);
OXAUTILS_EXPORT int bsramNumberRequiredWithAdjust(int width, int depth); ///< with the mark

/// The same except for the narrowest memories: widths 1 and 2 (with adjustment: 1) take four bits
/// a sample, and a last block that is not full is not counted.
OXAUTILS_EXPORT int bsramNumberRequiredFor1N9C(int width, int depth);
OXAUTILS_EXPORT int bsramNumberRequiredWithAdjustFor1N9C(int width, int depth); ///< with the mark

/// Blocks of 9 kbit: 8192 bits, or 9216 where the depth uses every ninth bit. The first function
/// adds no mark, despite its name.
OXAUTILS_EXPORT int bsramNumberRequiredAdjustFor20k(int width, int depth);
OXAUTILS_EXPORT int bsramNumberRequiredWithAdjustFor20k(int width, int depth); ///< with the mark

/// Blocks of shadow SRAM, 4 bits by 16 samples each; the samples beyond a multiple of 16 are not
/// counted. `adjust` adds the mark.
OXAUTILS_EXPORT int ssramNumberRequiredWithAdjust(int width, int depth, bool adjust);

/// One register for each bit. `adjust` adds the mark.
OXAUTILS_EXPORT int regNumberRequiredWidthAdjust(int width, int depth, bool adjust);

/// What the part has, from the catalogue: blocks of 18 kbit (9 kbit on the devices of the 20k
/// rule), 64-bit blocks of shadow SRAM, registers. `key` is the part number, `device` the device
/// name ("QX1N-9"). 0 for a part that is not in the catalogue or has no number there.
/// @{
OXAUTILS_EXPORT int currentDeviceBsramAmount(const QString& key, const QString& device);
OXAUTILS_EXPORT int currentDeviceSsramAmount(const QString& key, const QString& device);
OXAUTILS_EXPORT int currentDeviceRegAmount(const QString& key, const QString& device);
/// @}

}

#endif
