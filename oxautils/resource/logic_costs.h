// SPDX-License-Identifier: Apache-2.0
// Made by bench/estimates/refit.sh, from 80 syntheses of random configurations.
#ifndef OXAUTILS_RESOURCE_LOGIC_COSTS_H
#define OXAUTILS_RESOURCE_LOGIC_COSTS_H

#include "oxautils/resource/logic_counts.h"

namespace OXA_TOOL {

/// Look-up tables of each item.
constexpr double kLutCosts[kLogicItems] = {
    26.90, // wrapper and control core of Standard cores
    117.41, // Standard core
    110.01, // Lite core, with wrapper and control core
    7.26, // trigger port
    19.10, // core with dynamic expressions
    16.74, // match unit
    1.57, // bit of a unit without edges
    2.79, // bit of a unit with edges
    2.25, // signal that such units watch
    3.44, // bit of a unit that compares magnitudes
    2.97, // counter bit of a unit that an expression names
    3.35, // level of a sequence of two or more
    1.01, // table of four inputs of a static expression
    3.61, // address bit of a Standard core
    2.27, // bit of its number of windows
    6.69, // address bit of a core with several windows
    2.46, // address bit of a Lite core
    1.34, // table of four inputs that chooses a bit of a sample
    1.16, // the same, a word of a memory made of registers
    1.24, // word of such a memory
    1.10, // the same, a block of blocks behind each other
    1.57, // block behind others
    2.58, // core that does not store all samples
    0.84, // data signal whose changes are stored
    1.33, // bit of a gap between stored samples
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
