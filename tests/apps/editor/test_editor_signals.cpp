#include "oxa-editor/core.h"
#include "oxa-editor/signal_clipboard.h"
#include "oxa-editor/signal_editor.h"
#include "oxa-editor/signal_model.h"
#include "oxa-editor/signal_names.h"

#include "support/patience.h"
#include "support/rows.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QTreeView>

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
};

}

class TestEditorSignals : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void names_data();
    void names();
    void namesInTexts();
    void busTooWide();
    void movedValues_data();
    void movedValues();
    void clipboard();
    void edits_data();
    void edits();
    void renaming();
    void captureSwitch();
    void pasting();
    void dragging();
    void unchangedRowsStayExpanded();
};

struct NameRow {
    const char *what, *text, *items, *again;
};

constexpr NameRow kNames[] = {
    {"one a line",            "a\n\n  top/b \r\nc", "a top/b c",          "a\ntop/b\nc"},
    {"a bus",                 "d[1:0]",             "d(d[1] d[0])",       "d[1:0]"     },
    {"a bus upwards",         "d[0:1]",             "d(d[0] d[1])",       "d[0:1]"     },
    {"range in front",        "[9:8] x/d",          "x/d(x/d[9] x/d[8])", "x/d[9:8]"   },
    {"blank before a range",  "d [3:3]",            "d(d[3])",            "d[3:3]"     },
    {"a bit is no bus",       "d[3]",               "d[3]",               "d[3]"       },
    {"no control characters",
     "a\x01\x1f"
        "b",                                        "ab",                 "ab"         },
};

void TestEditorSignals::names_data() { addRows(kNames); }

void TestEditorSignals::names()
{
    const NameRow& row = rowOf(kNames);
    QCOMPARE(dump(parsed(row.text)), QString(row.items));
    QCOMPARE(signalsText(parsed(row.text)), QString(row.again));
}

void TestEditorSignals::namesInTexts()
{
    Driver driver("a\nb/a\nd[1:0]\na");
    const QList<QPair<QString, QString>> rows = {
        {"it captures \"a\" twice",   "a"   },
        {"what about b/a, and d[0]?", "b/a" },
        {"d[0] is a_name",            "d[0]"},
        {"nothing is here",           "d[0]"}
    };
    for (const auto& row : rows) {
        driver.editor.selectNamedIn(row.first);
        QCOMPARE(driver.editor.view()->currentIndex().data(Qt::EditRole).toString(), row.second);
    }
}

void TestEditorSignals::busTooWide()
{
    QStringList errors;
    QCOMPARE(dump(parseSignals("a\nd[999999999:0]\nd[99999999999:0]", errors)), QString("a"));
    QCOMPARE(errors.size(), 2);
}

struct ValueRow {
    const char *what, *value, *before, *after, *moved;
};

constexpr ValueRow kValues[] = {
    {"reordered",      "1R0", "a\nb\nc", "c\na\nb", "01R"},
    {"one less",       "1R0", "a\nb\nc", "a\nc",    "10" },
    {"twice the same", "10",  "a\na",    "b\na\na", "X10"},
    {"a short value",  "1",   "a\nb",    "b\na",    "10" },
    {"a long value",   "10R", "a\nb",    "b\na",    "01" },
    {"no value",       "",    "a\nb",    "a",       ""   },
};

void TestEditorSignals::movedValues_data() { addRows(kValues); }

void TestEditorSignals::movedValues()
{
    const ValueRow& row = rowOf(kValues);
    const auto names = [](const char* text) { return QString(text).split('\n'); };
    QCOMPARE(movedValue(row.value, names(row.before), names(row.after), 'X'), QString(row.moved));
}

void TestEditorSignals::clipboard()
{
    QList<SignalItem> items = parsed("a\nd[1:0]");
    items[0].captureEnable = false;
    items[1].text = "shown";
    items[1].subItems[0].text = "high";
    QStringList errors;
    const std::unique_ptr<QMimeData> whole(toMimeData(items));
    QVERIFY(same(fromMimeData(whole.get(), errors), items));
    QCOMPARE(whole->text(), QString("a\nd[1:0]"));
    QMimeData names;
    names.setText("x\ny");
    QCOMPARE(dump(fromMimeData(&names, errors)), QString("x y"));
    QMimeData broken;
    broken.setData("application/x-oxa-signals", QByteArray("\x7f\xff\xff\xff oops", 9));
    fromMimeData(&broken, errors);
}

struct EditRow {
    const char *what, *selected;
    int key, modifiers;
    const char* result;
};

// On "a", "b", "d[1:0]", "e".
constexpr EditRow kEdits[] = {
    {"remove signals",        "a e",       Qt::Key_Delete, 0,                                       "b d(d[1] d[0])"      },
    {"remove a bit",          "d[1]",      Qt::Key_Delete, 0,                                       "a b d(d[0]) e"       },
    {"remove all bits",       "d[1] d[0]", Qt::Key_Delete, 0,                                       "a b e"               },
    {"move up",               "b d",       Qt::Key_Up,     Qt::AltModifier,                         "b d(d[1] d[0]) a e"  },
    {"move down",             "a d",       Qt::Key_Down,   Qt::AltModifier,                         "b e a d(d[1] d[0])"  },
    {"not below the end",     "e",         Qt::Key_Down,   Qt::AltModifier,                         "a b d(d[1] d[0]) e"  },
    {"move a bit in its bus", "d[0]",      Qt::Key_Up,     Qt::AltModifier,                         "a b d(d[0] d[1]) e"  },
    {"not out of its bus",    "d[1]",      Qt::Key_Up,     Qt::AltModifier,                         "a b d(d[1] d[0]) e"  },
    {"group",                 "b d",       Qt::Key_G,      Qt::ControlModifier,                     "a bus(b d[1] d[0]) e"},
    {"ungroup",               "d e",       Qt::Key_G,      Qt::ControlModifier | Qt::ShiftModifier, "a b d[1] d[0] e"     },
};

void TestEditorSignals::edits_data() { addRows(kEdits); }

void TestEditorSignals::edits()
{
    const EditRow& row = rowOf(kEdits);
    Driver driver("a\nb\nd[1:0]\ne");
    driver.select(QString(row.selected).split(' '));
    driver.keys(Qt::Key(row.key), Qt::KeyboardModifiers(row.modifiers));
    QCOMPARE(driver.text(), QString(row.result));
}

void TestEditorSignals::renaming()
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
    QVERIFY(!model.setData(model.index(0, 0), " \n ", Qt::EditRole));
    QVERIFY(model.setData(model.index(0, 1), "shown", Qt::EditRole));
    QCOMPARE(model.items().first().text, QString("shown"));
}

void TestEditorSignals::captureSwitch()
{
    Driver driver("a\nd[1:0]");
    SignalModel& model = *driver.editor.model();
    QVERIFY(model.setData(model.index(1, 2), Qt::Unchecked, Qt::CheckStateRole));
    QVERIFY(!model.items().at(1).captureEnable);
    QCOMPARE(model.index(1, 2).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QVERIFY(!model.index(0, 2, model.index(1, 0)).data(Qt::CheckStateRole).isValid());
    driver.select({"d"});
    driver.keys(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(model.items().at(0).captureEnable);
    QVERIFY(!model.items().at(1).captureEnable);
    QVERIFY(!model.items().at(2).captureEnable);
}

void TestEditorSignals::pasting()
{
    Driver driver("a\nb");
    driver.select({"a"});
    QApplication::clipboard()->setText("x\ny[1:0]");
    driver.keys(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(driver.text(), QString("a x y(y[1] y[0]) b"));
    driver.keys(Qt::Key_C, Qt::ControlModifier); // what was pasted is selected
    QCOMPARE(QApplication::clipboard()->text(), QString("x\ny[1:0]"));
}

void TestEditorSignals::dragging()
{
    Driver driver("a\nb\nd[1:0]\ne");
    SignalModel& model = *driver.editor.model();
    const auto drag = [&](const QModelIndexList& rows, int target, const QModelIndex& parent) {
        const std::unique_ptr<QMimeData> data(model.mimeData(rows));
        return model.dropMimeData(data.get(), Qt::MoveAction, target, 0, parent);
    };
    QVERIFY(drag({model.index(3, 0), model.index(0, 0)}, 2, {}));
    QCOMPARE(driver.text(), QString("b a e d(d[1] d[0])"));
    QVERIFY(drag({model.index(0, 0)}, -1, {}));
    QCOMPARE(driver.text(), QString("a e d(d[1] d[0]) b"));
    const QModelIndex bus = model.index(2, 0);
    QVERIFY(drag({model.index(1, 0, bus)}, 0, bus));
    QCOMPARE(driver.text(), QString("a e d(d[0] d[1]) b"));
    QVERIFY(!drag({model.index(0, 0, bus)}, 0, {}));
    QVERIFY(!drag({model.index(0, 0)}, 1, bus));
    SignalModel other(true);
    const std::unique_ptr<QMimeData> foreign(other.mimeData({}));
    QVERIFY(!model.dropMimeData(foreign.get(), Qt::MoveAction, 0, 0, {}));
}

void TestEditorSignals::unchangedRowsStayExpanded()
{
    Driver driver("a\nd[1:0]\ne");
    QTreeView& view = *driver.editor.view();
    view.expandAll();
    driver.editor.setItems(parsed("x\na\nd[1:0]\ne"));
    QVERIFY(view.isExpanded(driver.editor.model()->index(2, 0)));
    driver.editor.setItems(parsed("d[1:0]"));
    QVERIFY(view.isExpanded(driver.editor.model()->index(0, 0)));
    driver.editor.setItems({});
    QCOMPARE(driver.editor.model()->rowCount(), 0);
}

QTEST_MAIN(TestEditorSignals)
#include "test_editor_signals.moc"
