// SPDX-License-Identifier: Apache-2.0
#include "oxautils/editor/match_unit_model.h"
#include "oxautils/model/ao_core.h"

#include <QAbstractItemModelTester>
#include <QColor>
#include <QtTest>

using namespace OXA;

class TestMatchUnitModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cells();
    void switching();

private:
    const AoCore m_core {0};
};

void TestMatchUnitModel::cells()
{
    MatchUnit& bound = *m_core.matchUnits.at(11);
    bound.enabled = true;
    bound.trigger = m_core.getTrigger(11);
    bound.matchType = MatchRangeEdges;
    bound.matchFunc = MatchNotInRange;
    bound.counterEnable = true;
    bound.counter = 16;
    bound.value0 = "1F";
    bound.value1 = "2A";

    MatchUnitModel model(m_core.matchUnits);
    QCOMPARE(model.rowCount(), 10); // the constructor takes no more
    model.setMatcherList(m_core.matchUnits);
    QCOMPARE(model.rowCount(), 16);
    const auto texts = [&model](int row) {
        QStringList texts;
        for (int column = 0; column < model.columnCount(); ++column)
            texts += model.index(row, column).data().toString();
        return texts.join('|');
    };
    QCOMPARE(texts(11), QString("M11|M11|Trigger 11|Range w/edges|not in range|16|1F : 2A"));
    QCOMPARE(texts(4), QString("M4|M4|NONE|Basic|==|Disabled|"));
    bound.matchFunc = MatchGreater;
    QCOMPARE(texts(11), QString("M11|M11|Trigger 11|Range w/edges|>|16|1F"));
    for (const int row : {11, 4}) {
        const bool on = row == 11;
        const QVariant color = on ? QVariant() : QColor(Qt::gray);
        QCOMPARE(model.index(row, 3).data(Qt::ForegroundRole), color);
        QCOMPARE(model.index(row, 0).data(Qt::CheckStateRole).toInt(), on ? 2 : 0);
        QVERIFY(!model.index(row, 1).data(Qt::CheckStateRole).isValid());
    }
}

void TestMatchUnitModel::switching()
{
    MatchUnitModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setMatcherList(m_core.matchUnits);
    QStringList order;
    connect(&model, &MatchUnitModel::dataChanged, this,
        [&](const QModelIndex& first, const QModelIndex& last) {
            QCOMPARE(first, model.index(5, 0));
            QCOMPARE(last, model.index(5, 6));
            order += "dataChanged";
        });
    connect(&model, &MatchUnitModel::matchChange, this, [&] { order += "matchChange"; });
    connect(&model, &MatchUnitModel::modified, this, [&] { order += "modified"; });
    QVERIFY(!model.setData(model.index(5, 1), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(!model.setData(model.index(5, 0), true, Qt::EditRole));
    QVERIFY(order.isEmpty());
    QVERIFY(model.setData(model.index(5, 0), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(MatchUnitModel::muFromIndex(model.index(5, 3))->enabled);
    QCOMPARE(order, QStringList({"dataChanged", "matchChange", "modified"}));
}

QTEST_MAIN(TestMatchUnitModel)
#include "test_match_unit_model.moc"
