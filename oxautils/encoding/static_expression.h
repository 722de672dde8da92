// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_STATIC_EXPRESSION_H
#define OXAUTILS_ENCODING_STATIC_EXPRESSION_H

#include "oxautils/encoding/expression_tokens.h"
#include "oxautils/encoding/truth_table.h"

namespace OXA {

/// Why a text is not a static expression.
struct SyntaxFault {
    enum Kind {
        None,
        Empty,
        EndsEarly,
        NoOperand, ///< the token is in place of an operand
        NoOperator, ///< no operator before the token
        Unclosed, ///< no closing parenthesis before the token, or before the end
        UnknownUnit,
        Unexpected, ///< a character that expressions do not have, or a ")" without a "("
        TooDeep, ///< over 200 nested parentheses and prefix operators
    };

    Kind kind = None;
    QString token; ///< where it is found; empty at the end

    /// "it ends too early"; empty without a fault.
    OXAUTILS_EXPORT QString text() const;
};

/// A static expression as Verilog reads it, for units of one bit: !, ~, &, ^, |, &&, ||, the
/// reductions of a single bit, 1'b0, 1'b1 and parentheses.
struct StaticExpression {
    SyntaxFault fault; ///< the first; without a fault, the steps give one value
    QList<int> units; ///< named units, ascending
    std::vector<Step> steps; ///< their last variable is the first of the units
};

OXAUTILS_EXPORT StaticExpression parseStatic(const QList<Token>& tokens);

/// The table of an expression without a fault; its first unit is bit 0 of the row's number.
OXAUTILS_EXPORT TruthTable staticTable(const StaticExpression& expression);

}

#endif
