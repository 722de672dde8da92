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
    void newCoreHasItsPortsAndUnits();
    void displayTexts();
    void windowNumbers();
    void shiftWidth();
    void flatPositions();
    void liteWalks();
    void dumps();
};

void TestModel::newCoreHasItsPortsAndUnits()
{
    const AoCore core(7);
    QCOMPARE(core.index, 7);
    QCOMPARE(core.triggers.size(), 16);
    QCOMPARE(core.matchUnits.size(), 16);
    for (int i = 0; i < 16; ++i) {
        QCOMPARE(core.getTrigger(i), core.triggers.at(i));
        QCOMPARE(core.matchUnit(i), core.matchUnits.at(i));
        QCOMPARE(core.getTrigger(i)->core, &core);
        QCOMPARE(core.matchUnit(i)->core, &core);
    }
    QVERIFY(!core.getTrigger(16));
    QVERIFY(!core.matchUnit(-1));
    QVERIFY(core.availableTriggers().isEmpty());
    QVERIFY(core.enabledMatchUnits().isEmpty());

    core.triggers.at(9)->signalList += signalOf("a");
    core.matchUnits.at(4)->enabled = true;
    QCOMPARE(core.availableTriggers(), QList<TriggerPort*>({core.triggers.at(9)}));
    QCOMPARE(core.enabledMatchUnits(), QList<MatchUnit*>({core.matchUnits.at(4)}));
}

void TestModel::displayTexts()
{
    QCOMPARE(type2string(MatchType(1)), QString("Basic w/edges"));
    QCOMPARE(type2string(MatchType(6)), QString());
    QCOMPARE(type2string(MatchType(-1)), QString());
    QCOMPARE(func2string(MatchFunc(4)), QString(">="));
    QCOMPARE(func2string(MatchFunc(7)), QString("not in range"));
    QCOMPARE(func2string(MatchFunc(8)), QString());
    QCOMPARE(optionalFunctions(MatchType(1)), QList<int>({0, 1}));
    QCOMPARE(optionalFunctions(MatchType(2)), QList<int>({0, 1, 2, 3, 4, 5}));
    QCOMPARE(optionalFunctions(MatchType(5)), QList<int>({0, 1, 2, 3, 4, 5, 6, 7}));
    QCOMPARE(optionalFunctions(MatchType(6)), QList<int>());
}

void TestModel::windowNumbers()
{
    const QList<QPair<unsigned, unsigned>> rows = {
        {0,           0          },
        {1,           1          },
        {2,           2          },
        {3,           4          },
        {6,           8          },
        {16,          16         },
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

    core.matchUnits.at(3)->counterEnable = true;
    core.matchUnits.at(3)->counterWidth = 40;
    QCOMPARE(core.dataOutShiftWidth(), 21); // a disabled unit's counter does not count
    core.matchUnits.at(5)->enabled = true;
    core.matchUnits.at(5)->counterEnable = true;
    core.matchUnits.at(5)->counterWidth = 32;
    QCOMPARE(core.dataOutShiftWidth(), 32);

    core.triggers.at(2)->signalList = {busOf("p", 30), signalOf("q"), signalOf("r"), signalOf("s")};
    QCOMPARE(core.dataOutShiftWidth(), 33);
}

void TestModel::flatPositions()
{
    AoCore core(0);
    QCOMPARE(core.signalItemAt(0).name, QString());
    core.captureSignals = {busOf("b", 4), signalOf("s")};
    QCOMPARE(core.signalItemAt(0).name, QString("b[3]"));
    QCOMPARE(core.signalItemAt(3).name, QString("b[0]"));
    QCOMPARE(core.signalItemAt(4).name, QString("s"));
    for (int outside : {5, -1}) {
        const SignalItem none = core.signalItemAt(outside);
        QVERIFY(none.name.isEmpty() && none.hostFlag0 && none.hostFlag1 && none.captureEnable);
        QCOMPARE(none.hostValue, -1);
    }
    QCOMPARE(core.dataSignals(), QList<QString>({"b[3]", "b[2]", "b[1]", "b[0]", "s"}));
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

void TestModel::dumps()
{
    AoCore core(0);
    core.sampleClock = "clk";
    core.expressions = QStringList {"M0", "M1&M2"};
    core.triggers.at(1)->signalList = {busOf("p", 2)};
    core.matchUnits.at(2)->enabled = true;
    core.matchUnits.at(2)->value0 = "1X";
    const QString text = dump(core);
    for (const char* line :
        {"Sample Clock: clk\n", "Stroage Depth: 1024\n", "Trigger Expressions: M0, M1&M2\n",
            "force trigger by falling edge: false\n", "Trigger Port: T1\n",
            "Singals: (p[1], p[0])\n", "Match Unit: M2\n", "Value0: 1X\n", "Bind: null\n"})
        QVERIFY2(text.contains(line), line);
    QVERIFY(!text.contains("T0\n") && !text.contains("M0\n"));

    core.matchUnits.at(2)->trigger = core.triggers.at(1);
    QVERIFY(dump(core).contains("Bind: 1\n"));

    AOCore_Lite lite;
    lite.signalList = {busOf("b", 2), signalOf("s")};
    QVERIFY(dump(lite).contains("Data Signals: b[1], b[0], s\n"));
}

QTEST_GUILESS_MAIN(TestModel)
#include "test_model.moc"
