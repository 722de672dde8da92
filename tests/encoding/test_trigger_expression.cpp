// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/trigger_expression.h"

#include <QtTest>

#include <cstring>
#include <limits>
#include <random>
#include <stdexcept>

using namespace OXA;

namespace {

std::vector<bool> enabled(const std::vector<int>& units)
{
    std::vector<bool> enables(16);
    for (const int unit : units)
        enables[size_t(unit)] = true;
    return enables;
}

QByteArray postfixOf(const QByteArray& infix)
{
    QByteArray postfix(infix.size() + 1, '#');
    translet(infix, postfix.data());
    return postfix.data();
}

// The table as its definition has it: each row by itself.
QString rowByRow(QString exp, const std::vector<bool>& enables)
{
    std::vector<bool> added = enables;
    resetLogicExp(exp, added);
    const QByteArray postfix = postfixOf(changeExpItem(exp).toLatin1());
    QByteArray operands(postfix.size() + 1, '\0');
    getOperand(postfix, operands.data());
    sort(operands.data());
    const int count = int(std::strlen(operands));
    QString rows;
    for (int k = 0; k < 1 << count; ++k) {
        char digits[33];
        itoa(k, digits, 2);
        QByteArray bits = QByteArray(digits).rightJustified(count, '0');
        resetBitDataIn(bits.data(), enables, added);
        rows += calcuate(postfix, operands, bits);
    }
    return rows;
}

QString randomText(std::mt19937& random, int units)
{
    static const char* const kSymbols[] = {"!", "&", "^", "|", "|", "^", "(", ")"};
    const auto unit = [&] { return QString("M%1").arg(random() % unsigned(units)); };
    QString text;
    for (int left = int(random() % 90); left > 0; --left)
        text += random() % 2 ? unit() : QString(kSymbols[random() % std::size(kSymbols)]);
    return text;
}

// One that has a value, unless it is so long that its end is not evaluated.
QString randomExpression(std::mt19937& random, int units, int leaves)
{
    if (leaves <= 1)
        return QString(random() % 6 ? "M%1" : "!M%1").arg(random() % unsigned(units));
    const int left = 1 + int(random() % unsigned(leaves - 1));
    const QString text = randomExpression(random, units, left) + QChar("&^|||"[random() % 5])
        + randomExpression(random, units, leaves - left);
    return random() % 4 ? text : '(' + text + ')';
}

struct TableRow {
    const char* what;
    const char* expression;
    std::vector<int> enables;
    const char* table;
};

const TableRow kTables[] = {
    {"lowest unit at bit 0",          "M0&!M9",       {0, 9},       "0100"            },
    {"precedence",                    "M3|M2^M1&!M0", {0, 1, 2, 3}, "0010110111111111"},
    {"M1 counts as named with M10",   "M10",          {1, 10},      "01"              },
    {"and M0 then takes its bit",     "M10",          {0, 1, 10},   "0111"            },
    {"a disabled unit takes a bit",   "M5",           {0},          "0101"            },
    {"blanks",                        " M0 &\tM1 ",   {0, 1},       "0001"            },
    {"nothing named",                 "",             {},           "x"               },
    {"nothing but what is added",     "",             {3},          "xx"              },
    {"twice not takes a value early", "!!M0",         {0},          "xx"              },
    {"twice not with parentheses",    "!(!M0)",       {0},          "01"              },
    {"open parentheses",              "((M0|M1",      {0, 1},       "0111"            },
    {"closed ones too many",          "M0)))|M1",     {0, 1},       "0111"            },
    {"a unit that is not there",      "M16",          {1},          "xx"              },
    {"a name cut short",              "M&M0",         {0},          "xxxx"            },
    {"a letter of its own",           "A&M0",         {0},          "xx"              },
    {"another operator",              "M0+M0*M0",     {0},          "xx"              },
    {"beyond 8 bits",                 u8"M0\u2227M0", {0},          "xx"              },
};

}

class TestTriggerExpression : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tables();
    void equalToRowByRow();
    void longText();
    void rawBuffers();
    void parameterLines();
};

void TestTriggerExpression::tables()
{
    for (const TableRow& row : kTables) {
        const QString table = logicTruthTable(row.expression, enabled(row.enables));
        QVERIFY2(table == row.table, qPrintable(QString(row.what) + ": " + table));
    }
    QString all = "M0";
    for (int i = 1; i < 16; ++i)
        all += QString("&M%1").arg(i);
    QCOMPARE(logicTruthTable(all, std::vector<bool>(16, true)), QString(65535, '0') + '1');
    QVERIFY_EXCEPTION_THROWN(logicTruthTable("M0", std::vector<bool>(15)), std::out_of_range);
}

void TestTriggerExpression::equalToRowByRow()
{
    std::mt19937 random(20261121);
    int beyondReach = 0; // of the ones with a value, those that the position rule may have touched
    for (int i = 0; i < 1000; ++i) {
        const int units = i % 100 == 0 ? 16 : 1 + int(random() % 6);
        const QString exp = i % 3 ? randomExpression(random, units, 1 + int(random() % 40))
                                  : randomText(random, units);
        std::vector<bool> enables(16);
        for (size_t unit = 0; unit < enables.size(); ++unit)
            enables[unit] = random() % 8 == 0;
        const QString table = logicTruthTable(exp, enables);
        QVERIFY2(table == rowByRow(exp, enables), qPrintable(exp));
        beyondReach += exp.size() > 70 && !table.startsWith('x');
    }
    QVERIFY(beyondReach > 20);
}

void TestTriggerExpression::longText()
{
    // 17 operands and 16 operators fill 33 places. The next symbol ends the replacement, so that M1
    // behind it is no value.
    const QString chain = QString("M0|").repeated(16) + "M0";
    QCOMPARE(logicTruthTable('(' + chain + ")!)M1", enabled({0, 1})), QString("1010"));

    const QString nots = QString("!(").repeated(50000) + "M0";
    QCOMPARE(logicTruthTable(nots, enabled({0})), QString("01"));
    QCOMPARE(logicTruthTable(QString("M0|").repeated(50000) + "M0", enabled({0})), QString("xx"));
}

void TestTriggerExpression::rawBuffers()
{
    char text[34];
    OXA::itoa(std::numeric_limits<int>::min(), text, 10);
    QCOMPARE(text, "-2147483648");
    OXA::itoa(-1, text, 16);
    QCOMPARE(text, "FFFFFFFF");

    char row[] = "11\0safe"; // more units than the row has bits
    resetBitDataIn(row, std::vector<bool>(16, true), std::vector<bool>(16, true));
    QCOMPARE(QByteArray(row, 7), QByteArray("00\0safe", 7));
}

// A table of two rows is written as one of four; there may be more than sixteen.
void TestTriggerExpression::parameterLines()
{
    AoCore core(6);
    core.expressionType = 1;
    core.matchUnit(0)->enabled = true;
    core.expressions = QStringList {"M0 | M0", "M0 or %1"};
    for (int i = 2; i < 18; ++i)
        core.expressions += "!M0";
    QTest::ignoreMessage(QtCriticalMsg,
        "core 6: expression 1 \"M0 or %1\" contains more than unit names, the operators ! & ^ | "
        "and parentheses");
    QString text;
    QTextStream out(&text);
    generateExpression(&core, out);
    out.flush();
    const QStringList lines = text.split('\n');
    QCOMPARE(lines.at(0), QString("parameter EXPRESSION0_INIT = 4'h2;"));
    QVERIFY2(lines.at(1).endsWith("'h;"), qPrintable(lines.at(1)));
    QCOMPARE(lines.mid(17), QStringList({"parameter EXPRESSION17_INIT = 4'h1;", ""}));
}

QTEST_GUILESS_MAIN(TestTriggerExpression)
#include "test_trigger_expression.moc"
