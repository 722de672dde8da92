// SPDX-License-Identifier: Apache-2.0
// Made by bench/estimates/refit.sh, from 80 syntheses of random configurations.
#ifndef OXAUTILS_RESOURCE_LOGIC_COSTS_H
#define OXAUTILS_RESOURCE_LOGIC_COSTS_H

#include "oxautils/resource/logic_counts.h"

namespace OXA_TOOL {

/// Look-up tables of each item.
constexpr double kLutCosts[kLogicItems] = {
    22.79, // wrapper and control core of Standard cores
    131.69, // Standard core
    112.51, // Lite core, with wrapper and control core
    7.52, // trigger port
    9.48, // core with dynamic expressions
    14.54, // match unit
    1.60, // bit of a unit without edges
    2.57, // bit of a unit with edges
    1.73, // signal that such units watch
    3.48, // bit of a unit that compares magnitudes
    3.05, // counter bit of a unit that an expression names
    4.14, // level of a sequence of two or more
    0.14, // table of four inputs of a static expression
    3.10, // address bit of a Standard core
    1.68, // bit of its number of windows
    7.40, // address bit of a core with several windows
    1.94, // address bit of a Lite core
    1.26, // table of four inputs that chooses a bit of a sample
    1.16, // the same, a word of a memory made of registers
    1.27, // word of such a memory
    1.11, // the same, a block of blocks behind each other
    1.51, // block behind others
    0.00, // core that does not store all samples
    0.86, // data signal whose changes are stored
    2.02, // bit of a gap between stored samples
    1.60, // bit of a limit behind the trigger
    1.00, // core that forces others
    2.00, // core that others force
    1.30, // core that forces one
    1.00, // table of four inputs that chooses a bit of a window's word
    43.00, // core with stamps
};

/// Registers of the first items, beside those that are counted one by one.
constexpr int kCommonRegisters[kCommonItems] = {21, 93, 87};

}

#endif
