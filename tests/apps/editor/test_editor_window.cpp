// SPDX-License-Identifier: Apache-2.0
#include "window_driver.h"

#include "oxa-editor/core_list.h"
#include "oxa-editor/cost_panel.h"
#include "oxa-editor/design/design_tree.h"
#include "oxa-editor/expression_edit.h"
#include "oxa-editor/part_choice.h"
#include "oxa-editor/problems_panel.h"
#include "oxa-editor/recent_files.h"

#include "oxautils/editor/match_unit_dialog.h"
#include "oxautils/encoding/events_text.h"
#include "oxautils/encoding/storage_text.h"

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QListWidget>
#include <QMimeData>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QTreeView>

using namespace OXA;

class TestEditorWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void editsOfEveryPageCanBeUndone();
    void editsOfLiteFilesCanBeUndone();
    void coresAreListed();
    void unitsAreEditedInTheDialog();
    void typingIsOneStep();
    void badFilesLeaveTheOldOne();
    void renamedSignalsStayWatched();
    void warningsOfFiles();
    void changesAreNotLost();
    void saveAs();
    void fileChangedByOthers();
    void droppedAndRecentFiles();
    void problemsLeadToTheirPlace();
    void costOnAPart();
    void signalsOfTheDesign();

private:
    TestFolder m_folder;
};

namespace {

constexpr char kExpressions[] = "Expressions in the order of the trigger sequence";

/// Edits something on every page of a Standard configuration, by keys and mouse.
void editEveryPage(WindowDriver& driver)
{
    driver.keys("Ctrl+1");
    driver.enter("Sample clock:", "top/clk2");
    driver.enter("Capture amount:", "128");
    driver.keyIn("Storage depth:", Qt::Key_Up);
    driver.keyIn("Edge:", Qt::Key_Down);
    driver.keyIn("Armed at power-up", Qt::Key_Space);
    driver.keyIn("Stored:", Qt::Key_Down);
    auto* watch = driver.find<QLineEdit>("Changes of:");
    QTest::keyClicks(watch, "uart_tx/busy STAT");
    QCOMPARE(watch->completer()->completionCount(), 3); // the bus, and its bits
    watch->completer()->popup()->hide();
    watch->setText(" uart_tx/busy  uart_tx/state ");
    QTest::keyClick(watch, Qt::Key_Return);
    QCOMPARE(OXA::storageText(driver.core().storage),
        QString("changes of uart_tx/busy uart_tx/state, gap 16"));
    driver.keyIn("Stored:", Qt::Key_Down);
    QTest::keyClicks(driver.find<ExpressionEdit>("Stored when"), "m1&!m2");
    driver.enter("Gap:", "9");
    driver.enter("Window ends:", "4294967295");
    driver.keyIn("Trigger output", Qt::Key_Space);
    driver.keyIn("Stamps", Qt::Key_Space);

    driver.keys("Ctrl+2");
    auto* signalTree = driver.find<QTreeView>("Signals");
    signalTree->setCurrentIndex(signalTree->model()->index(2, 0));
    QTest::keyClick(signalTree, Qt::Key_Up, Qt::AltModifier);
    QTest::keyClick(signalTree, Qt::Key_Delete);

    driver.keys("Ctrl+3");
    auto* portTree = driver.find<QTreeView>("Signals");
    portTree->setFocus();
    portTree->setCurrentIndex(portTree->model()->index(0, 0));
    QTest::keyClick(portTree, Qt::Key_Down, Qt::AltModifier);

    driver.keys("Ctrl+4");
    driver.keyIn("Match units", Qt::Key_Space);

    driver.keys("Ctrl+5");
    driver.keyIn("Expressions:", Qt::Key_Down);
    driver.keyIn("Tables in:", Qt::Key_Down);
    driver.press("Add");
    QTest::keyClicks(driver.find<ExpressionEdit>("Expression:"), "m1&!m2");
    auto* list = driver.find<QListWidget>(kExpressions);
    driver.press("Down");
    list->model()->moveRow({}, 0, {}, 2); // as dragging does
    QTRY_COMPARE_WITH_TIMEOUT(driver.core().expressions.first(), QString("M1 && M2"), kPatience);

    driver.press("Add a copy of the core");
    driver.keys("Ctrl+1");
    driver.keyIn("Forced by Core 0, top/clk2", Qt::Key_Space);
    driver.press("Move the core up");
}

/// Undoes and does again what was edited since `before`, the content of the file `path`.
void undoAndRedo(WindowDriver& driver, const QString& path, const QByteArray& before)
{
    driver.keys("Ctrl+S");
    const QByteArray after = bytesOf(path);
    QVERIFY(after != before);
    QVERIFY(!driver.window.isWindowModified());
    while (driver.document().undoStack().canUndo())
        driver.keys("Ctrl+Z");
    QVERIFY(driver.window.isWindowModified());
    driver.keys("Ctrl+S");
    QCOMPARE(bytesOf(path), before);
    while (driver.document().undoStack().canRedo())
        driver.keys("Ctrl+Shift+Z");
    driver.keys("Ctrl+S");
    QCOMPARE(bytesOf(path), after);
}

}

void TestEditorWindow::editsOfEveryPageCanBeUndone()
{
    const QString path = m_folder.example("uart.oxa");
    WindowDriver driver(path);
    driver.core().index = 3; // other than its place, which an edit of the list makes it
    driver.keys("Ctrl+S");
    const QByteArray before = bytesOf(path);
    editEveryPage(driver);
    const AoCore& core = driver.core(1);
    QCOMPARE(core.sampleClock, QString("top/clk2"));
    QCOMPARE(core.storageDepth, 2048);
    QCOMPARE(core.captureAmount, 128);
    QCOMPARE(core.trigType, 1);
    QVERIFY(core.captureInitDataEnabled);
    QCOMPARE(OXA::storageText(core.storage), QString("when M1&!M2, gap 9, limit 4294967295"));
    QCOMPARE(core.signalList.at(1).name, QString("uart_tx/tx"));
    QCOMPARE(core.dataSignals().size(), 16);
    QCOMPARE(core.getTrigger(0)->signalList.at(1).name, QString("uart_tx/start"));
    QCOMPARE(core.matchUnit(0)->value0, QString("01000110R")); // moved with its signals
    QVERIFY(!core.matchUnit(0)->enabled);
    QCOMPARE(core.expressions, QStringList({"M1 && M2", "M0", "M1&!M2"}));
    QCOMPARE(core.expressionType, 1);
    QCOMPARE(core.exImplementation, 1);
    QCOMPARE(core.index, 1);
    QCOMPARE(OXA::eventsText({&driver.core(), &driver.core(1)}, driver.core()),
        QString("forced by 1; trigger out; stamps"));
    QCOMPARE(OXA::eventsText({&driver.core()}, driver.core()),
        QString("forced by unknown index 1; trigger out; stamps"));
    undoAndRedo(driver, path, before);
}

void TestEditorWindow::renamedSignalsStayWatched()
{
    WindowDriver driver(m_folder.example("uart.oxa"));
    OXA::CoreStorage& storage = driver.core().storage;
    storage.keep = OXA::CoreStorage::Changes;
    const QStringList before {"uart_tx/data[7]", "uart_tx/state"};
    storage.watch = before;
    driver.keys("Ctrl+2");
    auto* tree = driver.find<QTreeView>("Signals");
    QAbstractItemModel& model = *tree->model();
    const auto named = [&model](const char* name) {
        return model
            .match(model.index(0, 0), Qt::EditRole, QString(name), 1,
                Qt::MatchExactly | Qt::MatchRecursive | Qt::MatchWrap)
            .value(0);
    };
    QVERIFY(model.setData(named("uart_tx/state"), "phase", Qt::EditRole));
    QVERIFY(model.setData(named("uart_tx/data[7]"), "high", Qt::EditRole));
    const QStringList renamed {"high", "phase"};
    QCOMPARE(storage.watch, renamed);
    tree->setCurrentIndex(named("phase"));
    QTest::keyClick(tree, Qt::Key_Up, Qt::AltModifier); // a move renames nothing
    QTest::keyClick(tree, Qt::Key_Delete); // the check reports it
    QCOMPARE(storage.watch, renamed);
    for (int step = 0; step < 4; ++step)
        driver.keys("Ctrl+Z");
    QCOMPARE(storage.watch, before);
    QVERIFY(!driver.document().undoStack().canUndo());
}

void TestEditorWindow::editsOfLiteFilesCanBeUndone()
{
    const QString path = m_folder.example("uart_lite.oxa");
    WindowDriver driver(path);
    driver.keys("Ctrl+S");
    const QByteArray before = bytesOf(path);
    driver.enter("Module:", "other");
    driver.keyIn("Capture amount:", Qt::Key_Up);
    driver.keyIn("Memory:", Qt::Key_Down);
    driver.keyIn("Register before the memory", Qt::Key_Space);
    driver.press("Add a core");
    undoAndRedo(driver, path, before);
    QVERIFY(bytesOf(path).contains("module_name=\"other\""));
}

void TestEditorWindow::coresAreListed()
{
    WindowDriver driver;
    driver.keys("Ctrl+N");
    driver.press("Add a core"); // one is there
    auto* list = driver.find<QListWidget>("Cores");
    driver.keys("Ctrl+0");
    QTest::keyClick(list, Qt::Key_F2);
    auto* field = list->findChild<QLineEdit*>();
    QVERIFY(field);
    QTest::keyClicks(field, "named");
    QTest::keyClick(field, Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(!list->findChild<QLineEdit*>(), kPatience);
    const auto modules = [&] {
        QStringList texts;
        for (const CorePtr& core : driver.document().cores())
            texts += QString("%1:%2%3").arg(QString::number(core->index()), core->moduleName(),
                OXA::indexesText(core->standard->events.forcedBy));
        return texts.join(' ');
    };
    driver.keyIn("Forced by Core 0", Qt::Key_Space);
    QCOMPARE(modules(), QString("0: 1:named0"));
    list->model()->moveRow({}, 0, {}, 2); // as dragging does
    QTRY_COMPARE_WITH_TIMEOUT(modules(), QString("0:named1 1:"), kPatience);
    QVERIFY(list->item(0)->text().endsWith(" named"));
    list->setCurrentRow(1);
    QTest::keyClick(list, Qt::Key_Delete);
    QCOMPARE(modules(), QString("0:named"));
    driver.press("Remove the core");
    QCOMPARE(modules(), QString());
    QVERIFY(!driver.window.findChild<QTabWidget*>()->isVisible());
}

void TestEditorWindow::unitsAreEditedInTheDialog()
{
    WindowDriver driver(m_folder.example("uart.oxa"));
    driver.keys("Ctrl+4");
    auto* units = driver.find<QTableView>("Match units");
    const auto inDialog = [&](int port, Qt::Key key) { // chooses the port
        driver.inModal<MatchUnitDialog>(
            [&](MatchUnitDialog* dialog) {
                dialog->findChild<QComboBox*>("comboBoxTrigger")->setCurrentIndex(port);
                dialog->onTriggerChanged();
                QTest::keyClick(dialog, key);
                return true;
            },
            [&] { QTest::keyClick(units, Qt::Key_Return); });
    };
    units->selectRow(9);
    const MatchUnit& unit = *driver.core().matchUnit(9);
    inDialog(1, Qt::Key_Escape);
    inDialog(-1, Qt::Key_Return);
    QVERIFY(!driver.document().isModified() && !unit.enabled);
    inDialog(1, Qt::Key_Return);
    QVERIFY(unit.enabled); // its first port switches it on
    QCOMPARE(unit.trigger, driver.core().getTrigger(1));
    QCOMPARE(units->model()->index(9, 2).data().toString(), QString("Trigger 1"));
    driver.keys("Ctrl+Z");
    QCOMPARE(units->model()->index(9, 2).data().toString(), QString("NONE"));
    QTest::keyClick(units, Qt::Key_Home);
    QCOMPARE(units->currentIndex().row(), 0);

    // HEX has no edges.
    const auto inHex = [&](QMessageBox::StandardButton answer) {
        QString question;
        driver.inModal<MatchUnitDialog>(
            [&](MatchUnitDialog* dialog) {
                dialog->findChild<QRadioButton*>("rbtnHex")->click();
                question
                    = driver.answering(answer, [&] { QTest::keyClick(dialog, Qt::Key_Return); });
                dialog->hide();
                return true;
            },
            [&] { QTest::keyClick(units, Qt::Key_Return); });
        return question;
    };
    const QString value = driver.core().matchUnit(0)->value0;
    QVERIFY(inHex(QMessageBox::No).contains("R becomes 0"));
    QCOMPARE(driver.core().matchUnit(0)->value0, value);
    QVERIFY(inHex(QMessageBox::Yes).contains("R becomes 0"));
    QVERIFY(driver.core().matchUnit(0)->value0 != value);
    driver.keys("Ctrl+Z");
    QCOMPARE(driver.core().matchUnit(0)->value0, value);

    for (const int port : {1, 2}) // the only port is chosen
        driver.core().getTrigger(port)->signalList.clear();
    units->selectRow(9);
    driver.inModal<MatchUnitDialog>(
        [](MatchUnitDialog* dialog) {
            QTest::keyClick(dialog, Qt::Key_Return);
            return true;
        },
        [&] { QTest::keyClick(units, Qt::Key_Return); });
    QCOMPARE(unit.trigger, driver.core().getTrigger(0));
}

void TestEditorWindow::typingIsOneStep()
{
    WindowDriver driver(m_folder.example("uart.oxa"));
    driver.keys("Ctrl+5");
    auto* edit = driver.find<ExpressionEdit>("Expression:");
    QUndoStack& stack = driver.document().undoStack();
    edit->setFocus();
    QTest::keyClicks(edit, "|m1|m2");
    QCOMPARE(driver.core().expressions.first(), QString("M0|M1|M2"));
    QCOMPARE(stack.count(), 1);
    driver.find<QListWidget>(kExpressions)->setCurrentRow(1);
    QTest::keyClicks(edit, "|m0");
    QCOMPARE(stack.count(), 2);
    driver.keys("Ctrl+Z");
    QCOMPARE(driver.core().expressions, QStringList({"M0|M1|M2", "M1 && M2"}));
    driver.keys("Ctrl+Z");
    QCOMPARE(edit->toPlainText(), QString("M0"));

    driver.keys("Ctrl+1");
    for (int i = 0; i < 5; ++i)
        driver.keyIn("Trigger position:", Qt::Key_Up);
    QCOMPARE(driver.core().triggerPos, 37);
    QCOMPARE(stack.count(), 1);
    driver.keys("Ctrl+2");
    driver.keys("Ctrl+Z");
    QCOMPARE(driver.core().triggerPos, 32);
    QCOMPARE(driver.page(), QString("Capture")); // where it was edited

    auto* amount = driver.find<QSpinBox>("Capture amount:");
    const int before = amount->value();
    driver.enter("Capture amount:", "128");
    amount->setFocus();
    QTest::keyClick(amount, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(driver.core().captureAmount, before);
    QTest::keyClicks(amount, "7");
    QTest::keyClick(amount, Qt::Key_Z, Qt::ControlModifier); // only what is being typed
    QCOMPARE(amount->cleanText(), QString::number(before));
    QVERIFY(stack.canRedo());
}

void TestEditorWindow::badFilesLeaveTheOldOne()
{
    WindowDriver driver(m_folder.example("uart.oxa"));
    writeFile(m_folder.path("bad.oxa"), "<OXA_CONFIG>\n<Version>3.0</Version>");
    for (const char* name : {"bad.oxa", "none.oxa"}) {
        const QString text = driver.answering(
            QMessageBox::Ok, [&] { QVERIFY(!driver.window.open(m_folder.path(name))); });
        QVERIFY2(text.contains(name), qPrintable(text));
        QCOMPARE(driver.core().moduleName, QString("uart_tx"));
    }
}

void TestEditorWindow::warningsOfFiles()
{
    const QString path = m_folder.example("uart.oxa");
    const QByteArray bytes = bytesOf(path);
    const int trigger = bytes.indexOf("<Trigger ");
    const int behind = bytes.indexOf("<SignalList", trigger) + int(strlen("<SignalList"));
    writeFile(path,
        QByteArray(bytes)
            .insert(behind, " capture_from_trigger=\"1\"")
            .replace("=\"1024\"", "=\"2048\""));
    WindowDriver driver(path);
    QVERIFY2(driver.message().contains("checksum"), qPrintable(driver.message()));
    QVERIFY(driver.message().contains("older layout"));
    QVERIFY(driver.window.isWindowModified());
    driver.keys("Ctrl+S");
    QCOMPARE(driver.message(), QString());
    QVERIFY(driver.window.open(path));
    QCOMPARE(driver.message(), QString());
    QCOMPARE(driver.core().dataSignals().size(), 17 + 9);
}

void TestEditorWindow::changesAreNotLost()
{
    const QString path = m_folder.example("uart.oxa");
    const QByteArray before = bytesOf(path);
    WindowDriver driver(path);
    const auto asks = [&](QMessageBox::StandardButton button, const std::function<void()>& action) {
        const QString file = driver.window.windowTitle().section("[*]", 0, 0);
        return driver.answering(button, action) == file + " has changes that are not saved.";
    };
    const auto create = [&] { driver.keys("Ctrl+N"); };
    const auto close = [&] { driver.window.close(); };
    driver.find<QLineEdit>("Module:")->setFocus();
    QTest::keyClicks(driver.find<QLineEdit>("Module:"), "2"); // and still in the field
    QVERIFY(asks(QMessageBox::Cancel, create));
    QVERIFY(asks(QMessageBox::Cancel, close));
    QVERIFY(driver.window.isVisible());
    QCOMPARE(driver.core().moduleName, QString("uart_tx2"));
    QCOMPARE(bytesOf(path), before);
    QVERIFY(asks(QMessageBox::Save, create));
    QVERIFY(driver.core().moduleName.isEmpty());
    driver.press("Add a core");
    QVERIFY(asks(QMessageBox::Discard, [&] { driver.window.open(path); }));
    QCOMPARE(driver.core().moduleName, QString("uart_tx2"));
    QVERIFY(!asks(QMessageBox::Cancel, close));
    QVERIFY(!driver.window.isVisible());
}

void TestEditorWindow::saveAs()
{
    WindowDriver driver;
    driver.keys("Ctrl+N");
    driver.choosing(m_folder.path("named"), [&] { driver.keys("Ctrl+S"); });
    QVERIFY(bytesOf(m_folder.path("named.oxa")).contains("AoCore"));
    QVERIFY(driver.window.windowTitle().startsWith("named.oxa"));
}

void TestEditorWindow::fileChangedByOthers()
{
    const QString path = m_folder.path("shared/uart.oxa");
    const QString folder = QFileInfo(path).path();
    QDir().mkpath(folder);
    const QByteArray first = bytesOf(m_folder.example("uart.oxa"));
    WindowDriver driver(writeFile(path, first));
    const auto change = [&](const QByteArray& position) {
        writeFile(path, QByteArray(first).replace("trigger_pos=\"32\"", position));
        QTRY_VERIFY_WITH_TIMEOUT(driver.message().contains("Another program"), kPatience);
    };
    change("trigger_pos=\"48\"");
    driver.press("Reload");
    QCOMPARE(driver.core().triggerPos, 48);
    QCOMPARE(driver.message(), QString());

    driver.enter("Module:", "mine");
    change("trigger_pos=\"64\"");
    const QString question = driver.answering(QMessageBox::No, [&] { driver.keys("Ctrl+S"); });
    QVERIFY(question.contains("Overwrite"));
    QVERIFY(bytesOf(path).contains("trigger_pos=\"64\""));
    driver.press("Keep Mine");
    driver.keys("Ctrl+Z");
    QVERIFY(driver.window.isWindowModified()); // the file is not what it was
    driver.keys("Ctrl+S");
    QVERIFY(bytesOf(path).contains("trigger_pos=\"48\""));

    const QByteArray saved = bytesOf(path);
    QVERIFY(QFile::remove(path));
    QTRY_VERIFY_WITH_TIMEOUT(driver.message().contains("was removed"), kPatience);
    writeFile(path, saved);
    QTRY_COMPARE_WITH_TIMEOUT(driver.message(), QString(), kPatience);

    QVERIFY(QDir(folder).removeRecursively());
    QTRY_VERIFY_WITH_TIMEOUT(driver.message().contains("was removed"), kPatience);
    driver.enter("Module:", "late");
    const QString error = driver.answering(QMessageBox::Ok, [&] { driver.keys("Ctrl+S"); });
    QVERIFY2(error.contains("shared"), qPrintable(error));
    QVERIFY(driver.window.isWindowModified());
    QDir().mkpath(folder);
    driver.keys("Ctrl+S");
    QVERIFY(bytesOf(path).contains("\"late\""));
}

void TestEditorWindow::droppedAndRecentFiles()
{
    QSettings().clear();
    const QString path = m_folder.example("uart_lite.oxa");
    {
        WindowDriver driver(m_folder.example("uart.oxa"));
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&driver.window, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&driver.window, &drop);
        QTRY_VERIFY_WITH_TIMEOUT(driver.document().path().endsWith("uart_lite.oxa"), kPatience);
        QVERIFY(driver.window.open(m_folder.example("uart.oxa"))); // a second time
    }
    WindowDriver driver;
    const QList<QAction*> recent = driver.window.findChild<RecentFiles*>()->actions();
    QCOMPARE(recent.size(), 2);
    recent.at(1)->trigger();
    QCOMPARE(driver.document().path(), QFileInfo(path).absoluteFilePath());
}

void TestEditorWindow::problemsLeadToTheirPlace()
{
    WindowDriver driver(m_folder.example("uart.oxa"));
    auto* panel = driver.window.findChild<ProblemsPanel*>();
    QTRY_VERIFY_WITH_TIMEOUT(driver.find<QLabel>("No problems"), kPatience);
    driver.enter("Storage depth:", "1000");
    driver.press("Add a core"); // without an expression, and without signals
    QMap<QString, QString> pages {
        {"storage-depth", "Capture"    },
        {"no-expression", "Expressions"},
        {"no-data",       "Signals"    }
    };
    QTRY_VERIFY_WITH_TIMEOUT(panel->problems().size() >= pages.size(), kPatience);
    for (int i = 0; i < panel->problems().size(); ++i) {
        const auto problem = panel->problems().at(i);
        panel->list()->setCurrentRow(i);
        QTest::keyClick(panel->list(), Qt::Key_Return);
        QCOMPARE(driver.window.findChild<CoreList*>()->list()->currentRow(), problem.place.core);
        if (pages.contains(problem.rule))
            QCOMPARE(driver.page(), pages.take(problem.rule));
    }
    QVERIFY(pages.isEmpty());
}

void TestEditorWindow::costOnAPart()
{
    WindowDriver driver(m_folder.example("uart.oxa"));
    auto* part = driver.find<PartChoice>("Part:");
    part->setFocus();
    QTest::keyClick(part, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(part, "qx1n-9lv-qfn88-c6");
    QWidget* popup = QApplication::activePopupWidget();
    QTest::keyClick(popup ? popup : part, Qt::Key_Return);
    QCOMPARE(part->part().name, QString("QX1N-9"));
    const auto* memory = driver.find<ShareBar>("Block SRAM");
    driver.enter("Storage depth:", "65536");
    QTRY_COMPARE_WITH_TIMEOUT(memory->text(), QString("72 of 26: does not fit"), kPatience);

    driver.document().undoStack().setClean();
    driver.keys("Ctrl+N"); // the part belongs to the file
    part->setKey({});
    QVERIFY(driver.window.open(m_folder.example("uart.oxa")));
    QCOMPARE(part->part().partNumber, QString("QX1N-9LV-QFN88-C6"));
}

namespace {

/// Filters the design's signals by `filter`, and returns their names as "a b [memory]".
QString filtered(WindowDriver& driver, const QString& filter)
{
    driver.enter("Filter:", filter);
    QStringList names;
    const auto* view = driver.find<QTreeView>("Signals of the design");
    for (QModelIndex at = view->model()->index(0, 0); at.isValid(); at = view->indexBelow(at)) {
        const QString name = at.data().toString() + at.siblingAtColumn(1).data().toString();
        if (!(at.flags() & Qt::ItemIsEnabled))
            names += "(" + name + ")";
        else if (at.flags() & Qt::ItemIsSelectable) // no scope
            names += name;
    }
    return names.join(' ');
}

QString lastSignals(const QList<SignalItem>& items, int count)
{
    return flattenedNames(items.mid(items.size() - count)).join(' ');
}

}

void TestEditorWindow::signalsOfTheDesign()
{
    const QString path = m_folder.example("uart.oxa");
    const QString list = writeFile(m_folder.path("traps.f"),
        "-D \"GO=8'd1\" -P N=3 " OXA_SOURCE_DIR "/tests/design/traps.sv --top top");
    WindowDriver driver(path);
    driver.keys("Ctrl+2");
    driver.press("From Design…");
    driver.choosing(list, [&] { driver.press("Add Sources…"); });
    QVERIFY(bytesOf(path + ".design").contains("--top \"top\""));
    auto* view = driver.find<QTreeView>("Signals of the design");
    const QAbstractItemModelTester tester(view->model());
    driver.press("Read the Design");
    QTRY_VERIFY_WITH_TIMEOUT(driver.document().design(), kPatience);
    QVERIFY(textsIn(*driver.find<QListWidget>("Messages about the design")).contains("bind"));
    const auto* problems = driver.window.findChild<ProblemsPanel*>();
    QTRY_VERIFY_WITH_TIMEOUT(
        textsIn(*problems->list()).contains("is not in the design"), kPatience);

    QCOMPARE(filtered(driver, "m/?ev"), QString("rev[0:3]"));
    QCOMPARE(filtered(driver, "M.W"), QString("(words16 × [7:0])")); // no memory can be watched
    QVERIFY(filtered(driver, "").contains("state[1:0]"));
    QCOMPARE(filtered(driver, "z"), QString("sized[2:0] z"));
    const QList<SignalItem> before = driver.core().signalList;
    view->setCurrentIndex(view->indexBelow(view->model()->index(0, 0)));
    QTest::keyClick(view, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(view, Qt::Key_Return);
    QCOMPARE(driver.page(), QString("Signals"));
    QCOMPARE(lastSignals(driver.core().signalList, 2),
        QString("top/sized[2] top/sized[1] top/sized[0] top/z"));
    const std::unique_ptr<QMimeData> dragged(
        view->model()->mimeData(view->selectionModel()->selectedRows()));
    QAbstractItemModel* data = driver.find<QTreeView>("Signals")->model();
    QVERIFY(data->dropMimeData(dragged.get(), Qt::CopyAction, 0, 0, {}));
    QCOMPARE(driver.core().signalList.first().subItems.size(), 3);
    driver.keys("Ctrl+Z");
    driver.keys("Ctrl+Z");
    QCOMPARE(flattenedNames(driver.core().signalList), flattenedNames(before));
    QTest::keyClick(view, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(lastSignals(driver.core().getTrigger(0)->signalList, 1), QString("top/z"));

    QCOMPARE(filtered(driver, "m/rev"), QString("rev[0:3]")); // single bits, below their vector
    view->setCurrentIndex(view->indexBelow(view->indexBelow(view->model()->index(0, 0))));
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Down})
        QTest::keyClick(view, key);
    QCOMPARE(view->currentIndex().data().toString(), QString("rev[1]"));
    QTest::keyClick(view, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(view, Qt::Key_Return);
    QCOMPARE(driver.core().signalList.last().name, QString("top/m/rev[1:2]"));
    QCOMPARE(lastSignals(driver.core().signalList, 1), QString("top/m/rev[1] top/m/rev[2]"));
    driver.keys("Ctrl+Z");

    QCOMPARE(filtered(driver, "top/clk2"), QString("clk2"));
    view->setCurrentIndex(view->indexBelow(view->model()->index(0, 0)));
    driver.press("Use as Sample Clock");
    auto* clock = driver.find<QLineEdit>("Sample clock:");
    QCOMPARE(clock->text(), QString("top/clk2"));
    clock->completer()->setCompletionPrefix("p/clk");
    QCOMPARE(clock->completer()->completionCount(), 2);

    QVERIFY(filtered(driver, "state").startsWith("state[1:0]"));
    view->setCurrentIndex(view->indexBelow(view->model()->index(0, 0)));
    QTest::keyClick(view, Qt::Key_Return);
    QString error;
    QVERIFY2(driver.document().save(m_folder.path("other.oxa"), &error), qPrintable(error));
    QVERIFY(bytesOf(m_folder.path("other.oxa.names")).contains("\"IDLE\"")); // of an enumeration
    WindowDriver other(m_folder.path("other.oxa"));
    other.keys("Ctrl+Shift+D"); // begins to read
    QVERIFY(textsIn(*other.find<QListWidget>("Sources of the design:")).endsWith("traps.sv"));
    QTRY_VERIFY_WITH_TIMEOUT(other.document().design(), kPatience);
}

QTEST_MAIN(TestEditorWindow)
#include "test_editor_window.moc"
