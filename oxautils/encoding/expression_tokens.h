// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_EXPRESSION_TOKENS_H
#define OXAUTILS_ENCODING_EXPRESSION_TOKENS_H

#include "oxautils/oxautils_export.h"

#include <QList>
#include <QStringList>

namespace OXA {

class AoCore;

/// A piece of a trigger expression.
struct Piece {
    enum Kind {
        Unit, ///< M with a number, or M alone
        Constant, ///< 1'b0 or 1'b1
        Negation, ///< ! or ~
        Binary, ///< & && | || ^
        Open,
        Close,
        Blank, ///< spaces
        Other, ///< a character that expressions do not allow
    };

    Kind kind;
    int start; ///< in the expression
    int length;
    int unit = -1; ///< of a Unit: 0 to 15, or -1 when there is no such unit
};

struct Token : Piece {
    QString text; ///< lower-case for a constant
};

/// The piece that begins at `start`, which is within `text`.
Piece pieceAt(const QString& text, int start);

/// `text` as a sequence of pieces, without gaps.
OXAUTILS_EXPORT QList<Token> tokensOf(const QString& text);

/// Whether expressions do not allow the piece. Dynamic ones only allow names, single operators and
/// parentheses.
OXAUTILS_EXPORT bool isForeign(const Token& token, bool dynamic);

/// The trigger expressions of `core`, then the one by which it stores samples, if it has one.
OXAUTILS_EXPORT QStringList allExpressions(const AoCore& core);

/// The units named by `tokens`, ascending, each once.
OXAUTILS_EXPORT QList<int> namedUnits(const QList<Token>& tokens);

/// The parentheses without a partner.
OXAUTILS_EXPORT QList<Token> unmatchedParentheses(const QList<Token>& tokens);

}

#endif
