// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_TRUTH_TABLE_H
#define OXAUTILS_ENCODING_TRUTH_TABLE_H

#include "oxautils/oxautils_export.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace OXA {

class AoCore;

/// A compiled expression.
struct TruthTable {
    int variables = 0; ///< the table has 2^variables rows
    bool defined = false; ///< rows have values; otherwise each is "x"
    bool legal = true; ///< the expression has only allowed characters
    int stopsAt = -1; ///< position in postfix order from which letters have no value; -1: none
    std::vector<quint64> words; ///< 64 rows each, row 0 in the lowest bit of the first

    int rows() const { return 1 << variables; }
    bool at(int row) const { return words[size_t(row) / 64] >> (row % 64) & 1; }
};

/// An element of an expression in postfix order.
struct Step {
    char symbol; ///< an operator ! & ^ |, or 'A' for an operand
    /// Of an operand, counted from the most significant bit of the row's number; the one after the
    /// last is "0" in every row.
    int variable;
};

/// The table of steps that give one value.
TruthTable evaluateSteps(const std::vector<Step>& steps, int variables);

/// The switches of all units of `core`, at least 16.
OXAUTILS_EXPORT std::vector<bool> unitSwitches(const AoCore& core);

/// The table of a dynamic expression.
OXAUTILS_EXPORT TruthTable compileExpression(QString exp, const std::vector<bool>& enables);

/// A character for each row, row 0 first: "0", "1", or "x" in every row of an undefined table.
QString tableText(const TruthTable& table);

/// The table from the last row to row 0 as hexadecimal digits; that of one variable is padded to
/// four rows. Empty for an undefined table.
QByteArray tableDigits(const TruthTable& table);

}

#endif
