#include "expression_marks.h"

#include "signal_names.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

using namespace OXA;

namespace {

QString tr(const char* text) { return QCoreApplication::translate("ExpressionMarks", text); }

/// The pieces that expressions are made of; what is between them is not.
const QRegularExpression& pieces(bool dynamic)
{
    static const QRegularExpression inTables(R"(M\d*|[!&^|()]|[ \t]+)");
    static const QRegularExpression inNetlist(R"(M\d*|1'B[01]|&&|\|\||[!~&^|()]|[ \t]+)");
    return dynamic ? inTables : inNetlist;
}

/// The number of the unit that `name` names; -1 when there is no such unit.
int unitNumber(const QString& name)
{
    bool ok = false;
    const int number = name.midRef(1).toInt(&ok);
    return ok && number < 16 ? number : -1;
}

/// What is wrong with the name of a unit; empty when nothing is.
QString nameComplaint(const QString& name, const AoCore& core)
{
    const MatchUnit* unit = core.matchUnit(unitNumber(name));
    if (!unit)
        return tr("there is no unit %1").arg(name);
    return unit->enabled ? QString() : tr("%1 is switched off").arg(name);
}

}

QList<ExpressionMark> expressionMarks(const QString& text, const AoCore& core)
{
    QList<ExpressionMark> marks;
    QList<int> open;
    const auto markForeign = [&](int start, int end) {
        if (end > start)
            marks.append({start, end - start,
                tr("\"%1\" is no part of an expression").arg(text.mid(start, end - start))});
    };
    int at = 0;
    auto matches = pieces(core.expressionType == 1).globalMatch(text);
    while (matches.hasNext()) {
        const auto match = matches.next();
        const QString piece = match.captured();
        markForeign(at, match.capturedStart());
        at = match.capturedEnd();
        const QString complaint = piece.startsWith('M') ? nameComplaint(piece, core) : QString();
        if (!complaint.isEmpty())
            marks.append({match.capturedStart(), piece.size(), complaint});
        if (piece == "(")
            open += match.capturedStart();
        else if (piece == ")" && open.isEmpty())
            marks.append({match.capturedStart(), 1, tr("\")\" closes nothing")});
        else if (piece == ")")
            open.removeLast();
    }
    markForeign(at, text.size());
    for (const int start : qAsConst(open))
        marks.append({start, 1, tr("\"(\" is not closed")});
    std::stable_sort(marks.begin(), marks.end(),
        [](const ExpressionMark& a, const ExpressionMark& b) { return a.start < b.start; });
    return marks;
}

QList<int> namedUnits(const QString& text)
{
    static const QRegularExpression name("M\\d+");
    QList<int> units;
    auto matches = name.globalMatch(text);
    while (matches.hasNext()) {
        const int number = unitNumber(matches.next().captured());
        if (number >= 0 && !units.contains(number))
            units += number;
    }
    std::sort(units.begin(), units.end());
    return units;
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
