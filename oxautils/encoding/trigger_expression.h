// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_TRIGGER_EXPRESSION_H
#define OXAUTILS_ENCODING_TRIGGER_EXPRESSION_H

#include "oxautils/model/ao_core.h"

#include <QString>
#include <QTextStream>

#include <vector>

namespace OXA {

// Dynamic trigger expressions: unit names M0 to M15, the operators ! & ^ | and parentheses,
// compiled to a table. The outputs of the core's enabled units are its address, the lowest-numbered
// unit at bit 0.

/// Appends the switch of every unit of `core` to `enables`, in unit order, 16 entries; what it
/// holds stays. Nothing for a null `core`. The name is spelled so for hosts that call it.
OXAUTILS_EXPORT void getAllMatchEnbale(AoCore* core, std::vector<bool>& enables);

/// Appends the tables of a core with dynamic expressions to `out` as parameter lines, at least 16;
/// nothing for a core with static ones, or a null `core`. For an expression with other text than
/// names, operators, parentheses and spaces, there is a critical message and a table without
/// digits.
OXAUTILS_EXPORT void generateExpression(AoCore* core, QTextStream& out);

/// The table of `exp` as one character for each row, row 0 first: "0", "1", or "x" where the
/// expression has no value. `enables` has an entry for each unit, at least 16 (std::out_of_range
/// otherwise). The result is that of the steps below for each row, computed for many rows at a
/// time. Spaces are removed first; with other text than names, operators and parentheses every row
/// is "x".
OXAUTILS_EXPORT QString logicTruthTable(QString exp, std::vector<bool> enables);

/// Appends "|M.." to `exp` for every enabled unit that it does not name; `enables` then has only
/// these units set. A unit counts as named when its text is anywhere in `exp`: "M1" is in "M10".
OXAUTILS_EXPORT void resetLogicExp(QString& exp, std::vector<bool>& enables);

/// `exp` with its unit names replaced by letters: "A" for the highest-numbered unit in it, "B" for
/// the next, at most "P".
OXAUTILS_EXPORT QString changeExpItem(QString exp);

/// Converts `infix`, letters with operators and parentheses, to `postfix`, for which the caller has
/// space: as many bytes as `infix` has, and one for the NUL. All operators, "!" too, associate to
/// the left. Parentheses that are not closed stay in the result; nothing is reported. The name is
/// spelled so for hosts that call it.
OXAUTILS_EXPORT void translet(const char* infix, char* postfix);

/// The precedence of `c`: "!" 4, "&" 3, "^" 2, "|" 1, anything else 0.
OXAUTILS_EXPORT int priority(char c);

/// Writes every letter of `postfix` once, in order of first occurrence, and a NUL: at most 27
/// bytes, and no more than `postfix` has with its own.
OXAUTILS_EXPORT void getOperand(const char* postfix, char* operands);

/// Sorts the characters of `s`, which ends in a NUL, in place and ascending by their codes.
OXAUTILS_EXPORT void sort(char* s);

/// Writes `value` in `radix` (2 to 16) with upper-case digits and a NUL: at most 33 bytes, 12 in
/// radix 10 and 9 in radix 16. Negative values have a sign in radix 10 and are 32 bits elsewhere,
/// in two's complement. There are no leading zeros; for another radix, the text is empty.
OXAUTILS_EXPORT void itoa(int value, char* buf, int radix);

/// Sets the bits of a row to "0" that belong to units in `added`. Bits are for the units of
/// `enabled` from the highest number down; units without a bit in the row are skipped.
OXAUTILS_EXPORT void resetBitDataIn(char* bits, std::vector<bool> enabled, std::vector<bool> added);

/// The value of `postfix` for one row of the table: "0", "1", or "x" when the evaluation does not
/// give exactly one value. `operands` has the letters that are replaced (`getOperand`), `bits` a
/// "0" or "1" for each letter from "A" on, not for each of `operands`; a letter without a bit is
/// ignored. All three end in a NUL and are not changed. The name is spelled so for hosts that call
/// it.
///
/// Letters are replaced only while a character's code is above its position, so letters after
/// position 32 of an expression may stay and are then ignored.
OXAUTILS_EXPORT char calcuate(const char* postfix, const char* operands, const char* bits);

}

#endif
