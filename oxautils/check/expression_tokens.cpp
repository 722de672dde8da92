#include "oxautils/check/expression_tokens.h"

#include <algorithm>
#include <cstring>

namespace OXA {

namespace {

constexpr int kUnits = 16;
constexpr int kDeepest = 200; // nested parentheses and negations: parsers have limits

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
    const QString four = text.mid(start, 4).toLower(); // readers turn expressions to upper case
    if (four == "1'b0" || four == "1'b1")
        return {Token::Constant, four};
    const bool doubled = (c == '&' || c == '|') && text.midRef(start + 1, 1) == c;
    return {kindOf(c), text.mid(start, doubled ? 2 : 1)};
}

bool isOperand(Token::Kind kind) { return kind == Token::Unit || kind == Token::Constant; }

bool isNestedTooDeeply(const QList<Token>& tokens)
{
    int level = 0;
    QList<int> levels {0}; // inside each open parenthesis
    for (const Token& token : tokens) {
        level += token.kind == Token::Negation || token.kind == Token::Open;
        if (level > kDeepest)
            return true;
        if (token.kind == Token::Open)
            levels += level;
        else if (token.kind == Token::Close)
            levels.removeLast();
        if (isOperand(token.kind) || token.kind == Token::Close)
            level = levels.last();
    }
    return false;
}

}

QList<Token> tokensOf(const QString& text)
{
    QList<Token> tokens;
    for (int at = 0; at < text.size(); at += tokens.last().text.size())
        tokens += tokenAt(text, at);
    return tokens;
}

bool hasToken(const QList<Token>& tokens, Token::Kind kind)
{
    return std::any_of(
        tokens.begin(), tokens.end(), [kind](const Token& token) { return token.kind == kind; });
}

int unbalancedParentheses(const QList<Token>& tokens)
{
    int open = 0;
    int unopened = 0;
    for (const Token& token : tokens) {
        open += token.kind == Token::Open;
        if (token.kind != Token::Close)
            continue;
        if (open > 0)
            --open;
        else
            ++unopened;
    }
    return unopened > 0 ? -unopened : open;
}

QString syntaxComplaint(const QList<Token>& tokens)
{
    bool wantsOperand = true;
    for (const Token& token : tokens) {
        const bool startsOperand
            = isOperand(token.kind) || token.kind == Token::Open || token.kind == Token::Negation;
        // Without a left operand a single &, | or ^ is a reduction.
        const bool reduction
            = wantsOperand && token.kind == Token::Binary && token.text.size() == 1;
        if (token.kind == Token::Blank || reduction)
            continue;
        if (startsOperand && !wantsOperand)
            return QString("there is no operator before \"%1\"").arg(token.text);
        if (!startsOperand && wantsOperand)
            return QString("there is nothing before \"%1\"").arg(token.text);
        wantsOperand = !isOperand(token.kind) && token.kind != Token::Close;
    }
    if (!wantsOperand)
        return isNestedTooDeeply(tokens) ? "it is nested deeper than 200 levels" : QString();
    const bool empty = std::all_of(tokens.begin(), tokens.end(),
        [](const Token& token) { return token.kind == Token::Blank; });
    return empty ? "it is empty" : "it ends too early";
}

}
