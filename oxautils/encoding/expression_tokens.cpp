#include "oxautils/encoding/expression_tokens.h"

#include "oxautils/model/limits.h"

#include <algorithm>

namespace OXA {

namespace {

bool isDigit(QChar c) { return c >= '0' && c <= '9'; }

bool isBlank(QChar c) { return c == ' ' || c == '\t'; }

/// Where the run of characters that `belongs` accepts ends.
template <typename Belongs> int endOfRun(const QString& text, int start, const Belongs& belongs)
{
    while (start < text.size() && belongs(text.at(start)))
        ++start;
    return start;
}

Token unitToken(const QString& text, int start)
{
    Token token {Token::Unit, text.mid(start, endOfRun(text, start + 1, isDigit) - start)};
    bool ok = false;
    const int number = token.text.midRef(1).toInt(&ok);
    token.unit = ok && number < kUnits ? number : -1;
    return token;
}

Token::Kind kindOf(QChar c)
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

Token tokenAt(const QString& text, int start)
{
    const QChar c = text.at(start);
    if (c == 'M')
        return unitToken(text, start);
    if (isBlank(c))
        return {Token::Blank, text.mid(start, endOfRun(text, start, isBlank) - start)};
    if (c == '1') {
        const QString four = text.mid(start, 4).toLower(); // files keep expressions in upper case
        if (four == "1'b0" || four == "1'b1")
            return {Token::Constant, four};
    }
    const bool doubled = (c == '&' || c == '|') && text.midRef(start + 1, 1) == c;
    return {kindOf(c), text.mid(start, doubled ? 2 : 1)};
}

}

QList<Token> tokensOf(const QString& text)
{
    QList<Token> tokens;
    for (int at = 0; at < text.size(); at += tokens.last().text.size()) {
        tokens += tokenAt(text, at);
        tokens.last().start = at;
    }
    return tokens;
}

bool isForeign(const Token& token, bool dynamic)
{
    const bool doubled = token.kind == Token::Binary && token.text.size() > 1;
    return token.kind == Token::Other
        || (dynamic && (token.kind == Token::Constant || doubled || token.text == "~"));
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
