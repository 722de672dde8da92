#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include "support/signals.h"
#include <QDebug>
#include <QtTest>

using namespace OXA;

namespace {

template <typename T> QString dump(const T& item)
{
    QString text;
    QDebug(&text) << item;
    return text;
}

}

class TestModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void portsAndUnitsByIndex();
    void textsOfUnknownNumbers();
    void windowNumbers();
    void shiftWidth();
    void flatPositions();
    void liteWalks();
    void dumps();
};

void TestModel::portsAndUnitsByIndex()
{
    const AoCore core(7);
    for (int i = 0; i < 16; ++i) {
        QCOMPARE(core.getTrigger(i), core.triggers.at(i));
        QCOMPARE(core.matchUnit(i), core.matchUnits.at(i));
        QVERIFY(core.getTrigger(i)->core == &core && core.matchUnit(i)->core == &core);
    }
    QVERIFY(!core.getTrigger(16) && !core.matchUnit(-1));
}

// What no file and no widget asks for.
void TestModel::textsOfUnknownNumbers()
{
    QCOMPARE(type2string(MatchType(6)) + type2string(MatchType(-1)), QString());
    QCOMPARE(func2string(MatchFunc(8)) + func2string(MatchFunc(-1)), QString());
    QCOMPARE(optionalFunctions(MatchType(6)), QList<int>());
}

void TestModel::windowNumbers()
{
    const QList<QPair<unsigned, unsigned>> rows = {
        {0,           0          },
        {2,           2          },
        {3,           4          },
        {1000,        1024       },
        {0x80000000u, 0x80000000u},
        {0x80000001u, 0          }
    };
    for (const auto& row : rows)
        QCOMPARE(fixedWindowNum(row.first), row.second);
}

void TestModel::shiftWidth()
{
    AoCore core(0);
    QCOMPARE(core.dataOutShiftWidth(), 16);

    core.captureSignals = {busOf("d", 12), signalOf("e"), busOf("f", 7)};
    QCOMPARE(core.dataOutShiftWidth(), 21); // 20 bits and the mark

    MatchUnit& unit = *core.matchUnits.at(5);
    unit.counterEnable = true;
    unit.counterWidth = 32;
    QCOMPARE(core.dataOutShiftWidth(), 21); // a disabled unit's counter does not count
    unit.enabled = true;
    QCOMPARE(core.dataOutShiftWidth(), 32);

    core.triggers.at(2)->signalList = {busOf("p", 30), signalOf("q"), signalOf("r"), signalOf("s")};
    QCOMPARE(core.dataOutShiftWidth(), 33);
}

void TestModel::flatPositions()
{
    AoCore core(0);
    QCOMPARE(core.signalItemAt(0).name, QString());
    core.captureSignals = {signalOf("s"), busOf("b", 4)};
    QCOMPARE(core.signalItemAt(0).name, QString("s"));
    QCOMPARE(core.signalItemAt(1).name, QString("b[3]"));
    QCOMPARE(core.signalItemAt(4).name, QString("b[0]"));
    for (int outside : {5, -1}) {
        const SignalItem none = core.signalItemAt(outside);
        QVERIFY(none.name.isEmpty() && none.hostFlag0 && none.captureEnable);
    }
    QCOMPARE(core.dataSignals(), QList<QString>({"s", "b[3]", "b[2]", "b[1]", "b[0]"}));
}

void TestModel::liteWalks()
{
    AOCore_Lite core;
    QVERIFY(core.dataSignals().isEmpty() && core.dataSignalsText().isEmpty());
    core.signalList = {busOf("b", 2), signalOf("s")};
    core.signalList[0].text = "never shown";
    core.signalList[0].subItems[1].text = "low";
    core.signalList[1].text = "S";
    QCOMPARE(core.dataSignals(), QList<QString>({"b[1]", "b[0]", "s"}));
    QCOMPARE(core.dataSignalsText(), QList<QString>({"", "low", "S"}));
}

// Its misspellings are the format's.
void TestModel::dumps()
{
    AoCore core(0);
    core.expressions = QStringList {"M0", "M1&M2"};
    core.triggers.at(1)->signalList = {busOf("p", 2)};
    core.triggers.at(3)->signalList = {signalOf("q")};
    core.matchUnits.at(2)->enabled = true;
    enableUnit(core, 4, 3, "1X");
    const QString text = dump(core);
    for (const char* line : {"Stroage Depth: 1024\n", "Trigger Expressions: M0, M1&M2\n",
             "Trigger Port: T1\n", "Singals: (p[1], p[0])\n", "Match Unit: M2\n", "Value0: 1X\n",
             "Bind: null\n", "Bind: 3\n"})
        QVERIFY2(text.contains(line), line);
    QVERIFY(!text.contains("T0\n") && !text.contains("M0\n"));

    AOCore_Lite lite;
    lite.signalList = {busOf("b", 2), signalOf("s")};
    QVERIFY(dump(lite).contains("Data Signals: b[1], b[0], s\n"));
}

QTEST_GUILESS_MAIN(TestModel)
#include "test_model.moc"
