#include "oxautils/editor/oxautils_common.h"

#include "support/rows.h"
#include "support/signals.h"

#include <QTreeWidget>

using namespace OXA;

class TestSignalTree : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rows();
    void widths();
    void radixes_data();
    void radixes();
};

void TestSignalTree::rows()
{
    SignalItem bus = busOf("d", 2);
    bus.text = "data";
    bus.subItems[0].text = "high";

    QTreeWidget tree;
    Signal2treeItem(&tree, bus);
    Signal2treeItem(&tree, signalOf("we"));
    const QTreeWidgetItem* busRow = tree.topLevelItem(0);
    QCOMPARE(busRow->text(0), QString("data"));
    QCOMPARE(busRow->child(0)->text(0), QString("high"));
    QCOMPARE(busRow->child(1)->text(0), QString("d[0]"));
    QCOMPARE(tree.topLevelItem(1)->text(0), QString("we"));
    QCOMPARE(tree.topLevelItem(1)->childCount(), 0);
}

void TestSignalTree::widths()
{
    QCOMPARE(BitWidthAdjust("10110", 3), QString("110"));
    QCOMPARE(BitWidthAdjust("1", 4), QString("0001"));
    QCOMPARE(BitWidthAdjust("101", 0), QString());
    QCOMPARE(BitWidthAdjust("101", -1), QString());
    QVERIFY(checkExcessBitWidth("1010", 4));
    QVERIFY(!checkExcessBitWidth("10101", 4));
}

struct RadixRow {
    const char *what, *value;
    int from, to, width;
    const char* result;
};

constexpr RadixRow kRadixes[] = {
    {"to binary",                     "ff",                   16, 2,  4, "11111111"        },
    {"leading zeros go",              "0001",                 2,  16, 4, "1"               },
    {"lower-case digits",             "255",                  10, 16, 2, "ff"              },
    {"64 bits",                       "18446744073709551615", 10, 16, 3, "ffffffffffffffff"},
    {"65 bits",                       "18446744073709551616", 10, 16, 3, "000"             },
    {"a letter that is no digit",     "1X0",                  2,  16, 3, "000"             },
    {"a digit that the base has not", "19",                   8,  2,  6, "000000"          },
    {"nothing",                       "",                     2,  10, 5, "00000"           },
};

void TestSignalTree::radixes_data() { addRows(kRadixes); }

void TestSignalTree::radixes()
{
    const RadixRow& row = rowOf(kRadixes);
    QCOMPARE(changeRadix(row.value, row.from, row.to, row.width), QString(row.result));
}

QTEST_MAIN(TestSignalTree)
#include "test_signal_tree.moc"
