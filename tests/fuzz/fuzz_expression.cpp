// Two bytes of enabled units, then an expression: its table has a row for each combination of
// units, of which all have a value, or none.
#include "fuzz_support.h"

#include "oxautils/encoding/trigger_expression.h"
#include "oxautils/model/limits.h"

void fuzz(const QByteArray& input)
{
    OXA::AoCore core(0);
    core.expressionType = OXA::DynamicExpressions;
    core.expressions = QStringList {QString::fromUtf8(input.mid(2))};
    std::vector<bool> enables;
    for (OXA::MatchUnit* unit : core.matchUnits) {
        unit->enabled = input.leftJustified(2, 0).at(unit->index / 8) >> (unit->index % 8) & 1;
        enables.push_back(unit->enabled);
    }
    QString text;
    QTextStream out(&text);
    OXA::generateExpression(&core, out);
    require(text.count('\n') == 16, "a line an expression");

    const QString table = OXA::logicTruthTable(core.expressions.first(), enables);
    require(table.size() <= 65536 && (table.size() & (table.size() - 1)) == 0, "2 to the n rows");
    require(table.count('x') == 0 || table.count('x') == table.size(), "all rows or none");
}
