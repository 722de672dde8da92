// SPDX-License-Identifier: Apache-2.0
#include "expression_marks.h"

#include "signal_names.h"

#include "oxautils/encoding/expression_tokens.h"
#include "oxautils/model/limits.h"
#include "oxautils/model/shown_text.h"

#include <QCoreApplication>

#include <algorithm>

using namespace OXA;

namespace {

QString tr(const char* text) { return QCoreApplication::translate("ExpressionMarks", text); }

/// The error in the name of a unit; empty when there is none.
QString nameComplaint(const Token& name, const AoCore& core)
{
    const MatchUnit* unit = core.matchUnit(name.unit);
    if (!unit)
        return tr("there is no unit %1").arg(name.text);
    return unit->enabled ? QString() : tr("%1 is switched off").arg(name.text);
}

ExpressionMark foreignMark(const QString& text, int start, int end)
{
    const QString piece = text.mid(start, end - start);
    return {start, int(piece.size()), tr("\"%1\" is not allowed in an expression").arg(piece)};
}

}

QList<ExpressionMark> expressionMarks(const QString& text, const AoCore& core)
{
    QList<ExpressionMark> marks;
    const QList<Token> tokens = tokensOf(text);
    int foreignEnd = -1; // of the last mark of a foreign piece
    for (const Token& token : tokens) {
        const int end = token.start + token.text.size();
        // A doubled operator is reported as the reason for the missing table.
        if (token.kind != Token::Binary
            && isForeign(token, core.expressionType == DynamicExpressions)) {
            const bool longer = foreignEnd == token.start;
            const int start = longer ? marks.takeLast().start : token.start;
            marks += foreignMark(text, start, end);
            foreignEnd = end;
        }
        const QString complaint
            = token.kind == Token::Unit ? nameComplaint(token, core) : QString();
        if (!complaint.isEmpty())
            marks.append({token.start, int(token.text.size()), complaint});
    }
    for (const Token& token : unmatchedParentheses(tokens))
        marks.append({token.start, 1,
            token.kind == Token::Close ? tr("\")\" has no \"(\"") : tr("\"(\" is not closed")});
    std::stable_sort(marks.begin(), marks.end(),
        [](const ExpressionMark& a, const ExpressionMark& b) { return a.start < b.start; });
    return marks;
}

QString complaintText(const QList<ExpressionMark>& marks)
{
    QStringList texts;
    for (const ExpressionMark& mark : marks)
        texts += mark.text;
    return shownText(texts.join("; "));
}

QString normalizedExpression(const QString& text)
{
    QString expression = text;
    expression.replace('\n', ' ');
    expression.remove("atch[", Qt::CaseInsensitive).remove(']');
    QString clean;
    for (const QChar c : qAsConst(expression)) {
        if (c == ' ' || !cleanName(c).isEmpty())
            clean += c;
    }
    return clean.toUpper();
}
