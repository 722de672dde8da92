// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/expression_tokens.h"

#include "oxautils/model/ao_core.h"
#include "oxautils/model/limits.h"

#include <algorithm>

namespace OXA {

namespace {

bool isDigit(QChar c) { return c >= '0' && c <= '9'; }

bool isBlank(QChar c) { return c == ' ' || c == '\t'; }

/// The end of the run of characters that `belongs` accepts.
template <typename Belongs> int endOfRun(const QString& text, int start, const Belongs& belongs)
{
    while (start < text.size() && belongs(text.at(start)))
        ++start;
    return start;
}

Piece unitAt(const QString& text, int start)
{
    const int end = endOfRun(text, start + 1, isDigit);
    int number = end > start + 1 ? 0 : kUnits;
    for (int i = start + 1; i < end; ++i)
        number = std::min(10 * number + text.at(i).digitValue(), kUnits);
    return {Piece::Unit, start, end - start, number < kUnits ? number : -1};
}

/// Whether 1'b0 or 1'b1 is at `start`; files have expressions in upper case.
bool isConstant(const QString& text, int start)
{
    return text.size() - start >= 4 && text.at(start) == '1' && text.at(start + 1) == '\''
        && text.at(start + 2).toLower() == 'b'
        && (text.at(start + 3) == '0' || text.at(start + 3) == '1');
}

Piece::Kind kindOf(QChar c)
{
    switch (c.unicode()) {
    case '(':
        return Token::Open;
    case ')':
        return Token::Close;
    case '!':
    case '~':
        return Token::Negation;
    case '&':
    case '|':
    case '^':
        return Token::Binary;
    default:
        return Token::Other;
    }
}

}

Piece pieceAt(const QString& text, int start)
{
    const QChar c = text.at(start);
    if (c == 'M')
        return unitAt(text, start);
    if (isBlank(c))
        return {Piece::Blank, start, endOfRun(text, start, isBlank) - start};
    if (isConstant(text, start))
        return {Piece::Constant, start, 4};
    const bool doubled
        = (c == '&' || c == '|') && start + 1 < text.size() && text.at(start + 1) == c;
    return {kindOf(c), start, doubled ? 2 : 1};
}

QList<Token> tokensOf(const QString& text)
{
    QList<Token> tokens;
    for (int at = 0; at < text.size(); at += tokens.last().length) {
        const Piece piece = pieceAt(text, at);
        const QString part = text.mid(at, piece.length);
        tokens.append({piece, piece.kind == Piece::Constant ? part.toLower() : part});
    }
    return tokens;
}

bool isForeign(const Token& token, bool dynamic)
{
    const bool doubled = token.kind == Token::Binary && token.text.size() > 1;
    return token.kind == Token::Other
        || (dynamic && (token.kind == Token::Constant || doubled || token.text == "~"));
}

QStringList allExpressions(const AoCore& core)
{
    const bool storesByExpression = core.storage.keep == CoreStorage::When;
    return storesByExpression ? core.expressions + QStringList(core.storage.when)
                              : core.expressions;
}

QList<int> namedUnits(const QList<Token>& tokens)
{
    QList<int> units;
    for (const Token& token : tokens) {
        if (token.unit >= 0 && !units.contains(token.unit))
            units += token.unit;
    }
    std::sort(units.begin(), units.end());
    return units;
}

QList<Token> unmatchedParentheses(const QList<Token>& tokens)
{
    QList<Token> unmatched;
    for (const Token& token : tokens) {
        const bool closes = token.kind == Token::Close && !unmatched.isEmpty()
            && unmatched.last().kind == Token::Open;
        if (closes)
            unmatched.removeLast();
        else if (token.kind == Token::Open || token.kind == Token::Close)
            unmatched += token;
    }
    return unmatched;
}

}
