// SPDX-License-Identifier: Apache-2.0
#include "oxa-editor/core.h"
#include "oxa-editor/expression_edit.h"
#include "oxa-editor/expression_marks.h"
#include "oxa-editor/signal_clipboard.h"
#include "oxa-editor/signal_editor.h"
#include "oxa-editor/signal_model.h"
#include "oxa-editor/signal_names.h"
#include "oxa-editor/truth_table.h"

#include "support/patience.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QTreeView>
#include <QtTest>

using namespace OXA;

namespace {

using Tester = QAbstractItemModelTester;

/// "a", "d(d[1] d[0])"
QString dump(const QList<SignalItem>& items)
{
    QStringList texts;
    for (const SignalItem& item : items)
        texts += item.isBus() ? QString("%1(%2)").arg(item.name, dump(item.subItems)) : item.name;
    return texts.join(' ');
}

QList<SignalItem> parsed(const QString& text)
{
    QStringList errors;
    return parseSignals(text, errors);
}

/// An editor that takes every change over, as a page does.
struct Driver {
    SignalEditor editor {true};
    Tester tester {editor.model(), Tester::FailureReportingMode::QtTest};

    explicit Driver(const QString& names)
    {
        editor.setItems(parsed(names));
        QObject::connect(&editor, &SignalEditor::edited, &editor,
            [this](const QList<SignalItem>& items) { editor.setItems(items); });
        editor.show();
        editor.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&editor, kPatience));
        editor.view()->setFocus();
    }

    /// Selects the rows of `names`, of buses' bits too.
    void select(const QStringList& names)
    {
        QItemSelectionModel* selection = editor.view()->selectionModel();
        selection->clear();
        for (const QString& name : names) {
            for (const QModelIndex& index : editor.model()->match(editor.model()->index(0, 0),
                     Qt::EditRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive)) {
                selection->setCurrentIndex(
                    index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
                editor.view()->expand(index);
            }
        }
    }

    void keys(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(editor.view(), key, modifiers);
    }

    QString text() const { return dump(editor.model()->items()); }

    QString selected() const
    {
        QStringList names;
        for (const QModelIndex& row : editor.view()->selectionModel()->selectedRows())
            names += editor.model()->itemAt(row)->name;
        return names.join(' ');
    }
};

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

class TestEditorPages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void names();
    void movedValues();
    void edits();
    void cells();
    void pasting();
    void dragging();
    void marks();
    void tables();
    void typing();
};

void TestEditorPages::names()
{
    const struct {
        const char *text, *items, *again;
    } rows[] = {
        {"a\n\n  top/b \r\nc",  "a top/b c",          "a\ntop/b\nc"},
        {"d[1:0]",              "d(d[1] d[0])",       "d[1:0]"     },
        {"d[0:1]",              "d(d[0] d[1])",       "d[0:1]"     },
        {"[9:8] x/d",           "x/d(x/d[9] x/d[8])", "x/d[9:8]"   },
        {"d [3:3]",             "d(d[3])",            "d[3:3]"     },
        {"d[3]",                "d[3]",               "d[3]"       }, // a bit is no bus
        {"a\x01\x1f_",          "a_",                 "a_"         },
        {"a\nd[999999999:0]",   "a",                  "a"          },
        {"a\nd[99999999999:0]", "a",                  "a"          },
    };
    for (const auto& row : rows) {
        QStringList errors;
        const QList<SignalItem> items = parseSignals(row.text, errors);
        QCOMPARE(dump(items), QString(row.items));
        QCOMPARE(signalsText(items), QString(row.again));
        QCOMPARE(errors.size(), int(QString(row.text).contains("999")));
    }
}

void TestEditorPages::movedValues()
{
    const char* const rows[][4] = {
        {"1R0", "a b c", "c a b", "01R"},
        {"1R0", "a b c", "a c",   "10" },
        {"10",  "a a",   "b a a", "X10"},
        {"1",   "a b",   "b a",   "10" }, // too short
        {"10R", "a b",   "b a",   "01" }, // too long
        {"",    "a b",   "a",     ""   },
    };
    const auto names = [](const char* text) { return QString(text).split(' '); };
    for (const auto& row : rows)
        QCOMPARE(movedValue(row[0], names(row[1]), names(row[2]), 'X'), QString(row[3]));
}

void TestEditorPages::edits()
{
    const struct {
        const char* selected;
        int key, modifiers;
        const char* result;
    } rows[] = {
        {"a e",       Qt::Key_Delete, 0,                                       "b d(d[1] d[0])"      },
        {"d[1]",      Qt::Key_Delete, 0,                                       "a b d(d[0]) e"       },
        {"d[1] d[0]", Qt::Key_Delete, 0,                                       "a b e"               },
        {"b d",       Qt::Key_Up,     Qt::AltModifier,                         "b d(d[1] d[0]) a e"  },
        {"a d",       Qt::Key_Down,   Qt::AltModifier,                         "b e a d(d[1] d[0])"  },
        {"e",         Qt::Key_Down,   Qt::AltModifier,                         "a b d(d[1] d[0]) e"  },
        {"d[0]",      Qt::Key_Up,     Qt::AltModifier,                         "a b d(d[0] d[1]) e"  },
        {"d[1]",      Qt::Key_Up,     Qt::AltModifier,                         "a b d(d[1] d[0]) e"  },
        {"b d",       Qt::Key_G,      Qt::ControlModifier,                     "a bus(b d[1] d[0]) e"},
        {"d e",       Qt::Key_G,      Qt::ControlModifier | Qt::ShiftModifier, "a b d[1] d[0] e"     },
    };
    for (const auto& row : rows) {
        Driver driver("a\nb\nd[1:0]\ne");
        driver.select(QString(row.selected).split(' '));
        driver.keys(Qt::Key(row.key), Qt::KeyboardModifiers(row.modifiers));
        QCOMPARE(driver.text(), QString(row.result));
    }
}

void TestEditorPages::cells()
{
    Driver driver("a\nd[1:0]");
    driver.select({"d"});
    driver.keys(Qt::Key_F2);
    auto* field = driver.editor.view()->findChild<QLineEdit*>();
    QVERIFY(field);
    QCOMPARE(field->text(), QString("d"));
    QTest::keyClicks(field, "data");
    QTest::keyClick(field, Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(driver.text(), QString("a data(d[1] d[0])"), kPatience);
    SignalModel& model = *driver.editor.model();
    const QModelIndex bus = model.index(1, 0);
    QVERIFY(!model.setData(bus, " \n ", Qt::EditRole));
    QVERIFY(model.setData(bus.siblingAtColumn(1), "shown", Qt::EditRole));
    QCOMPARE(model.items().last().text, QString("shown"));

    QVERIFY(model.setData(bus.siblingAtColumn(2), Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(bus.siblingAtColumn(2).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QVERIFY(!model.index(0, 2, bus).data(Qt::CheckStateRole).isValid());
    driver.select({"data"});
    driver.keys(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(model.items().at(0).captureEnable);
    QVERIFY(!model.items().at(1).captureEnable && !model.items().at(2).captureEnable);
}

void TestEditorPages::pasting()
{
    Driver driver("a\nb");
    SignalItem bus = parsed("d[1:0]").first();
    bus.captureEnable = false;
    bus.text = "shown";
    bus.subItems[0].text = "high";
    driver.editor.setItems({bus});
    driver.select({"d"});
    driver.keys(Qt::Key_C, Qt::ControlModifier);
    driver.editor.setItems(parsed("a\nb"));
    driver.select({"a"});
    driver.keys(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(driver.text(), QString("a d(d[1] d[0]) b"));
    QVERIFY(same(driver.editor.model()->items().at(1), bus));
    QApplication::clipboard()->setText("x\ny[1:0]");
    driver.keys(Qt::Key_V, Qt::ControlModifier); // behind what was pasted, which is selected
    QCOMPARE(driver.text(), QString("a d(d[1] d[0]) x y(y[1] y[0]) b"));
    driver.keys(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QString("x\ny[1:0]"));

    QMimeData broken;
    broken.setData("application/x-oxa-signals", QByteArray("\x7f\xff\xff\xff oops", 9));
    QStringList errors;
    fromMimeData(&broken, errors);
}

void TestEditorPages::dragging()
{
    Driver driver("a\nb\nd[1:0]\ne");
    SignalModel& model = *driver.editor.model();
    const auto drag = [&](const QModelIndexList& rows, int target, const QModelIndex& parent) {
        const std::unique_ptr<QMimeData> data(model.mimeData(rows));
        return model.dropMimeData(data.get(), Qt::MoveAction, target, 0, parent);
    };
    QVERIFY(drag({model.index(3, 0), model.index(0, 0)}, 2, {}));
    QCOMPARE(driver.text(), QString("b a e d(d[1] d[0])"));
    QCOMPARE(driver.selected(), QString("a e"));
    QVERIFY(drag({model.index(0, 0)}, -1, {}));
    QCOMPARE(driver.text(), QString("a e d(d[1] d[0]) b"));
    const QModelIndex bus = model.index(2, 0);
    QVERIFY(drag({model.index(1, 0, bus)}, 0, bus));
    QCOMPARE(driver.text(), QString("a e d(d[0] d[1]) b"));
    QCOMPARE(driver.selected(), QString("d[0]"));
    QVERIFY(!drag({model.index(0, 0, bus)}, 0, {}));
    QVERIFY(!drag({model.index(0, 0)}, 1, bus));
    const std::unique_ptr<QMimeData> foreign(SignalModel(true).mimeData({}));
    QVERIFY(!model.dropMimeData(foreign.get(), Qt::MoveAction, 0, 0, {}));
}

void TestEditorPages::marks()
{
    const struct {
        bool dynamic;
        const char *text, *marked; // the wrong pieces, marked by ^
    } rows[] = {
        {true,  "!(M0 & M9)|M3^M1",  "                " },
        {false, "~M0 && M1 || 1'B1", "                 "},
        {true,  "~M0 | 1'B1",        "^     ^^^^"       }, // not in tables
        {false, "M16|M|M0",          "^^^ ^   "         },
        {false, "M0|M12",            "   ^^^"           }, // a unit that is switched off
        {false, "M0 AND M1",         "   ^^^   "        },
        {false, "((M0|(M1)",         "^^       "        },
        {false, "M0)|M1)",           "  ^   ^"          },
    };
    for (const auto& row : rows) {
        const Units units(row.dynamic);
        QString marked(QString(row.text).size(), ' ');
        for (const ExpressionMark& mark : expressionMarks(row.text, units.core)) {
            QVERIFY(!mark.text.isEmpty());
            marked.replace(mark.start, mark.length, QString(mark.length, '^'));
        }
        QCOMPARE(marked, QString(row.marked));
    }
}

void TestEditorPages::tables()
{
    const struct {
        bool dynamic;
        const char *text, *results; // empty: there is no table
    } rows[] = {
        {true,  "M0|M1&M2",             "00011111"},
        {false, "!M3 && M7",            "0100"    }, // the first unit is the slowest
        {false, "1'B1",                 "1"       },
        {true,  "M0&",                  ""        },
        {true,  "M0|M1|M2|M3|M4|M5|M6", ""        }, // too many units
    };
    for (const auto& row : rows) {
        TruthTable table;
        const Tester tester(&table, Tester::FailureReportingMode::QtTest);
        table.setExpression(row.text, Units(row.dynamic).core);
        QString results;
        for (int i = 0; i < table.rowCount(); ++i)
            results += table.index(i, table.columnCount() - 1).data().toString();
        QCOMPARE(results, QString(row.results));
        QCOMPARE(table.reason().isEmpty(), !results.isEmpty());
    }
}

void TestEditorPages::typing()
{
    ExpressionEdit edit;
    edit.setUnits(Units(false).core);
    edit.show();
    edit.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&edit, kPatience));
    edit.setFocus();
    QSignalSpy typed(&edit, &ExpressionEdit::typed);
    QSignalSpy finished(&edit, &ExpressionEdit::finished);
    QTest::keyClicks(&edit, "match[3]&&!m");
    QCOMPARE(typed.last().first().toString(), QString("M3&&!M"));
    auto* popup = qobject_cast<QAbstractItemView*>(QApplication::activePopupWidget());
    QVERIFY(popup);
    QCOMPARE(popup->model()->rowCount(), 10);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
        QTest::keyClick(popup, key);
    QTest::keyClicks(&edit, "|m3");
    QVERIFY(!QApplication::activePopupWidget()); // M3 is complete
    QTest::keyClick(&edit, Qt::Key_Home);
    QTest::keyClicks(&edit, "!");
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(edit.toPlainText(), QString("!M3&&!M1|M3"));
    QCOMPARE(finished.size(), 1);
    QCOMPARE(normalizedExpression(QString("Match[3]\n\x01|m1")), QString("M3 |M1"));
}

QTEST_MAIN(TestEditorPages)
#include "test_editor_pages.moc"
