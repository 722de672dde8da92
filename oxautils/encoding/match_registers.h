// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_MATCH_REGISTERS_H
#define OXAUTILS_ENCODING_MATCH_REGISTERS_H

#include "oxautils/model/ao_core.h"

#include <QBitArray>
#include <QString>
#include <QTextStream>

namespace OXA {

/// Sets `m0`, `m1` and `m2`, whatever they held, to the comparison registers of `unit`: one bit for
/// each signal of its port, bit 0 the most significant.
///
/// For "==" and "!=", M1 enables the comparison with a level, M2 with an edge, and M0 is the level
/// (for edges: 0 rising, 1 falling). ">" and ">=" have their bound in M0, "<" and "<=" in M1,
/// ranges both. A value is padded on the left with "0"; a long one is cut on the right. Unknown
/// characters, including lower case, count as "X". An unbound unit has empty registers.
OXAUTILS_EXPORT void bitForM(MatchUnit* unit, QBitArray& m0, QBitArray& m1, QBitArray& m2);

/// The control word of `unit`, 4 bits: bit 0 is the counter's continuous mode (only with the
/// counter on), bits 1 to 3 the function, most significant first (0 for a number that is not a
/// function).
OXAUTILS_EXPORT QBitArray bitForMatchCtrl(MatchUnit* unit);

/// One character for each bit, bit 0 first.
OXAUTILS_EXPORT QString BitToString(QBitArray bits);

/// One lower-case hexadecimal digit for each group of four characters from the left. Groups with
/// other characters than "0" and "1", and an incomplete last group, give no digit.
OXAUTILS_EXPORT QString strBit2Hex(const QString& bits);

/// Appends the initial register values of `core` to `out` as parameter lines: sequence, depths and
/// windows, then five registers for each unit. `device` is a device name; for some, the capture
/// depth is one lower unless `flag` is not 0. Nothing is checked, and negative numbers print with
/// their sign
/// ("16'h00-1"); but a core with registers of more than a million bits is not written, and reported
/// as a critical message.
OXAUTILS_EXPORT void generateRegister(AoCore* core, QTextStream& out, QString device, int flag);

}

#endif
