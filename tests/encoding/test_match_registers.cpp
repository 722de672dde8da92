#include "oxautils/encoding/match_registers.h"
#include "oxautils/model/ao_core.h"

#include <QTextStream>
#include <QtTest>

#include <limits>

using namespace OXA;

namespace {

QList<SignalItem> bus(int width)
{
    SignalItem item;
    item.name = "bus";
    for (int bit = width; bit-- > 0;) {
        item.subItems += SignalItem();
        item.subItems.last().name = QString("bus[%1]").arg(bit);
    }
    return {item};
}

MatchUnit* watch(AoCore& core, int unit, int width)
{
    TriggerPort* port = core.getTrigger(unit);
    port->signalList = bus(width);
    core.matchUnit(unit)->trigger = port;
    core.matchUnit(unit)->enabled = true;
    return core.matchUnit(unit);
}

QStringList registers(AoCore& core, const QString& device = QString(), int flag = 0)
{
    QString text;
    QTextStream out(&text);
    generateRegister(&core, out, device, flag);
    out.flush();
    return text.split('\n');
}

QStringList unusedLines(int unit)
{
    QStringList lines;
    for (const char* name : {"REG_M0", "REG_M1", "REG_M2", "REG_CTRL", "TRIG_CNT"})
        lines += QString("parameter MATCH%1_%2_INIT = 16'h0000;").arg(unit).arg(name);
    return lines;
}

struct VectorRow {
    const char* what;
    int func;
    const char *value0, *value1, *m0, *m1, *m2;
};

// On a port of 4 signals.
constexpr VectorRow kVectors[] = {
    {"levels, any, rising",            0,  "10XR",  "",      "1000", "1100", "0001"},
    {"falling, either, none",          1,  "0FBN",  "",      "0101", "1011", "0111"},
    {"unknown and lower case are any", 0,  "1x?r",  "",      "1000", "1000", "0000"},
    {"short is filled on the left",    0,  "1",     "",      "0001", "1111", "0000"},
    {"long keeps its first",           0,  "10X11", "",      "1001", "1101", "0000"},
    {"greater bounds through M0",      2,  "10X1",  "1111",  "1001", "0000", "0000"},
    {"less bounds through M1",         3,  "1111",  "0000",  "0000", "1111", "0000"},
    {"at least, no edges",             4,  "RFN1",  "1111",  "0001", "0000", "0000"},
    {"at most",                        5,  "011",   "1111",  "0000", "0011", "0000"},
    {"range",                          6,  "11",    "11001", "0011", "1100", "0000"},
    {"outside a range",                7,  "0001",  "1R1N",  "0001", "1010", "0000"},
    {"unknown function",               8,  "1111",  "1111",  "0000", "0000", "0000"},
    {"negative function",              -1, "1111",  "1111",  "0000", "0000", "0000"},
};

}

class TestMatchRegisters : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void vectors();
    void controlWords();
    void hexadecimal();
    void wholeCore();
    void unusedUnitsKeep16Bits();
    void dataDepth();
    void valuesBelowZero();
    void refusesAbsurdWidths();
    void missingObjects();
};

void TestMatchRegisters::vectors()
{
    AoCore core(0);
    MatchUnit* unit = watch(core, 5, 4);
    for (const VectorRow& row : kVectors) {
        unit->matchFunc = MatchFunc(row.func);
        unit->value0 = row.value0;
        unit->value1 = row.value1;
        QBitArray m0(9, true), m1, m2(2, true);
        bitForM(unit, m0, m1, m2);
        const QString actual = BitToString(m0) + " " + BitToString(m1) + " " + BitToString(m2);
        const QString expected = QString("%1 %2 %3").arg(row.m0, row.m1, row.m2);
        QVERIFY2(actual == expected, qPrintable(QString(row.what) + ": " + actual));
    }
}

void TestMatchRegisters::controlWords()
{
    const char* const functions[]
        = {"0000", "0001", "0010", "0011", "0100", "0101", "0110", "0111", "0000"};
    MatchUnit unit;
    for (int i = 0; i < 9; ++i) {
        unit.matchFunc = MatchFunc(i);
        QCOMPARE(BitToString(bitForMatchCtrl(&unit)), QString(functions[i]));
    }
    unit.matchFunc = MatchInRange;
    unit.continuous = true;
    QCOMPARE(BitToString(bitForMatchCtrl(&unit)), QString("0110")); // no counter to be continuous
    unit.counterEnable = true;
    QCOMPARE(BitToString(bitForMatchCtrl(&unit)), QString("1110"));
}

void TestMatchRegisters::hexadecimal()
{
    const QList<QPair<QString, QString>> rows = {
        {"",                         ""      },
        {"111",                      ""      },
        {"0000",                     "0"     },
        {"0001001001101111",         "126f"  },
        {"100110101011110011011110", "9abcde"},
        {"1111101",                  "f"     },
        {"0001xxxx0010",             "12"    },
        {"000-0100001X",             "4"     },
    };
    for (const auto& row : rows)
        QCOMPARE(strBit2Hex(row.first), row.second);
}

void TestMatchRegisters::wholeCore()
{
    AoCore core(3);
    core.captureSignals = bus(17); // and the mark: 18 bits, 5 digits
    core.captureAmount = 4096;
    core.triggerPos = 100;
    core.windowNum = 8;
    core.expressions = QStringList {"M0", "M1", "M0|M1"};
    MatchUnit* equal = watch(core, 3, 4);
    equal->value0 = "10XR";
    MatchUnit* range = watch(core, 10, 18);
    range->matchFunc = MatchInRange;
    range->value0 = "1011";
    range->value1 = "110000000000000001";
    range->counterEnable = range->continuous = true;
    range->counter = 300;

    QStringList expected
        = {"parameter TRIG_LEVELS_INIT = 18'h00002;", "parameter MAX_DATA_DEPTH_INIT = 18'h00fff;",
            "parameter DATA_DEPTH_INIT = 18'h00f99;", "parameter NUM_WINDOWS_INIT = 18'h00007;"};
    for (int unit = 0; unit < 16; ++unit) {
        if (unit == 3)
            expected += {"parameter MATCH3_REG_M0_INIT = 18'h00008;",
                "parameter MATCH3_REG_M1_INIT = 18'h0000c;",
                "parameter MATCH3_REG_M2_INIT = 18'h00001;",
                "parameter MATCH3_REG_CTRL_INIT = 18'h00000;",
                "parameter MATCH3_TRIG_CNT_INIT = 16'h0000;"};
        else if (unit == 10)
            expected += {"parameter MATCH10_REG_M0_INIT = 18'h0000b;",
                "parameter MATCH10_REG_M1_INIT = 18'h30001;",
                "parameter MATCH10_REG_M2_INIT = 18'h00000;",
                "parameter MATCH10_REG_CTRL_INIT = 18'h0000e;",
                "parameter MATCH10_TRIG_CNT_INIT = 18'h0012b;"};
        else
            expected += unusedLines(unit);
    }
    expected += "";
    QCOMPARE(registers(core), expected);
}

void TestMatchRegisters::unusedUnitsKeep16Bits()
{
    AoCore core(0);
    core.captureSignals = bus(40);
    watch(core, 0, 4)->enabled = false;
    watch(core, 1, 4)->trigger = nullptr;
    watch(core, 2, 4)->counterEnable = true;
    core.getTrigger(2)->signalList.clear();
    QCOMPARE(registers(core).mid(4, 15), unusedLines(0) + unusedLines(1) + unusedLines(2));
}

void TestMatchRegisters::dataDepth()
{
    AoCore core(0); // 1024 samples, static expressions
    struct Row {
        const char* device;
        int flag, expressionType;
        const char* depth;
    };
    const Row rows[] = {
        {"QX1N-1P5",  0, 0, "03fd"},
        {"QX1N-9",    0, 0, "03fc"},
        {"QX1NRF-4B", 0, 1, "03fb"},
        {"QX2A-55",   1, 1, "03fc"}, // the flag keeps a listed device's last sample
        {"qx1n-9",    0, 2, "03fd"},
    };
    for (const Row& row : rows) {
        core.expressionType = row.expressionType;
        QCOMPARE(registers(core, row.device, row.flag).at(2),
            QString("parameter DATA_DEPTH_INIT = 16'h%1;").arg(row.depth));
    }
}

void TestMatchRegisters::valuesBelowZero()
{
    AoCore core(0);
    core.captureAmount = 0;
    core.triggerPos = 252;
    core.windowNum = 0;
    MatchUnit* unit = watch(core, 0, 4);
    unit->counterEnable = true;
    unit->counter = std::numeric_limits<int>::min();
    const QStringList lines = registers(core);
    QCOMPARE(lines.mid(0, 4),
        QStringList({"parameter TRIG_LEVELS_INIT = 16'h00-1;",
            "parameter MAX_DATA_DEPTH_INIT = 16'h00-1;", "parameter DATA_DEPTH_INIT = 16'h0-ff;",
            "parameter NUM_WINDOWS_INIT = 16'h00-1;"}));
    QCOMPARE(lines.at(8), QString("parameter MATCH0_TRIG_CNT_INIT = 16'h7fffffff;"));
}

void TestMatchRegisters::refusesAbsurdWidths()
{
    AoCore core(4);
    MatchUnit* unit = watch(core, 0, 4);
    unit->counterEnable = true;
    unit->counterWidth = std::numeric_limits<int>::max();
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression("^core 4: .* 2147483647 bits"));
    QCOMPARE(registers(core), QStringList(""));
}

void TestMatchRegisters::missingObjects()
{
    QBitArray m0(3), m1(3), m2(3);
    bitForM(nullptr, m0, m1, m2);
    QVERIFY(m0.isEmpty() && m1.isEmpty() && m2.isEmpty());
    MatchUnit unbound;
    unbound.value0 = "11";
    bitForM(&unbound, m0, m1, m2);
    QVERIFY(m0.isEmpty() && m1.isEmpty() && m2.isEmpty());
    QString text;
    QTextStream out(&text);
    generateRegister(nullptr, out, "QX1N-9", 0);
    QVERIFY(text.isEmpty());
}

QTEST_GUILESS_MAIN(TestMatchRegisters)
#include "test_match_registers.moc"
