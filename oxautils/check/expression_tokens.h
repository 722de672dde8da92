#ifndef OXAUTILS_CHECK_EXPRESSION_TOKENS_H
#define OXAUTILS_CHECK_EXPRESSION_TOKENS_H

#include <QList>
#include <QString>

namespace OXA {

/// A piece of a trigger expression.
struct Token {
    enum Kind {
        Unit, ///< M with a number, or M alone
        Constant, ///< 1'b0 or 1'b1
        Negation, ///< ! or ~
        Binary, ///< & && | || ^
        Open,
        Close,
        Blank, ///< one or several
        Other, ///< a character that expressions do not have
    };

    Kind kind;
    QString text;
    int unit = -1; ///< of a Unit: 0 to 15, or -1 when there is no such unit
};

/// `text` in pieces, without gaps.
QList<Token> tokensOf(const QString& text);

/// Whether any of `tokens` is of `kind`.
bool hasToken(const QList<Token>& tokens, Token::Kind kind);

/// 0 when every parenthesis has its partner; else how many are not closed, or, below 0, opened.
int unbalancedParentheses(const QList<Token>& tokens);

/// What keeps operators and operands from being an expression of Verilog's kind, of single bits;
/// empty when nothing does. Parentheses have to be balanced.
QString syntaxComplaint(const QList<Token>& tokens);

}

#endif
