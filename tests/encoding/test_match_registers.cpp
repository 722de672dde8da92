// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/match_registers.h"

#include "support/signals.h"

#include <QTextStream>
#include <QtTest>

#include <limits>

using namespace OXA;

namespace {

QStringList registers(AoCore& core)
{
    QString text;
    QTextStream out(&text);
    generateRegister(&core, out, "QX1N-9", 0);
    out.flush();
    return text.split('\n');
}

struct VectorRow {
    const char* what;
    int func;
    const char *value0, *value1, *m0, *m1, *m2, *control;
};

// On a port of 4 signals.
constexpr VectorRow kVectors[] = {
    {"levels, any, rising",            0,  "10XR",  "",      "1000", "1100", "0001", "0000"},
    {"falling, either, none",          1,  "0FBN",  "",      "0101", "1011", "0111", "0001"},
    {"unknown and lower case are any", 0,  "1x?r",  "",      "1000", "1000", "0000", "0000"},
    {"short is filled on the left",    0,  "1",     "",      "0001", "1111", "0000", "0000"},
    {"long keeps its first",           0,  "10X11", "",      "1001", "1101", "0000", "0000"},
    {"greater bounds through M0",      2,  "10X1",  "1111",  "1001", "0000", "0000", "0010"},
    {"less bounds through M1",         3,  "1111",  "0000",  "0000", "1111", "0000", "0011"},
    {"at least, no edges",             4,  "RFN1",  "1111",  "0001", "0000", "0000", "0100"},
    {"at most",                        5,  "011",   "1111",  "0000", "0011", "0000", "0101"},
    {"range",                          6,  "11",    "11001", "0011", "1100", "0000", "0110"},
    {"outside a range",                7,  "0001",  "1R1N",  "0001", "1010", "0000", "0111"},
    {"unknown function",               8,  "1111",  "1111",  "0000", "0000", "0000", "0000"},
    {"negative function",              -1, "1111",  "1111",  "0000", "0000", "0000", "0000"},
};

}

class TestMatchRegisters : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void vectors();
    void hexadecimal();
    void digitsCoverTheWidth();
    void refusesAbsurdWidths();
    void missingObjects();
};

void TestMatchRegisters::vectors()
{
    AoCore core(0);
    core.triggers.at(2)->signalList = {busOf("p", 4)};
    for (const VectorRow& row : kVectors) {
        MatchUnit& unit = enableUnit(core, 5, 2, row.value0);
        unit.matchFunc = MatchFunc(row.func);
        unit.value1 = row.value1;
        QBitArray m0(9, true), m1, m2(2, true);
        bitForM(&unit, m0, m1, m2);
        const QStringList actual = {
            BitToString(m0), BitToString(m1), BitToString(m2), BitToString(bitForMatchCtrl(&unit))};
        const QStringList expected = {row.m0, row.m1, row.m2, row.control};
        QVERIFY2(actual == expected, qPrintable(row.what + (": " + actual.join(' '))));
    }
}

void TestMatchRegisters::hexadecimal()
{
    const QList<QPair<QString, QString>> rows = {
        {"0001001001101111",         "126f"  },
        {"100110101011110011011110", "9abcde"},
        {"1111101",                  "f"     },
        {"0001xxxx0010",             "12"    },
    };
    for (const auto& row : rows)
        QCOMPARE(strBit2Hex(row.first), row.second);
}

void TestMatchRegisters::digitsCoverTheWidth()
{
    AoCore core(3);
    core.captureSignals = signalsOf("d", 17); // and the mark: 18 bits, 5 digits
    QCOMPARE(registers(core).at(1), QString("parameter MAX_DATA_DEPTH_INIT = 18'h003ff;"));
}

void TestMatchRegisters::refusesAbsurdWidths()
{
    AoCore core(4);
    MatchUnit& unit = enableUnit(core, 0, 0, "1");
    unit.counterEnable = true;
    unit.counterWidth = std::numeric_limits<int>::max();
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression("^core 4: .* 2147483647 bits"));
    QCOMPARE(registers(core), QStringList(""));
}

void TestMatchRegisters::missingObjects()
{
    QBitArray m0(3), m1(3), m2(3);
    bitForM(nullptr, m0, m1, m2);
    QVERIFY(m0.isEmpty() && m1.isEmpty() && m2.isEmpty());
    QString text;
    QTextStream out(&text);
    generateRegister(nullptr, out, "QX1N-9", 0);
    QVERIFY(text.isEmpty());

    AoCore core(0);
    core.matchUnit(0)->enabled = true;
    QCOMPARE(registers(core).at(4), QString("parameter MATCH0_REG_M0_INIT = 16'h0000;"));
}

QTEST_GUILESS_MAIN(TestMatchRegisters)
#include "test_match_registers.moc"
