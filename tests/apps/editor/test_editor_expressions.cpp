#include "oxa-editor/expression_edit.h"
#include "oxa-editor/expression_marks.h"
#include "oxa-editor/truth_table.h"

#include "support/patience.h"
#include "support/rows.h"

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QApplication>

using namespace OXA;

namespace {

/// A core whose units 0 to 9 are switched on.
struct Units {
    AoCore core {0};

    explicit Units(bool dynamic)
    {
        core.expressionType = dynamic;
        for (int i = 0; i < 10; ++i)
            core.matchUnits.at(i)->enabled = true;
    }
};

}

class TestEditorExpressions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void marks_data();
    void marks();
    void normalizing();
    void tables_data();
    void tables();
    void typing();
    void completion();
};

struct MarkRow {
    const char *what, *text;
    bool dynamic;
    const char* marked; // the wrong pieces, marked by ^
};

constexpr MarkRow kMarks[] = {
    {"nothing wrong",       "!(M0 & M9)|M3^M1",  true,  "                " },
    {"Verilog's operators", "~M0 && M1 || 1'B1", false, "                 "},
    {"not in tables",       "~M0 | 1'B1",        true,  "^     ^^^^"       },
    {"unknown units",       "M16|M|M0",          false, "^^^ ^   "         },
    {"a unit switched off", "M0|M12",            false, "   ^^^"           },
    {"foreign text",        "M0 AND M1",         false, "   ^^^   "        },
    {"open parentheses",    "((M0|(M1)",         false, "^^       "        },
    {"closed too often",    "M0)|M1)",           false, "  ^   ^"          },
};

void TestEditorExpressions::marks_data() { addRows(kMarks); }

void TestEditorExpressions::marks()
{
    const MarkRow& row = rowOf(kMarks);
    const Units units(row.dynamic);
    QString marked(QString(row.text).size(), ' ');
    for (const ExpressionMark& mark : expressionMarks(row.text, units.core)) {
        QVERIFY(!mark.text.isEmpty());
        marked.replace(mark.start, mark.length, QString(mark.length, '^'));
    }
    QCOMPARE(marked, QString(row.marked));
}

void TestEditorExpressions::normalizing()
{
    QCOMPARE(normalizedExpression("match[3] && Match[12]\n"), QString("M3 && M12 "));
    QCOMPARE(normalizedExpression(QString("m0\x01|m1")), QString("M0|M1"));
}

struct TableRow {
    const char *what, *text;
    bool dynamic;
    const char* results; // empty: there is no table
};

constexpr TableRow kTables[] = {
    {"and binds tighter than or", "M0|M1&M2",             true,  "00011111"},
    {"the first is the slowest",  "!M3 && M7",            false, "0100"    },
    {"no units",                  "1'B1",                 false, "1"       },
    {"not to the end",            "M0&",                  true,  ""        },
    {"too many",                  "M0|M1|M2|M3|M4|M5|M6", true,  ""        },
};

void TestEditorExpressions::tables_data() { addRows(kTables); }

void TestEditorExpressions::tables()
{
    const TableRow& row = rowOf(kTables);
    const Units units(row.dynamic);
    TruthTable table;
    const QAbstractItemModelTester tester(
        &table, QAbstractItemModelTester::FailureReportingMode::QtTest);
    table.setExpression(row.text, units.core);
    QString results;
    for (int i = 0; i < table.rowCount(); ++i)
        results += table.index(i, table.columnCount() - 1).data().toString();
    QCOMPARE(results, QString(row.results));
    QCOMPARE(table.reason().isEmpty(), !results.isEmpty());
}

void TestEditorExpressions::typing()
{
    ExpressionEdit edit;
    edit.show();
    QSignalSpy typed(&edit, &ExpressionEdit::typed);
    QSignalSpy finished(&edit, &ExpressionEdit::finished);
    QTest::keyClicks(&edit, "match[3]&&m1");
    QCOMPARE(edit.toPlainText(), QString("M3&&M1"));
    QCOMPARE(typed.last().first().toString(), QString("M3&&M1"));
    QTest::keyClick(&edit, Qt::Key_Home);
    QTest::keyClicks(&edit, "!");
    QCOMPARE(edit.toPlainText(), QString("!M3&&M1"));
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(edit.toPlainText(), QString("!M3&&M1"));
    QCOMPARE(finished.size(), 1);
}

void TestEditorExpressions::completion()
{
    const Units units(false);
    ExpressionEdit edit;
    edit.setUnits(units.core);
    edit.show();
    edit.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&edit, kPatience));
    edit.setFocus();
    QTest::keyClicks(&edit, "!m");
    auto* popup = qobject_cast<QAbstractItemView*>(QApplication::activePopupWidget());
    QVERIFY(popup);
    QCOMPARE(popup->model()->rowCount(), 10);
    QTest::keyClick(popup, Qt::Key_Down);
    QTest::keyClick(popup, Qt::Key_Down);
    QTest::keyClick(popup, Qt::Key_Return);
    QCOMPARE(edit.toPlainText(), QString("!M1"));
    QTest::keyClicks(&edit, "|m3");
    QVERIFY(!QApplication::activePopupWidget()); // M3 is complete
}

QTEST_MAIN(TestEditorExpressions)
#include "test_editor_expressions.moc"
