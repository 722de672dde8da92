// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/expression_rules.h"

#include <QSet>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kMostTokens = 10000; // of an expression whose table is checked

/// The texts of the tokens selected by `isMeant`, each once and in quotation marks.
template <typename IsMeant>
QStringList distinctTexts(const Expression& expression, const IsMeant& isMeant)
{
    QStringList texts;
    QSet<QString> seen;
    for (const Token& token : expression.tokens) {
        if (isMeant(token) && !seen.contains(token.text))
            texts += token.text == "\n" ? "a line end" : '"' + token.text + '"';
        seen << token.text;
    }
    return texts;
}

/// Whether the expression has only allowed tokens, so that its syntax can be checked.
bool isMadeOfExpressions(const Expression& expression)
{
    const bool known
        = std::all_of(expression.tokens.begin(), expression.tokens.end(), [&](const Token& token) {
              const bool unknown = token.kind == Token::Unit && token.unit < 0;
              return !unknown && !isForeign(token, expression.dynamic());
          });
    return known && unmatchedParentheses(expression.tokens).isEmpty();
}

bool isTooLong(const Expression& expression)
{
    return expression.dynamic() && isMadeOfExpressions(expression)
        && expression.compiled.stopsAt >= 0;
}

/// The value of all rows of `table`; -1 when they differ.
int constantOf(const TruthTable& table)
{
    const int rows = std::min(table.rows(), 64);
    const quint64 all = ~quint64(0) >> (64 - rows);
    const quint64 first = table.words.front() & all;
    const bool same = std::all_of(table.words.begin(), table.words.end(),
        [=](quint64 word) { return (word & all) == first; });
    return same && first == all ? 1 : same && first == 0 ? 0 : -1;
}

}

void findForeignCharacters(const Expression& expression, Findings& findings)
{
    const bool dynamic = expression.dynamic();
    const QStringList foreign = distinctTexts(
        expression, [dynamic](const Token& token) { return isForeign(token, dynamic); });
    if (!foreign.isEmpty())
        findings.add(expression.place(),
            QString("\"%1\" contains %2, which %3 expressions do not have")
                .arg(expression.text, foreign.join(", "), dynamic ? "dynamic" : "static"));
}

void findBlanks(const Expression& expression, Findings& findings)
{
    const bool blanks = std::any_of(expression.tokens.begin(), expression.tokens.end(),
        [](const Token& token) { return token.kind == Token::Blank; });
    if (expression.dynamic() && blanks)
        findings.add(expression.place(),
            QString("\"%1\" is dynamic and contains spaces").arg(expression.text));
}

void findUnknownUnits(const Expression& expression, Findings& findings)
{
    const QStringList unknown = distinctTexts(
        expression, [](const Token& token) { return token.kind == Token::Unit && token.unit < 0; });
    if (!unknown.isEmpty())
        findings.add(expression.place(),
            QString("\"%1\" names %2, units are M0 to M15")
                .arg(expression.text, unknown.join(", ")));
}

void findDisabledUnits(const Expression& expression, Findings& findings)
{
    for (const MatchUnit* unit : expression.core.matchUnits) {
        if (!unit->enabled && expression.parsed.units.contains(unit->index))
            findings.add(expression.place(),
                QString("\"%1\" names M%2, which is switched off")
                    .arg(expression.text, QString::number(unit->index)));
    }
}

void findParentheses(const Expression& expression, Findings& findings)
{
    const QList<Token> unmatched = unmatchedParentheses(expression.tokens);
    if (unmatched.isEmpty())
        return;
    const auto isOpen = [](const Token& token) { return token.kind == Token::Open; };
    const int open = int(std::count_if(unmatched.begin(), unmatched.end(), isOpen));
    const int closed = unmatched.size() - open;
    findings.add(expression.place(),
        QString("\"%1\" %2 %3 parentheses that it does not %4")
            .arg(expression.text, closed > 0 ? "closes" : "opens",
                QString::number(closed > 0 ? closed : open), closed > 0 ? "open" : "close"));
}

void findSyntax(const Expression& expression, Findings& findings)
{
    if (!isMadeOfExpressions(expression) || isTooLong(expression))
        return;
    QString complaint = expression.parsed.fault.text();
    if (complaint.isEmpty() && expression.dynamic() && !expression.compiled.defined)
        complaint = "its table has no values";
    if (!complaint.isEmpty())
        findings.add(expression.place(), QString("\"%1\": %2").arg(expression.text, complaint));
}

void findConstant(const Expression& expression, Findings& findings)
{
    // An expression without units is meant to be constant: 1'b1 triggers at once.
    if (expression.parsed.units.isEmpty() || expression.tokens.size() > kMostTokens
        || !isMadeOfExpressions(expression) || expression.parsed.fault.kind != SyntaxFault::None)
        return;
    const TruthTable table
        = expression.dynamic() ? expression.compiled : staticTable(expression.parsed);
    const int constant = table.defined ? constantOf(table) : -1;
    if (constant >= 0)
        findings.add(expression.place(),
            QString("\"%1\" is %2 true, for any values")
                .arg(expression.text, constant ? "always" : "never"));
}

void findLongExpression(const Expression& expression, Findings& findings)
{
    if (isTooLong(expression))
        findings.add(expression.place(),
            QString("\"%1\" is too long: completed by the other units that are switched on, it "
                    "has operands after position %2, where the table's compiler stops")
                .arg(expression.text, QString::number(expression.compiled.stopsAt)));
}

void findHiddenUnits(const Expression& expression, Findings& findings)
{
    if (!expression.dynamic() || !isMadeOfExpressions(expression))
        return;
    for (const MatchUnit* unit : expression.core.matchUnits) {
        const QString name = QString("M%1").arg(unit->index);
        if (unit->enabled && expression.text.contains(name)
            && !expression.parsed.units.contains(unit->index))
            findings.add(expression.place(),
                QString("\"%1\" does not name %2, which is switched on, but the table's compiler "
                        "finds \"%2\" in a longer name and leaves it out of the table's address")
                    .arg(expression.text, name));
    }
}

}
