#include "oxautils/check/expression_rules.h"

#include "oxautils/check/static_table.h"
#include "oxautils/encoding/trigger_expression.h"
#include "oxautils/encoding/truth_table.h"

#include <QSet>

#include <algorithm>
#include <cstring>

namespace OXA {

namespace {

constexpr int kMostTokens = 10000; // of an expression whose table is looked at

std::vector<bool> enablesOf(const AoCore& core)
{
    std::vector<bool> enables;
    for (const MatchUnit* unit : core.matchUnits)
        enables.push_back(unit->enabled);
    return enables;
}

/// A table has only names, the single operators and parentheses.
bool isForeign(const Token& token, bool dynamic)
{
    const bool doubled = token.kind == Token::Binary && token.text.size() > 1;
    return token.kind == Token::Other
        || (dynamic && (token.kind == Token::Constant || doubled || token.text == "~"));
}

bool names(const Expression& expression, int unit)
{
    for (const Token& token : expression.tokens) {
        if (token.kind == Token::Unit && token.unit == unit)
            return true;
    }
    return false;
}

/// The texts of the tokens that `isMeant` picks, each once and in quotation marks.
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

/// Whether pieces of the expression are such that it makes sense to look at how they fit.
bool isMadeOfExpressions(const Expression& expression)
{
    for (const Token& token : expression.tokens) {
        const bool unknown = token.kind == Token::Unit && token.unit < 0;
        if (unknown || isForeign(token, expression.dynamic()))
            return false;
    }
    return unbalancedParentheses(expression.tokens) == 0;
}

/// The first place of the postfix text at which the compiler leaves its operands alone; -1 when it
/// sees all of them.
int compilerStopsAt(const Expression& expression)
{
    QString text = QString(expression.text).remove(' ').remove('\t');
    std::vector<bool> enables = enablesOf(expression.core);
    resetLogicExp(text, enables);
    const QByteArray infix = changeExpItem(text).toLatin1();
    QByteArray postfix(infix.size() + 1, '\0');
    translet(infix.constData(), postfix.data());
    const int length = int(std::strlen(postfix.constData()));
    for (int i = 0; i < length; ++i) {
        if (postfix.at(i) <= i)
            return i;
    }
    return -1;
}

bool isTooLong(const Expression& expression)
{
    return expression.dynamic() && isMadeOfExpressions(expression)
        && compilerStopsAt(expression) >= 0;
}

/// The value that `table` has in every row; -1 when they differ.
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
            QString("\"%1\" holds %2, which %3 expressions do not have")
                .arg(expression.text, foreign.join(", "), dynamic ? "dynamic" : "static"));
}

void findBlanks(const Expression& expression, Findings& findings)
{
    if (expression.dynamic() && hasToken(expression.tokens, Token::Blank))
        findings.add(
            expression.place(), QString("\"%1\" is dynamic and holds blanks").arg(expression.text));
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
        if (!unit->enabled && names(expression, unit->index))
            findings.add(expression.place(),
                QString("\"%1\" names M%2, which is switched off")
                    .arg(expression.text, QString::number(unit->index)));
    }
}

void findParentheses(const Expression& expression, Findings& findings)
{
    const int unbalanced = unbalancedParentheses(expression.tokens);
    if (unbalanced != 0)
        findings.add(expression.place(),
            QString("\"%1\" %2 %3 parentheses that it does not %4")
                .arg(expression.text, unbalanced > 0 ? "opens" : "closes",
                    QString::number(std::abs(unbalanced)), unbalanced > 0 ? "close" : "open"));
}

void findSyntax(const Expression& expression, Findings& findings)
{
    if (!isMadeOfExpressions(expression) || isTooLong(expression))
        return;
    QString complaint = syntaxComplaint(expression.tokens);
    if (complaint.isEmpty() && expression.dynamic()
        && !compileExpression(expression.text, enablesOf(expression.core)).defined)
        complaint = "its table has no values";
    if (!complaint.isEmpty())
        findings.add(expression.place(), QString("\"%1\": %2").arg(expression.text, complaint));
}

void findConstant(const Expression& expression, Findings& findings)
{
    // Without a unit it was meant: 1'b1 triggers at once.
    if (!hasToken(expression.tokens, Token::Unit) || expression.tokens.size() > kMostTokens
        || !isMadeOfExpressions(expression) || !syntaxComplaint(expression.tokens).isEmpty())
        return;
    const TruthTable table = expression.dynamic()
        ? compileExpression(expression.text, enablesOf(expression.core))
        : staticTable(expression.tokens);
    const int constant = table.defined ? constantOf(table) : -1;
    if (constant >= 0)
        findings.add(expression.place(),
            QString("\"%1\" is %2 true, whatever its units find")
                .arg(expression.text, constant ? "always" : "never"));
}

void findLongExpression(const Expression& expression, Findings& findings)
{
    if (isTooLong(expression))
        findings.add(expression.place(),
            QString("\"%1\" is too long: completed by the other units that are switched on, it "
                    "has operands behind place %2, where the table's compiler stops")
                .arg(expression.text, QString::number(compilerStopsAt(expression))));
}

void findHiddenUnits(const Expression& expression, Findings& findings)
{
    if (!expression.dynamic() || !isMadeOfExpressions(expression))
        return;
    for (const MatchUnit* unit : expression.core.matchUnits) {
        const QString name = QString("M%1").arg(unit->index);
        if (unit->enabled && expression.text.contains(name) && !names(expression, unit->index))
            findings.add(expression.place(),
                QString("\"%1\" does not name %2, which is switched on, but the table's compiler "
                        "finds \"%2\" in a longer name and leaves it out of the table's address")
                    .arg(expression.text, name));
    }
}

}
