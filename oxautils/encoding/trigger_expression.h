#ifndef OXAUTILS_ENCODING_TRIGGER_EXPRESSION_H
#define OXAUTILS_ENCODING_TRIGGER_EXPRESSION_H

#include "oxautils/model/ao_core.h"

#include <QString>
#include <QTextStream>

#include <vector>

namespace OXA {

// Dynamic trigger expressions: unit names M0 to M15, the operators ! & ^ | and parentheses,
// compiled to a table that the outputs of the core's enabled units address, the lowest-numbered
// unit at bit 0.

/// Appends the switch of every unit of `core` to `enables`, in unit order.
OXAUTILS_EXPORT void getAllMatchEnbale(AoCore* core, std::vector<bool>& enables);

/// Writes the tables of a core with dynamic expressions as parameter lines, at least 16 of them;
/// nothing for a core with static ones. An expression that holds anything but names, operators,
/// parentheses and blanks gets a critical message and a table without a digit.
OXAUTILS_EXPORT void generateExpression(AoCore* core, QTextStream& out);

/// The table of `exp` as one character a row, row 0 first: "0", "1", or "x" where the expression
/// gives no value. `enables` has an entry a unit, at least 16 (std::out_of_range otherwise). Equal
/// to what the steps below give row by row, for many rows at a time. Blanks are dropped first; with
/// anything but names, operators and parentheses every row is "x".
OXAUTILS_EXPORT QString logicTruthTable(QString exp, std::vector<bool> enables);

/// Appends "|M.." to `exp` for every enabled unit that it does not name, and leaves in `enables`
/// just those set. A name counts as present wherever its text stands: "M1" is in "M10".
OXAUTILS_EXPORT void resetLogicExp(QString& exp, std::vector<bool>& enables);

/// `exp` with its unit names replaced by letters, "A" for the highest-numbered unit.
OXAUTILS_EXPORT QString changeExpItem(QString exp);

/// Converts `infix` to postfix; `postfix` has room for as many characters and a NUL. Operators of
/// equal priority associate to the left, "!" too.
OXAUTILS_EXPORT void translet(const char* infix, char* postfix);

/// How tightly `c` binds: "!" 4, "&" 3, "^" 2, "|" 1, anything else 0.
OXAUTILS_EXPORT int priority(char c);

/// Writes every letter of `postfix` once, in order of first occurrence, and a NUL.
OXAUTILS_EXPORT void getOperand(const char* postfix, char* operands);

/// Sorts the characters of `s`, ascending.
OXAUTILS_EXPORT void sort(char* s);

/// Writes `value` in `radix` (2 to 16) with upper-case digits; negative ones have a sign in radix
/// 10 and are 32 bits elsewhere.
OXAUTILS_EXPORT void itoa(int value, char* buf, int radix);

/// Sets the bits of a row to "0" that belong to units which are in `added`. Bits follow the units
/// of `enabled` from the highest number down; what has no bit in the row is left out.
OXAUTILS_EXPORT void resetBitDataIn(char* bits, std::vector<bool> enabled, std::vector<bool> added);

/// The value of `postfix` for one row: `bits` holds a "0" or "1" for each letter from "A" on. "x"
/// when the evaluation does not leave exactly one value.
///
/// Letters are replaced only as long as a character's code is above its position, so what stands
/// behind position 32 of an expression may keep its letters, which then count for nothing.
OXAUTILS_EXPORT char calcuate(const char* postfix, const char* operands, const char* bits);

}

#endif
