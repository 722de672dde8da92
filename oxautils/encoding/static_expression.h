#ifndef OXAUTILS_ENCODING_STATIC_EXPRESSION_H
#define OXAUTILS_ENCODING_STATIC_EXPRESSION_H

#include "oxautils/encoding/expression_tokens.h"
#include "oxautils/encoding/truth_table.h"

namespace OXA {

/// What keeps a text from being a static expression.
struct SyntaxFault {
    enum Kind {
        None,
        Empty,
        EndsEarly,
        NoOperand, ///< none stands where the token does
        NoOperator, ///< none stands before the token
        Unclosed, ///< nor does a parenthesis end before the token, or the text's end
        UnknownUnit,
        Unexpected, ///< a character that expressions do not have, or a ")" without a "("
        TooDeep, ///< over 200 nested parentheses and prefix operators
    };

    Kind kind = None;
    QString token; ///< where it is found; empty at the end

    /// "it ends too early"; empty without a fault.
    OXAUTILS_EXPORT QString text() const;
};

/// A static expression as Verilog reads it for units of one bit: !, ~, &, ^, |, &&, ||, the
/// reductions of a single bit, 1'b0, 1'b1 and parentheses.
struct StaticExpression {
    SyntaxFault fault; ///< the first; without one the steps leave one value
    QList<int> units; ///< that it names, ascending
    std::vector<Step> steps; ///< their last variable is the first of the units
};

OXAUTILS_EXPORT StaticExpression parseStatic(const QList<Token>& tokens);

/// What an expression without a fault gives; its first unit is bit 0 of the row's number.
OXAUTILS_EXPORT TruthTable staticTable(const StaticExpression& expression);

}

#endif
