// SPDX-License-Identifier: Apache-2.0
// The menus of the window.

#include "main_window.h"

#include "build_panel.h"
#include "clipboard_actions.h"
#include "core_list.h"
#include "core_pages.h"
#include "help_window.h"
#include "part_choice.h"
#include "problems_panel.h"
#include "recent_files.h"
#include "target/target_panel.h"
#include "wave/wave_view.h"

#include "oxautils/oxautils_version.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>

namespace {

/// Gives `action` an icon of the desktop's theme, if that has it.
QAction* withIcon(const char* icon, QAction* action)
{
    action->setIcon(QIcon::fromTheme(icon));
    return action;
}

}

void MainWindow::makeActions()
{
    makeFileMenu();
    makeEditMenu();
    makeViewMenu();
    makeBuildMenu();
    makeTargetMenu();
    makeHelpMenu();
}

void MainWindow::makeFileMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    withIcon("document-new",
        menu->addAction(
            tr("&New Standard"), this, [this] { newDocument(OXA::Standard); }, QKeySequence::New));
    menu->addAction(
        tr("New &Lite"), this, [this] { newDocument(OXA::Lite); }, QKeySequence("Ctrl+Shift+N"));
    menu->addAction(tr("New from a &Design…"), this, &MainWindow::beginWithDesign);
    withIcon("document-open",
        menu->addAction(tr("&Open…"), this, &MainWindow::chooseFile, QKeySequence::Open));
    menu->addMenu(m_recent);
    menu->addAction(tr("Open the &Example…"), this, &MainWindow::openExample);
    menu->addSeparator();
    menu->addAction(
        tr("Open &Capture…"), this, &MainWindow::chooseCapture, QKeySequence("Ctrl+Shift+O"));
    menu->addMenu(m_recentCaptures);
    menu->addSeparator();
    withIcon(
        "document-save", menu->addAction(tr("&Save"), this, &MainWindow::save, QKeySequence::Save));
    withIcon("document-save-as",
        menu->addAction(tr("Save &As…"), this, &MainWindow::saveAs, QKeySequence("Ctrl+Shift+S")));
    menu->addSeparator();
    withIcon("application-exit",
        menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit));
}

void MainWindow::makeEditMenu()
{
    QUndoStack& stack = m_document.undoStack();
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
    const auto addStep
        = [&](const QString& name, const QList<QKeySequence>& keys, void (QUndoStack::*go)()) {
              QAction* action = menu->addAction(name);
              action->setShortcuts(keys);
              action->setEnabled(false);
              connect(action, &QAction::triggered, this, [this, go] { step(go); });
              return action;
          };
    const auto setStepText = [](QAction* action, const QString& name, const QString& step) {
        action->setText(step.isEmpty() ? name : QString("%1: %2").arg(name, step));
    };
    QAction* undo
        = withIcon("edit-undo", addStep(tr("&Undo"), {QKeySequence("Ctrl+Z")}, &QUndoStack::undo));
    QAction* redo = withIcon("edit-redo",
        addStep(tr("&Redo"), {QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")},
            &QUndoStack::redo));
    connect(&stack, &QUndoStack::canUndoChanged, undo, &QAction::setEnabled);
    connect(&stack, &QUndoStack::canRedoChanged, redo, &QAction::setEnabled);
    connect(&stack, &QUndoStack::undoTextChanged, undo,
        [=](const QString& text) { setStepText(undo, tr("&Undo"), text); });
    connect(&stack, &QUndoStack::redoTextChanged, redo,
        [=](const QString& text) { setStepText(redo, tr("&Redo"), text); });
    menu->addSeparator();
    new ClipboardActions(menu);
    menu->addSeparator();
    menu->addAction(tr("&Add Core"), m_cores, &CoreList::add);
    menu->addAction(tr("&Duplicate Core"), m_cores, &CoreList::duplicate);
    menu->addAction(tr("Re&move Core"), m_cores, &CoreList::remove);
}

/// Undoes or redoes one step, and shows its place.
void MainWindow::step(void (QUndoStack::*go)())
{
    finishEdit();
    Location place;
    const auto note = [&place](const Location& location) { place = location; };
    const auto connection = connect(&m_document, &Document::changed, this, note);
    (m_document.undoStack().*go)();
    disconnect(connection);
    showPlace(place);
}

void MainWindow::makeViewMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&View"));
    const auto addFocus = [&](const QString& text, const QString& keys, QWidget* widget) {
        menu->addAction(
            text, this,
            [this, widget] {
                leaveWelcome();
                widget->setFocus(Qt::ShortcutFocusReason);
            },
            QKeySequence(keys));
    };
    addFocus(tr("&Cores"), "Ctrl+0", m_cores->list());
    const QList<QPair<Page, QString>> pages = {
        {Page::Capture,     tr("C&apture")      },
        {Page::Signals,     tr("&Signals")      },
        {Page::Ports,       tr("&Trigger ports")},
        {Page::Units,       tr("&Match units")  },
        {Page::Expressions, tr("&Expressions")  }
    };
    for (const auto& entry : pages)
        menu->addAction(
            entry.second, this,
            [this, page = entry.first] {
                leaveWelcome();
                m_pages->enter(page);
            },
            QKeySequence(QString("Ctrl+%1").arg(int(entry.first) + 1)));
    addFocus(tr("&Problems"), "Ctrl+6", m_problems->list());
    addFocus(tr("Par&t"), "Ctrl+7", m_part);
    const auto addWave = [&](const QString& text, const QString& keys, QDockWidget* dock) {
        menu->addAction(
            text, this, [this, dock] { showLargeDock(dock); }, QKeySequence(keys));
    };
    addWave(tr("&Rehearsal"), "Ctrl+8", m_rehearsalDock);
    addWave(tr("Tar&get"), "Ctrl+9", m_targetDock);
    menu->addAction(tr("Captu&res"), this, &MainWindow::showCaptures, QKeySequence("Ctrl+Shift+H"));
    menu->addAction(tr("&Design"), this, &MainWindow::showDesign, QKeySequence("Ctrl+Shift+D"));
    menu->addAction(tr("&Build"), this, &MainWindow::showBuild);
}

void MainWindow::makeBuildMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Build"));
    const auto prepare = [this] {
        finishEdit();
        showBuild();
        return m_build;
    };
    QAction* generate = menu->addAction(
        tr("&Generate"), this, [=] { prepare()->generate(); }, QKeySequence("F7"));
    QAction* synthesize = withIcon("run-build",
        menu->addAction(
            tr("&Synthesize"), this, [=] { prepare()->synthesize(); }, QKeySequence("F8")));
    QAction* stop = withIcon("process-stop",
        menu->addAction(tr("S&top"), m_build, &BuildPanel::stop, QKeySequence("Shift+F8")));
    stop->setEnabled(false);
    connect(m_build, &BuildPanel::stageChanged, this,
        [this](const QString& text) { statusBar()->showMessage(text); });
    connect(m_build, &BuildPanel::runningChanged, this, [=] {
        generate->setEnabled(!m_build->isRunning());
        synthesize->setEnabled(!m_build->isRunning());
        stop->setEnabled(m_build->isRunning());
    });
}

void MainWindow::makeTargetMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Target"));
    const auto showTarget = [this] {
        finishEdit();
        showLargeDock(m_targetDock);
        m_target->view()->setFocus(); // a key would replace the address, which is selected
    };
    QAction* connectTo = menu->addAction(tr("&Connect"), this, [=] {
        showTarget();
        m_target->connectToChip();
    });
    const auto armChip = [=] {
        showTarget();
        m_target->arm();
    };
    QAction* arm
        = withIcon("media-record", menu->addAction(tr("&Arm"), this, armChip, QKeySequence("F9")));
    QAction* force
        = menu->addAction(tr("&Force"), m_target, &TargetPanel::force, QKeySequence("Ctrl+F9"));
    QAction* stop = withIcon("media-playback-stop",
        menu->addAction(tr("S&top"), m_target, &TargetPanel::stop, QKeySequence("Shift+F9")));
    menu->addSeparator();
    QAction* save = menu->addAction(tr("&Save Samples…"), m_target, &TargetPanel::save);
    connect(menu, &QMenu::aboutToShow, this, [=] { save->setEnabled(m_target->canSave()); });
    const auto showState = [=] {
        connectTo->setEnabled(!m_target->isRunning());
        arm->setEnabled(!m_target->isRunning());
        force->setEnabled(m_target->isRunning());
        stop->setEnabled(m_target->isRunning());
    };
    connect(m_target, &TargetPanel::runningChanged, this, showState);
    showState();
}

void MainWindow::makeHelpMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Help"));
    withIcon("help-contents",
        menu->addAction(
            tr("&Help"), this, [this] { HelpWindow::showFor(*this, "editor.md"); },
            QKeySequence("F1")));
    menu->addAction(
        tr("&First Capture"), this, [this] { HelpWindow::showFor(*this, "first-capture.md"); });
    menu->addAction(tr("All &Pages"), this, [this] { HelpWindow::showFor(*this, "README.md"); });
    menu->addSeparator();
    menu->addAction(tr("&Welcome Page"), this, [this] { showWelcome(); });
    withIcon("help-about", menu->addAction(tr("&About"), this, &MainWindow::showAbout));
}

void MainWindow::showAbout()
{
    QMessageBox::about(this, tr("About oxa-editor"),
        tr("oxa-editor %1\n\nEdits the configuration of embedded logic analyzers for FPGA designs, "
           "generates them and captures from them.\n\nApache License 2.0. Uses Qt %2.")
            .arg(OXAUTILS_VERSION_STR, qVersion()));
}
