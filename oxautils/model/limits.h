// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_LIMITS_H
#define OXAUTILS_MODEL_LIMITS_H

namespace OXA {

constexpr int kPorts = 16; ///< of a core
constexpr int kUnits = kPorts; ///< of a core, numbered as the ports are
constexpr int kMostExpressions = 16; ///< that a core tests for
constexpr int kMostCores = 16; ///< that the control core and the installed sources are made for
constexpr int kWidestCounter = 32; ///< bits

// Files hold these numbers, and may hold any other: the fields of cores are plain integers.

/// The kind of all expressions of a core: in the netlist, or tables that can be rewritten.
enum ExpressionType : int { StaticExpressions = 0, DynamicExpressions = 1 };

/// What a memory can be made of.
enum MemoryKind : int { BlockSram = 0, Registers = 1, ShadowSram = 2 };

}

#endif
