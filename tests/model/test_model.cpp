// SPDX-License-Identifier: Apache-2.0
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
    void windowNumbers();
    void shiftWidth();
    void flatPositions();
    void liteTexts();
    void dumps();
};

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

void TestModel::liteTexts()
{
    AOCore_Lite core;
    core.signalList = {busOf("b", 2), signalOf("s")};
    core.signalList[0].text = "never shown";
    core.signalList[0].subItems[1].text = "low";
    core.signalList[1].text = "S";
    QCOMPARE(core.dataSignalsText(), QList<QString>({"", "low", "S"}));
}

// For the debug log, whose misspellings stay.
void TestModel::dumps()
{
    AoCore core(0);
    core.triggers.at(3)->signalList = {busOf("p", 2)};
    core.matchUnits.at(2)->enabled = true;
    enableUnit(core, 4, 3, "1X");
    const QString text = dump(core);
    for (const char* line :
        {"Stroage Depth: 1024\n", "Trigger Port: T3\n", "Singals: (p[1], p[0])\n",
            "Match Unit: M2\n", "Value0: 1X\n", "Bind: null\n", "Bind: 3\n"})
        QVERIFY2(text.contains(line), line);
    QVERIFY(!text.contains("T0\n") && !text.contains("M0\n"));
}

QTEST_GUILESS_MAIN(TestModel)
#include "test_model.moc"
