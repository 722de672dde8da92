// SPDX-License-Identifier: Apache-2.0
// Made by bench/estimates/refit.sh, from 80 syntheses of random configurations.
// The costs of a control core, of cores and of units were then reduced for version 4 of the
// protocol, by comparison with 16 syntheses.
#ifndef OXAUTILS_RESOURCE_LOGIC_COSTS_H
#define OXAUTILS_RESOURCE_LOGIC_COSTS_H

#include "oxautils/resource/logic_counts.h"

namespace OXA_TOOL {

/// Look-up tables of each item.
constexpr double kLutCosts[kLogicItems] = {
    35.65, // wrapper and control core of Standard cores
    95.90, // Standard core
    102.40, // Lite core, with wrapper and control core
    7.16, // trigger port
    10.73, // core with dynamic expressions
    17.30, // match unit
    1.31, // bit of a unit without edges
    3.25, // bit of a unit with edges
    1.47, // signal that such units watch
    3.30, // bit of a unit that compares magnitudes
    2.97, // counter bit of a unit that an expression names
    3.81, // level of a sequence of two or more
    0.90, // table of four inputs of a static expression
    6.26, // address bit of a Standard core
    6.93, // bit of its number of windows
    6.14, // address bit of a core with several windows
    3.58, // address bit of a Lite core
    1.39, // table of four inputs that chooses a bit of a sample
    1.20, // the same, a word of a memory made of registers
    1.13, // word of such a memory
    1.17, // the same, a block of blocks behind each other
    1.30, // block behind others
    8.00, // core that does not store all samples
    0.63, // data signal whose changes are stored
    1.30, // bit of a gap between stored samples
    1.60, // bit of a limit behind the trigger
    1.00, // core that forces others
    2.00, // core that others force
    1.30, // core that forces one
    1.00, // table of four inputs that chooses a bit of a window's word
    43.00, // core with stamps
};

/// Registers of the first items, beside those that are counted one by one.
constexpr int kCommonRegisters[kCommonItems] = {17, 85, 79};

}

#endif
