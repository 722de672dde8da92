#include "oxacapture/trigger/dynamic_expression.h"

#include "oxacapture/trigger/static_expression.h"

#include "oxautils/encoding/match_registers.h"
#include "oxautils/encoding/trigger_expression.h"

#include <QRegularExpression>

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

// The compiler takes any text, and never ends on some: what it is given has to be an expression.
bool isExpression(const QString& text, QString& error)
{
    static const QRegularExpression unknown("[^M0-9!&^|() \\t]");
    static const QRegularExpression doubled("&&|\\|\\||(?:^|[!&^|(])[&^|]|M0\\d");
    const auto found = unknown.match(text);
    const auto wrong = doubled.match(text);
    TriggerTable ignored;
    if (found.hasMatch())
        error = QString("unexpected \"%1\" in a dynamic expression").arg(found.captured());
    else if (wrong.hasMatch())
        error = QString("unexpected \"%1\" in a dynamic expression").arg(wrong.captured());
    else
        return compileStatic(text, ignored, error);
    return false;
}

}

bool compileDynamic(
    const QString& text, const std::vector<bool>& enabled, TriggerTable& table, QString& error)
{
    if (!isExpression(text, error))
        return false;
    // The register takes the table as a number, the last row its most significant bit; rows without
    // a value take their digit with them.
    QString rows = OXA::logicTruthTable(text, enabled);
    std::reverse(rows.begin(), rows.end());
    const QString digits = OXA::strBit2Hex(rows.rightJustified(4, '0'));
    if (digits.isEmpty()) {
        error = "its table has no value";
        return false;
    }
    table = {};
    for (size_t unit = 0; unit < enabled.size(); ++unit) {
        if (enabled[unit])
            table.units.push_back(int(unit));
    }
    const int size = std::min(rows.size(), 4 * digits.size());
    for (int row = 0; row < size; ++row) {
        const int digit = digits.mid(digits.size() - 1 - row / 4, 1).toInt(nullptr, 16);
        table.rows.push_back(digit >> (row % 4) & 1);
    }
    return true;
}

}
