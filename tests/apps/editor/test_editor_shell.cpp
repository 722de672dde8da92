// SPDX-License-Identifier: Apache-2.0
// The window around the pages: welcome page, docks, help and the menu Edit.
#include "window_driver.h"

#include "oxa-editor/add_signals_dialog.h"
#include "oxa-editor/design/design_tree.h"
#include "oxa-editor/help_window.h"
#include "oxa-editor/pick_signals_dialog.h"
#include "oxa-editor/unit_dialog.h"
#include "oxa-editor/welcome_page.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeView>

using namespace OXA;

class TestEditorShell : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheWelcomePage();
    void exampleIsCopiedOnce();
    void beginsWithADesign();
    void docksAreRemembered();
    void helpIsAboutTheFocus();
    void editMenuServesTheFocus();
    void typedNamesAreChecked();
    void pickingNeedsAChoice();

private:
    TestFolder m_folder;
};

namespace {

QAction* actionOf(const WindowDriver& driver, const QString& menu, const QString& text)
{
    for (const QAction* top : driver.window.menuBar()->actions()) {
        if (top->text().remove('&') != menu)
            continue;
        Q_EMIT top->menu()->aboutToShow();
        for (QAction* action : top->menu()->actions()) {
            if (action->text().remove('&') == text)
                return action;
        }
    }
    return nullptr;
}

bool isWelcome(const WindowDriver& driver)
{
    return driver.window.findChild<WelcomePage*>()->isVisible();
}

}

void TestEditorShell::startsWithTheWelcomePage()
{
    QSettings().clear();
    const QString path = m_folder.example("uart.oxa");
    {
        WindowDriver first;
        QVERIFY(isWelcome(first));
        QVERIFY(!first.find<QListWidget>("Recent files"));
        QVERIFY(first.window.open(path));
        QVERIFY(!isWelcome(first));
    }
    WindowDriver driver;
    for (const char* keys : {"Ctrl+2", "Ctrl+0", "Ctrl+N", "Ctrl+9"}) {
        actionOf(driver, "Help", "Welcome Page")->trigger();
        QVERIFY(isWelcome(driver));
        driver.keys(keys);
        QVERIFY2(!isWelcome(driver), keys);
    }
    actionOf(driver, "Help", "Welcome Page")->trigger();
    driver.keyIn("Recent files", Qt::Key_Return);
    QCOMPARE(driver.document().path(), path);
    QVERIFY(!isWelcome(driver));
}

void TestEditorShell::exampleIsCopiedOnce()
{
    const QString home = m_folder.path("home");
    const QString copy = home + "/uart/uart.oxa";
    QVERIFY(QDir().mkpath(home));
    WindowDriver driver;
    const auto open = [&] { driver.choosing(home, [&] { driver.press("The example…"); }); };
    open();
    QCOMPARE(driver.document().path(), copy);
    QVERIFY(bytesOf(copy + ".design").contains("uart_tx.v"));
    driver.enter("Module:", "mine");
    driver.keys("Ctrl+S");
    actionOf(driver, "Help", "Welcome Page")->trigger();
    open();
    QCOMPARE(driver.core().moduleName, QString("mine"));

    QVERIFY(QDir().mkpath(m_folder.path("full")));
    writeFile(m_folder.path("full/uart"), "a file, not a directory");
    actionOf(driver, "Help", "Welcome Page")->trigger();
    const QString error = driver.answering(QMessageBox::Ok,
        [&] { driver.choosing(m_folder.path("full"), [&] { driver.press("The example…"); }); });
    QVERIFY2(error.contains("full/uart"), qPrintable(error));
    QCOMPARE(driver.document().path(), copy);
}

void TestEditorShell::beginsWithADesign()
{
    WindowDriver driver;
    driver.choosing(m_folder.example("uart_tx.v"), [&] { driver.press("From a design…"); });
    QTRY_VERIFY_WITH_TIMEOUT(driver.document().design(), kPatience);
    QCOMPARE(driver.page(), QString("Signals"));
    QVERIFY(driver.find<QTreeView>("Signals of the design"));
    QString error;
    QVERIFY2(driver.document().save(m_folder.path("begun.oxa"), &error), qPrintable(error));
    driver.window.close();
    WindowDriver later(m_folder.path("begun.oxa")); // its dock is there again
    QTRY_VERIFY_WITH_TIMEOUT(later.document().design(), kPatience);
}

void TestEditorShell::docksAreRemembered()
{
    QSettings().clear();
    const auto isShown = [](const WindowDriver& driver, const char* dock) {
        return driver.window.findChild<QDockWidget*>(dock)->isVisible();
    };
    {
        WindowDriver driver(m_folder.example("uart.oxa"));
        for (const char* dock : {"buildDock", "rehearsalDock", "designDock", "targetDock"})
            QVERIFY2(!isShown(driver, dock), dock);
        driver.keys("Ctrl+8");
        driver.window.close();
    }
    WindowDriver driver;
    QVERIFY(isShown(driver, "rehearsalDock"));
    QVERIFY(!isShown(driver, "buildDock"));
    driver.keys("F7"); // no part is chosen, which the panel says
    QVERIFY(isShown(driver, "buildDock"));
}

void TestEditorShell::helpIsAboutTheFocus()
{
    struct Topic {
        const char *keys, *heading;
    };
    constexpr Topic kTopics[] = {
        {"Ctrl+1",       "Capture"                  },
        {"Ctrl+2",       "Signals and trigger ports"},
        {"Ctrl+4",       "Match units"              },
        {"Ctrl+5",       "Expressions"              },
        {"Ctrl+8",       "Rehearsal"                },
        {"Ctrl+9",       "Target"                   },
        {"Ctrl+Shift+D", "Signals of the design"    },
        {"Ctrl+0",       "The editor"               },
    };
    WindowDriver driver(m_folder.example("uart.oxa"));
    for (const Topic& topic : kTopics) {
        driver.keys(topic.keys);
        driver.keys("F1");
        auto* help = driver.window.findChild<HelpWindow*>();
        QVERIFY(help && help->isVisible());
        const auto* page = help->findChild<QTextBrowser*>();
        QCOMPARE(page->textCursor().block().text(), QString(topic.heading));
        help->close();
    }
    driver.keys("Ctrl+4");
    QString heading;
    driver.inModal<UnitDialog>( // which blocks the window
        [&](UnitDialog* dialog) {
            QTest::keyClick(dialog, Qt::Key_F1);
            heading = dialog->findChild<QTextBrowser*>()->textCursor().block().text();
            dialog->reject();
            return true;
        },
        [&] { QTest::keyClick(driver.find<QTableView>("Match units"), Qt::Key_Return); });
    QCOMPARE(heading, QString("Match units"));
    driver.keys("F1");
    auto* help = driver.window.findChild<HelpWindow*>();
    auto* page = help->findChild<QTextBrowser*>();
    const auto follow = [&](const char* link) { Q_EMIT page->anchorClicked(QUrl(link)); };
    follow("glossary.md#triggering");
    QCOMPARE(page->textCursor().block().text(), QString("Triggering"));
    for (const char* link : {"https://localhost/x.md", "none.md"}) { // stays on the page
        follow(link);
        QVERIFY2(labelsIn(*help).contains(QString("Not installed: ")), link);
        QVERIFY(page->source().path().endsWith("glossary.md"));
    }
    QVERIFY(!help->showPage("none.md", {}));
}

void TestEditorShell::editMenuServesTheFocus()
{
    WindowDriver driver(m_folder.example("uart.oxa"));
    const auto choose = [&](const char* text) {
        QAction* action = actionOf(driver, "Edit", text);
        QVERIFY2(action && action->isEnabled(), text);
        action->trigger();
    };
    auto* module = driver.find<QLineEdit>("Module:");
    module->setFocus();
    choose("Select All");
    choose("Cut");
    QCOMPARE(module->text(), QString());
    QCOMPARE(QApplication::clipboard()->text(), QString("uart_tx"));
    choose("Paste");
    QCOMPARE(module->text(), QString("uart_tx"));

    driver.keys("Ctrl+2");
    choose("Select All");
    choose("Cut");
    QCOMPARE(driver.core().signalList.size(), 0);
    choose("Paste");
    QCOMPARE(driver.core().dataSignals().size(), 17);
    driver.keys("Ctrl+Z");
    QTest::keyClick(driver.find<QTreeView>("Signals"), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(driver.core().dataSignals().size(), 17); // the key belongs to the list

    driver.keys("Ctrl+0");
    choose("Copy");
    QVERIFY(QApplication::clipboard()->text().endsWith("uart_tx"));
    QVERIFY(!actionOf(driver, "Edit", "Paste")->isEnabled());
}

void TestEditorShell::typedNamesAreChecked()
{
    struct Row {
        const char *typed, *result, *button;
        int marks;
    };
    constexpr Row kRows[] = {
        {"soc/cpu/pc[3:0]\nrun",     "5 bits",                                                 "&Add",        0}, // the end of a path suffices
        {"soc/cpu/pc[8:7]\nrun",     "soc/cpu/pc[8] is not in the range [7:0]",                "&Add Anyway", 1},
        {"rn\nrun\n\nsoc/cup/pc[0]", "rn is not in the design; the nearest names are soc/run",
         "&Add Anyway",                                                                                       2}, // also soc/cup/pc[0], which has another parent
        {"ram[0]",                   "ram[0] is in a memory",                                  "&Add Anyway", 1},
    };
    Design design;
    for (const char* path : {"soc/cpu/pc", "soc/ram", "soc/run"}) {
        DesignSignal signal;
        signal.path = path;
        signal.width = signal.path.endsWith("run") ? 1 : 8;
        signal.memoryWords = signal.path.endsWith("ram") ? 16 : 0;
        design.items += signal;
    }
    AddSignalsDialog dialog(std::make_shared<const DesignTree>(design));
    auto* names = dialog.findChild<QPlainTextEdit*>();
    const auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    QVERIFY(!ok->isEnabled());
    for (const Row& row : kRows) {
        names->setPlainText(row.typed);
        QVERIFY2(labelsIn(dialog).contains(row.result), qPrintable(labelsIn(dialog)));
        QCOMPARE(ok->text(), QString(row.button));
        QCOMPARE(int(names->extraSelections().size()), row.marks);
        QVERIFY(ok->isEnabled());
    }
}

void TestEditorShell::pickingNeedsAChoice()
{
    SignalItem item;
    item.name = "a";
    PickSignalsDialog dialog({item});
    dialog.show();
    auto* list = dialog.findChild<QListWidget*>();
    for (QWidget* widget :
        {static_cast<QWidget*>(dialog.findChild<QLineEdit*>()), static_cast<QWidget*>(list)}) {
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Return);
        QVERIFY(dialog.isVisible());
    }
    list->setCurrentRow(0);
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.items().size(), 1);
}

QTEST_MAIN(TestEditorShell)
#include "test_editor_shell.moc"
