// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/trigger/trigger_table.h"

#include "files/fail.h"
#include "oxautils/encoding/static_expression.h"
#include "oxautils/model/limits.h"

namespace OXA_CAPTURE {

namespace {

/// The text that only static expressions allow; empty when there is none.
QString foreignPiece(const QList<OXA::Token>& tokens)
{
    using OXA::Token;
    for (const Token& token : tokens) {
        if (token.kind != Token::Binary && OXA::isForeign(token, true))
            return token.text;
    }
    QString operatorBefore = ""; // "" at the start, null after an operand
    for (const Token& token : tokens) {
        const bool leadingZero = token.text.startsWith("M0") && token.text.size() > 2;
        if (leadingZero || OXA::isForeign(token, true))
            return token.text;
        if (token.kind == Token::Binary && !operatorBefore.isNull())
            return operatorBefore + token.text;
        const bool wantsOperand = token.kind == Token::Negation || token.kind == Token::Binary
            || token.kind == Token::Open;
        operatorBefore = wantsOperand ? token.text : QString();
    }
    return {};
}

QString complaint(const QList<OXA::Token>& tokens, const OXA::SyntaxFault& fault, bool dynamic)
{
    const QString foreign = dynamic ? foreignPiece(tokens) : QString();
    return foreign.isEmpty() ? fault.text()
                             : QString("unexpected \"%1\" in a dynamic expression").arg(foreign);
}

std::vector<int> enabledUnits(const OXA::AoCore& core)
{
    std::vector<int> units;
    for (const OXA::MatchUnit* unit : core.enabledMatchUnits())
        units.push_back(unit->index);
    return units;
}

}

bool triggerTable(const OXA::AoCore& core, const QString& text, TriggerTable& table, QString* error)
{
    const bool dynamic = core.expressionType == OXA::DynamicExpressions;
    const QList<OXA::Token> tokens = OXA::tokensOf(text);
    const OXA::StaticExpression parsed = OXA::parseStatic(tokens);
    const QString fault = complaint(tokens, parsed.fault, dynamic);
    if (!fault.isEmpty())
        return OXA::fail(error, fault);
    const OXA::TruthTable rows = dynamic ? OXA::compileExpression(text, OXA::unitSwitches(core))
                                         : OXA::staticTable(parsed);
    if (!rows.defined)
        return OXA::fail(error, "its table has no values");
    table = {};
    table.units
        = dynamic ? enabledUnits(core) : std::vector<int>(parsed.units.begin(), parsed.units.end());
    for (int row = 0; row < rows.rows(); ++row)
        table.rows.push_back(rows.at(row));
    return true;
}

}
