// Two bytes of enabled units, then an expression: compiling it is held to its definition row by
// row.
#include "fuzz_support.h"

#include "oxautils/encoding/trigger_expression.h"

#include <algorithm>
#include <cstring>

namespace {

/// The character of one row, by the steps that define it.
struct RowByRow {
    QByteArray postfix;
    QByteArray operands;
    std::vector<bool> enables;
    std::vector<bool> added;

    RowByRow(QString exp, const std::vector<bool>& enabled)
        : enables(enabled)
        , added(enabled)
    {
        OXA::resetLogicExp(exp, added);
        const QByteArray infix = OXA::changeExpItem(exp).toLatin1();
        postfix = QByteArray(infix.size() + 1, '\0');
        OXA::translet(infix.constData(), postfix.data());
        operands = QByteArray(infix.size() + 1, '\0');
        OXA::getOperand(postfix.constData(), operands.data());
        OXA::sort(operands.data());
    }

    int variables() const { return int(std::strlen(operands.constData())); }

    char row(int number) const
    {
        char digits[40];
        OXA::itoa(number, digits, 2);
        QByteArray bits = variables() ? QByteArray(digits).rightJustified(variables(), '0') : "";
        OXA::resetBitDataIn(bits.data(), enables, added);
        return OXA::calcuate(postfix.constData(), operands.constData(), bits.constData());
    }
};

bool isExpression(const QString& text)
{
    return std::all_of(
        text.begin(), text.end(), [](QChar c) { return QString("M0123456789!&^|()").contains(c); });
}

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    silenceLog();
    if (size < 2)
        return 0;
    std::vector<bool> enables(16);
    for (size_t i = 0; i < 16; ++i)
        enables[i] = (data[i / 8] >> (i % 8)) & 1;
    const QString exp = QString::fromUtf8(reinterpret_cast<const char*>(data + 2), int(size - 2));

    OXA::AoCore core(0);
    core.expressionType = 1;
    core.expressions = QStringList {exp};
    for (int i = 0; i < 16; ++i)
        core.matchUnits.at(i)->enabled = enables[size_t(i)];
    QString text;
    QTextStream out(&text);
    OXA::generateExpression(&core, out);
    require(text.count('\n') == 16, "a line an expression");

    const QString table = OXA::logicTruthTable(exp, enables);
    require(table.size() <= 65536 && (table.size() & (table.size() - 1)) == 0, "2 to the n rows");
    require(table.count('x') == 0 || table.count('x') == table.size(), "all rows or none");
    QString dense = exp;
    dense.remove(' ').remove('\t');
    if (!isExpression(dense) || table.startsWith('x'))
        return 0;
    const RowByRow reference(dense, enables);
    require(table.size() == 1 << reference.variables(), "as many rows as by definition");
    for (int row = 0; row < table.size(); row += std::max(1, table.size() / 64 - 1))
        require(table.at(row) == reference.row(row), "a row is what its definition says");
    return 0;
}
