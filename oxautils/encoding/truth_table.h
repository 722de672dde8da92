#ifndef OXAUTILS_ENCODING_TRUTH_TABLE_H
#define OXAUTILS_ENCODING_TRUTH_TABLE_H

#include <QByteArray>
#include <QString>

#include <vector>

namespace OXA {

/// A compiled expression.
struct TruthTable {
    int variables = 0; ///< the table has 2 to the power of that many rows
    bool defined = false; ///< rows have values; otherwise each is "x"
    bool legal = true; ///< the expression holds nothing but what expressions are made of
    std::vector<quint64> words; ///< 64 rows each, row 0 in the lowest bit of the first

    int rows() const { return 1 << variables; }
};

/// A piece of an expression in postfix order.
struct Step {
    char symbol; ///< an operator ! & ^ |, or 'A' for an operand
    int variable; ///< of an operand, counted from the most significant bit of the row's number
};

/// The table of steps that leave one value. Variables that `forced` marks are "0" in every row.
TruthTable evaluateSteps(
    const std::vector<Step>& steps, int variables, const std::vector<bool>& forced);

TruthTable compileExpression(QString exp, const std::vector<bool>& enables);

/// A character a row, row 0 first: "0", "1", or "x" in every row of a table that is not defined.
QString tableText(const TruthTable& table);

/// The table from the last row down to row 0 as hexadecimal digits, a single variable's padded to
/// four rows. Empty when the rows are not defined.
QByteArray tableDigits(const TruthTable& table);

}

#endif
