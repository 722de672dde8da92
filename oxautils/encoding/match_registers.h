#ifndef OXAUTILS_ENCODING_MATCH_REGISTERS_H
#define OXAUTILS_ENCODING_MATCH_REGISTERS_H

#include "oxautils/model/ao_core.h"

#include <QBitArray>
#include <QString>
#include <QTextStream>

namespace OXA {

/// The comparison registers of `unit`, one bit a signal of its port, bit 0 the most significant.
///
/// For "==" and "!=", M1 enables the comparison with a level, M2 that with an edge, and M0 is the
/// level (for edges: 0 rising, 1 falling). ">" and ">=" have their bound in M0, "<" and "<=" in M1,
/// ranges both. A value is right-justified with "0" and keeps its first characters when it is too
/// long; a character that means nothing, lower case included, is as good as "X". An unbound unit
/// has empty registers.
OXAUTILS_EXPORT void bitForM(MatchUnit* unit, QBitArray& m0, QBitArray& m1, QBitArray& m2);

/// The control word of `unit`, 4 bits: bit 0 the counter's continuous mode (only with the counter
/// on), bits 1 to 3 the function, most significant first (none for a number that is no function).
OXAUTILS_EXPORT QBitArray bitForMatchCtrl(MatchUnit* unit);

/// One character a bit, bit 0 first.
OXAUTILS_EXPORT QString BitToString(QBitArray bits);

/// One lower-case hexadecimal digit for every four characters from the left. A group that is not
/// all "0" and "1" gives none; what is left over at the end is dropped.
OXAUTILS_EXPORT QString strBit2Hex(const QString& bits);

/// Writes the initial register values of `core` as parameter lines: sequence, depths and windows,
/// then five registers a unit. `device` is a device name; some of them count a capture depth one
/// lower, unless `flag` is not 0. Nothing is checked, and a number below 0 prints with its sign
/// ("16'h00-1"); but a core whose registers would be wider than a million bits is not written, and
/// a critical message names it.
OXAUTILS_EXPORT void generateRegister(AoCore* core, QTextStream& out, QString device, int flag);

}

#endif
