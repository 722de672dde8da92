#ifndef OXAUTILS_ENCODING_EXPRESSION_TOKENS_H
#define OXAUTILS_ENCODING_EXPRESSION_TOKENS_H

#include "oxautils/oxautils_export.h"

#include <QList>
#include <QString>

namespace OXA {

/// Where a piece of a trigger expression is, and what.
struct Piece {
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
    int start; ///< in the expression
    int length;
    int unit = -1; ///< of a Unit: 0 to 15, or -1 when there is no such unit
};

struct Token : Piece {
    QString text; ///< a constant's is lower-case, whatever the expression has
};

/// The piece that begins at `start`, which is within `text`.
Piece pieceAt(const QString& text, int start);

/// `text` in pieces, without gaps.
OXAUTILS_EXPORT QList<Token> tokensOf(const QString& text);

/// Whether expressions do not have such a piece. Dynamic ones have only names, the single
/// operators and parentheses.
OXAUTILS_EXPORT bool isForeign(const Token& token, bool dynamic);

/// The units that `tokens` name, ascending, each once.
OXAUTILS_EXPORT QList<int> namedUnits(const QList<Token>& tokens);

/// The parentheses that have no partner.
OXAUTILS_EXPORT QList<Token> unmatchedParentheses(const QList<Token>& tokens);

}

#endif
