// SPDX-License-Identifier: Apache-2.0
// The window around the pages: welcome page, docks, help and the menu Edit.
#include "window_driver.h"

#include "oxa-editor/core_pages.h"
#include "oxa-editor/help_window.h"
#include "oxa-editor/welcome_page.h"

#include <QClipboard>
#include <QDockWidget>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeView>

class TestEditorShell : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheWelcomePage();
    void exampleIsCopiedOnce();
    void beginsWithADesign();
    void docksAreRemembered();
    void helpIsAboutTheFocus();
    void editMenuServesTheFocus();

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

QTEST_MAIN(TestEditorShell)
#include "test_editor_shell.moc"
