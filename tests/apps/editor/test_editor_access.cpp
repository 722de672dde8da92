// SPDX-License-Identifier: Apache-2.0
// The window for those who use keys or a screen reader.
#include "window_driver.h"

#include "oxa-editor/add_signals_dialog.h"
#include "oxa-editor/core_pages.h"
#include "oxa-editor/cost_panel.h"
#include "oxa-editor/design/design_tree.h"
#include "oxa-editor/expression_edit.h"
#include "oxa-editor/file_viewer.h"
#include "oxa-editor/help_window.h"
#include "oxa-editor/pick_signals_dialog.h"
#include "oxa-editor/unit_dialog.h"

#include <QAccessible>
#include <QComboBox>
#include <QDockWidget>
#include <QScrollBar>
#include <QSpinBox>
#include <QTreeView>

using namespace OXA;

class TestEditorAccess : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everythingIsReachedByKeys();
    void everyControlHasAName();
    void tabFollowsTheEye();

private:
    TestFolder m_folder;
};

namespace {

QString nameOf(QWidget* widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

/// Everything that takes input has a name for a screen reader and can be reached by Tab.
void expectTabOrder(const WindowDriver& driver)
{
    QList<QWidget*> reached;
    for (QWidget* at = driver.find<QListWidget>("Cores"); !reached.contains(at);) {
        at->setFocus();
        reached += at;
        QTest::keyClick(at, Qt::Key_Tab);
        at = driver.window.focusWidget();
    }
    for (QWidget* widget : driver.window.findChildren<QWidget*>()) {
        const QByteArray type = widget->metaObject()->className();
        const bool input = qobject_cast<QAbstractSpinBox*>(widget)
            || qobject_cast<QComboBox*>(widget) || qobject_cast<QAbstractItemView*>(widget)
            || qobject_cast<QAbstractButton*>(widget) || qobject_cast<ExpressionEdit*>(widget);
        if (!input || !widget->isVisible() || !widget->isEnabled()
            || widget->focusPolicy() == Qt::NoFocus || type.startsWith("QDockWidget"))
            continue;
        QVERIFY2(!nameOf(widget).isEmpty(), type);
        QVERIFY2(reached.contains(widget) || reached.contains(widget->focusProxy()),
            qPrintable(nameOf(widget)));
    }
}

/// Two that share a letter would take it from each other, and from the menus.
void expectOneMeaningOfMnemonics(const WindowDriver& driver)
{
    QStringList texts;
    for (const QAction* action : driver.window.menuBar()->actions())
        texts += action->text();
    for (const QLabel* label : driver.window.findChildren<QLabel*>())
        texts += label->isVisible() && label->buddy() ? label->text() : QString();
    for (const QAbstractButton* button : driver.window.findChildren<QAbstractButton*>())
        texts += button->isVisible() ? button->text() : QString();
    QHash<QString, QString> meanings;
    for (const QString& text : qAsConst(texts)) {
        const QString key = QKeySequence::mnemonic(text).toString();
        QVERIFY2(key.isEmpty() || !meanings.contains(key),
            qPrintable(text + " and " + meanings.value(key)));
        meanings[key] = text;
    }
    QVERIFY(meanings.size() > 5);
}

}

void TestEditorAccess::everythingIsReachedByKeys()
{
    for (const char* file : {"uart.oxa", "uart_lite.oxa"}) {
        WindowDriver driver(m_folder.example(file));
        auto* tabs = driver.window.findChild<QTabWidget*>();
        for (const char* dock : {"Ctrl+0", "Ctrl+9", "Ctrl+8", "Ctrl+Shift+H",
                 "Ctrl+Shift+D"}) { // each in front of those before
            driver.keys(dock);
            for (int page = 0; page < tabs->count(); ++page) {
                tabs->setCurrentIndex(page);
                expectOneMeaningOfMnemonics(driver);
                if (QByteArray(dock) == "Ctrl+0" || QByteArray(dock) == "Ctrl+Shift+D")
                    expectTabOrder(driver);
            }
        }
    }
}

namespace {

constexpr const char* kDocks[]
    = {"Ctrl+0", "F7", "Ctrl+9", "Ctrl+8", "Ctrl+Shift+D", "Ctrl+Shift+H"};

/// Whether a person uses `widget` itself, and not as a part of another control.
bool isControl(const QWidget& widget)
{
    if (widget.focusPolicy() == Qt::NoFocus || widget.focusProxy()
        || qobject_cast<const QScrollBar*>(&widget) || qobject_cast<const QLabel*>(&widget))
        return false;
    bool isPart = qobject_cast<const QDockWidget*>(widget.parentWidget()); // its title's buttons
    for (const QWidget* at = widget.parentWidget(); at && !isPart; at = at->parentWidget())
        isPart = qobject_cast<const QAbstractSpinBox*>(at) || qobject_cast<const QComboBox*>(at)
            || qobject_cast<const QAbstractItemView*>(at) || qobject_cast<const QLineEdit*>(at)
            || qobject_cast<const QTabBar*>(at);
    return !isPart && !widget.isWindow();
}

QString described(const QWidget& widget)
{
    QStringList path;
    for (const QWidget* at = &widget; at; at = at->parentWidget())
        path.prepend(QString("%1 %2").arg(at->metaObject()->className(), at->objectName()));
    return path.join(" > ");
}

/// The controls of `area` without a name for a screen reader; hidden ones have one, too.
QString namelessIn(QWidget& area)
{
    QStringList nameless;
    for (QWidget* widget : area.findChildren<QWidget*>()) {
        if (isControl(*widget) && nameOf(widget).trimmed().isEmpty())
            nameless += described(*widget);
    }
    return nameless.join('\n');
}

void expectNone(const QString& found) { QVERIFY2(found.isEmpty(), qPrintable(found)); }

/// Visits each page with each panel below it.
void onEachPage(WindowDriver& driver, const std::function<void()>& act)
{
    auto* tabs = driver.window.findChild<CorePages*>();
    for (const char* dock : kDocks) {
        driver.keys(dock);
        for (int page = 0; page < tabs->count(); ++page) {
            tabs->setCurrentIndex(page);
            act();
        }
    }
}

/// Visits each dialog.
void onEachDialog(const QString& path, const std::function<void(QWidget&)>& act)
{
    TriggerPort port;
    SignalItem item;
    item.name = "a";
    port.signalList += item;
    MatchUnit unit;
    unit.trigger = &port;
    AddSignalsDialog add(nullptr);
    PickSignalsDialog pick({item});
    UnitDialog edit(&unit, nullptr);
    FileViewer viewer({path, 1}, &pick);
    viewer.setAttribute(Qt::WA_DeleteOnClose, false);
    HelpWindow help(&pick);
    for (QWidget* dialog : std::initializer_list<QWidget*> {&add, &pick, &edit, &viewer, &help}) {
        dialog->show();
        act(*dialog);
        dialog->close();
    }
}

/// The controls of `area` in the order in which Tab reaches them.
QList<QWidget*> stopsIn(QWidget& area)
{
    QList<QWidget*> stops;
    for (QWidget* at = area.nextInFocusChain(); at != &area; at = at->nextInFocusChain()) {
        if (area.isAncestorOf(at) && at->isVisible() && at->focusPolicy() & Qt::TabFocus
            && isControl(*at))
            stops += at;
    }
    return stops;
}

/// The pairs of controls of `area` of which the second is neither below nor right of the first.
QString jumpsIn(QWidget& area)
{
    QStringList jumps;
    const QList<QWidget*> stops = stopsIn(area);
    const auto placeOf
        = [&](QWidget* stop) { return QRect(stop->mapTo(area.window(), QPoint()), stop->size()); };
    for (int i = 1; i < stops.size(); ++i) {
        const QRect before = placeOf(stops.at(i - 1));
        const QRect after = placeOf(stops.at(i));
        if (after.left() <= before.right() && after.top() <= before.bottom()
            && !stops.at(i - 1)->isAncestorOf(stops.at(i))) // a group with a switch
            jumps += nameOf(stops.at(i - 1)) + " -> " + nameOf(stops.at(i));
    }
    return jumps.join('\n');
}

}

void TestEditorAccess::everyControlHasAName()
{
    for (const char* file : {"uart.oxa", "uart_lite.oxa"}) {
        WindowDriver driver(m_folder.example(file));
        expectNone(namelessIn(driver.window));
    }
    onEachDialog(
        m_folder.example("uart.oxa"), [](QWidget& dialog) { expectNone(namelessIn(dialog)); });
}

void TestEditorAccess::tabFollowsTheEye()
{
    for (const char* file : {"uart.oxa", "uart_lite.oxa"}) {
        WindowDriver driver(m_folder.example(file));
        onEachPage(driver, [&] {
            expectNone(jumpsIn(*driver.window.centralWidget()));
            for (QDockWidget* dock : driver.window.findChildren<QDockWidget*>())
                expectNone(jumpsIn(*dock->widget()));
        });
    }
    onEachDialog(m_folder.example("uart.oxa"), [](QWidget& dialog) {
        QVERIFY(!stopsIn(dialog).isEmpty());
        expectNone(jumpsIn(dialog));
    });
}

QTEST_MAIN(TestEditorAccess)
#include "test_editor_access.moc"
