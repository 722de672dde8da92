// SPDX-License-Identifier: Apache-2.0
#include "main_window.h"

#include "build_panel.h"
#include "capture_page.h"
#include "core_list.h"
#include "cost_panel.h"
#include "design/design_panel.h"
#include "expressions_page.h"
#include "file_watch.h"
#include "message_bar.h"
#include "part_choice.h"
#include "ports_page.h"
#include "problems_panel.h"
#include "recent_files.h"
#include "signals_page.h"
#include "target/target_panel.h"
#include "undo_keys.h"
#include "units_page.h"
#include "wave/rehearsal_panel.h"

#include "oxautils/model/shown_text.h"

#include <QCryptographicHash>
#include <QDockWidget>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QScrollArea>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr int kJudgeDelay = 150; // ms after an edit

// The pages for rules about a core as a whole; other rules: the first page.
struct RulePage {
    const char* rule;
    Page page;
};

constexpr RulePage kRulePages[] = {
    {"no-data",              Page::Signals    },
    {"signal-twice",         Page::Signals    },
    {"sampled-clock",        Page::Signals    },
    {"unusable-name",        Page::Signals    },
    {"hidden-characters",    Page::Signals    },
    {"wrapper-name",         Page::Signals    },
    {"shared-data",          Page::Signals    },
    {"not-in-design",        Page::Signals    },
    {"watched-memory",       Page::Signals    },
    {"declared-bits",        Page::Signals    },
    {"other-clock",          Page::Signals    },
    {"no-expression",        Page::Expressions},
    {"too-many-expressions", Page::Expressions},
    {"table-memory",         Page::Expressions},
};

Page pageOf(const OXA::Problem& problem)
{
    if (problem.place.expression >= 0)
        return Page::Expressions;
    if (problem.place.unit >= 0)
        return Page::Units;
    if (problem.place.port >= 0)
        return Page::Ports;
    for (const RulePage& known : kRulePages) {
        if (problem.rule == known.rule)
            return known.page;
    }
    return Page::Capture;
}

int itemOf(const OXA::Place& place)
{
    return place.expression >= 0 ? place.expression : place.unit >= 0 ? place.unit : place.port;
}

QString fileText(bool exists)
{
    return exists ? MainWindow::tr("Another program changed the file.")
                  : MainWindow::tr("The file was removed.");
}

QString fileSetting(const char* group, const QString& path)
{
    const QByteArray hash
        = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Md5).toHex();
    return QString("%1/%2").arg(group, QString(hash));
}

}

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_cores(new CoreList(m_document))
    , m_tabs(new QTabWidget)
    , m_middle(new QStackedWidget)
    , m_message(new MessageBar)
    , m_problems(new ProblemsPanel)
    , m_part(new PartChoice)
    , m_cost(new CostPanel)
    , m_build(new BuildPanel(m_document))
    , m_buildDock(new QDockWidget(tr("Build")))
    , m_rehearsal(new RehearsalPanel(m_document))
    , m_rehearsalDock(new QDockWidget(tr("Rehearsal")))
    , m_design(new DesignPanel(m_document))
    , m_designDock(new QDockWidget(tr("Design")))
    , m_target(new TargetPanel(m_document))
    , m_targetDock(new QDockWidget(tr("Target")))
    , m_recent(new RecentFiles(this))
    , m_watch(new FileWatch(m_document, this))
{
    m_checkTimer.setSingleShot(true);
    m_checkTimer.setInterval(kJudgeDelay);
    setAcceptDrops(true);
    new UndoKeys(this);
    layOut();
    makeActions();
    connectParts();
    connectDesign();
    m_document.create(OXA::Standard);
    m_part->setKey(QSettings().value("part/last").toString());
    restoreGeometry(QSettings().value("window/geometry").toByteArray());
    restoreState(QSettings().value("window/state").toByteArray());
}

MainWindow::~MainWindow()
{
    // The widgets are destroyed before the document that they read.
    m_document.disconnect();
    m_document.undoStack().disconnect();
    delete m_buildDock;
    delete m_rehearsalDock;
    delete m_designDock;
    delete m_targetDock;
    delete takeCentralWidget();
}

void MainWindow::layOut()
{
    m_tabs->setDocumentMode(true);
    // Allows dragging signals of the design to a hidden page.
    m_tabs->tabBar()->setAcceptDrops(true);
    m_tabs->tabBar()->setChangeCurrentOnDrag(true);
    auto* empty = new QLabel(tr("There is no core. Add one to begin."));
    empty->setAlignment(Qt::AlignCenter);
    m_middle->addWidget(m_tabs);
    m_middle->addWidget(empty);
    auto* splitter = new QSplitter;
    splitter->addWidget(m_cores);
    splitter->addWidget(m_middle);
    splitter->addWidget(makeSide());
    splitter->setStretchFactor(1, 1);
    const int character = fontMetrics().averageCharWidth();
    splitter->setSizes({character * 26, character * 90, character * 52});
    splitter->setChildrenCollapsible(false);

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_message);
    layout->addWidget(splitter, 1);
    setCentralWidget(content);
    fillDock(m_buildDock, "buildDock", m_build);
    addDockWidget(Qt::BottomDockWidgetArea, m_buildDock);
    resize(character * 170, fontMetrics().height() * 46);
    resizeDocks({m_buildDock}, {fontMetrics().height() * 12}, Qt::Vertical);
    fillDock(m_rehearsalDock, "rehearsalDock", m_rehearsal);
    fillDock(m_designDock, "designDock", m_design);
    fillDock(m_targetDock, "targetDock", m_target);
    // Hidden until `showLargeDock`.
    for (QDockWidget* dock : {m_rehearsalDock, m_designDock, m_targetDock}) {
        dock->setParent(this);
        dock->hide();
    }
}

/// Puts a panel into a dock, with scroll bars when the dock is small. A panel that another dock
/// covers is hidden, or its Alt shortcuts would still be active.
void MainWindow::fillDock(QDockWidget* dock, const char* name, QWidget* panel)
{
    auto* area = new QScrollArea;
    area->setWidget(panel);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // focus scrolls to the panel's fields
    area->setFocusProxy(panel);
    dock->setObjectName(name);
    dock->setWidget(area);
    connect(dock, &QDockWidget::visibilityChanged, panel, &QWidget::setVisible);
}

/// Raises a waveform or the design, with space for some rows: in place of the build panel unless
/// the user moved it.
void MainWindow::showLargeDock(QDockWidget* dock)
{
    const bool comes = !dock->isVisible();
    if (dockWidgetArea(dock) == Qt::NoDockWidgetArea && !dock->isFloating()) {
        addDockWidget(Qt::BottomDockWidgetArea, dock);
        tabifyDockWidget(m_buildDock, dock);
    }
    dock->show();
    dock->raise();
    if (comes && !dock->isFloating() && dock->height() < height() / 2)
        resizeDocks({dock}, {height() / 2}, Qt::Vertical);
    dock->widget()->setFocus(Qt::ShortcutFocusReason);
}

QWidget* MainWindow::makeSide()
{
    auto* cost = new QWidget;
    auto* costLayout = new QVBoxLayout(cost);
    auto* form = new QFormLayout;
    form->addRow(tr("Part:"), m_part);
    costLayout->addLayout(form);
    costLayout->addWidget(m_cost, 1);
    auto* side = new QSplitter(Qt::Vertical);
    side->addWidget(m_problems);
    side->addWidget(cost);
    side->setStretchFactor(0, 3);
    side->setStretchFactor(1, 2);
    side->setChildrenCollapsible(false);
    return side;
}

void MainWindow::connectParts()
{
    connect(&m_document, &Document::replaced, this, &MainWindow::makePages);
    connect(&m_document, &Document::changed, this, &MainWindow::showChange);
    connect(&m_document, &Document::pathChanged, this, &MainWindow::showTitle);
    connect(&m_document, &Document::pathChanged, this, &MainWindow::restoreFileSettings);
    connect(&m_document.undoStack(), &QUndoStack::cleanChanged, this, &MainWindow::showTitle);
    connect(m_cores, &CoreList::currentChanged, this, &MainWindow::showCore);
    connect(m_problems, &ProblemsPanel::activated, this, &MainWindow::showProblem);
    connect(m_part, &PartChoice::partChanged, this, &MainWindow::choosePart);
    connect(m_build, &BuildPanel::partNeeded, m_part, QOverload<>::of(&QWidget::setFocus));
    connect(m_build, &BuildPanel::workDirChanged, this,
        [this] { QSettings().setValue(workDirSetting(), m_build->workDir()); });
    connect(m_recent, &RecentFiles::chosen, this, &MainWindow::open);
    connect(m_watch, &FileWatch::changed, this, &MainWindow::showFileChange);
    connect(m_watch, &FileWatch::unchanged, this, [this] {
        if (m_message->text() == fileText(true) || m_message->text() == fileText(false))
            m_message->hide();
    });
    connect(&m_checkTimer, &QTimer::timeout, this, &MainWindow::updateChecks);
}

/// The pages for cores of the document's mode.
void MainWindow::makePages()
{
    while (m_tabs->count() > 0)
        delete m_tabs->widget(0);
    if (m_document.mode() == OXA::Lite) {
        m_tabs->addTab(new LiteCapturePage(m_document), tr("Capture"));
        m_tabs->addTab(new SignalsPage(m_document), tr("Signals"));
    } else {
        m_tabs->addTab(new CapturePage(m_document), tr("Capture"));
        m_tabs->addTab(new SignalsPage(m_document), tr("Signals"));
        m_tabs->addTab(new PortsPage(m_document), tr("Trigger ports"));
        m_tabs->addTab(new UnitsPage(m_document), tr("Match units"));
        m_tabs->addTab(new ExpressionsPage(m_document), tr("Expressions"));
    }
    for (int i = 0; i < m_tabs->count(); ++i)
        connect(static_cast<CorePage*>(m_tabs->widget(i)), &CorePage::designWanted, this,
            &MainWindow::showDesign);
    orderTabs();
    m_message->hide();
    m_cores->refresh();
    m_checkTimer.start();
}

/// Puts the pages into the Tab order behind their tabs. New widgets would come last.
void MainWindow::orderTabs()
{
    QWidget* last = m_tabs->tabBar();
    for (int i = 0; i < m_tabs->count(); ++i) {
        QWidget* page = m_tabs->widget(i);
        QList<QWidget*> stops;
        for (QWidget* at = page->nextInFocusChain(); at != page; at = at->nextInFocusChain()) {
            if (page->isAncestorOf(at) && at->focusPolicy() & Qt::TabFocus && !at->focusProxy())
                stops += at;
        }
        for (QWidget* stop : qAsConst(stops)) {
            setTabOrder(last, stop);
            last = stop;
        }
    }
}

void MainWindow::showCore()
{
    const CorePtr core = m_cores->current();
    m_middle->setCurrentIndex(core ? 0 : 1);
    for (int i = 0; i < m_tabs->count(); ++i)
        static_cast<CorePage*>(m_tabs->widget(i))->setCore(core);
    m_rehearsal->setCore(core);
    m_design->setCore(core);
}

void MainWindow::showPage(Page page)
{
    for (int i = 0; i < m_tabs->count(); ++i) {
        if (static_cast<CorePage*>(m_tabs->widget(i))->page() == page)
            m_tabs->setCurrentIndex(i);
    }
}

void MainWindow::showChange(const Location& location)
{
    if (!location.core || location.page == Page::Capture)
        m_cores->refresh();
    for (int i = 0; i < m_tabs->count(); ++i)
        static_cast<CorePage*>(m_tabs->widget(i))->contentChanged();
    m_checkTimer.start();
}

/// Shows the place of a step that was undone or redone.
void MainWindow::showPlace(const Location& location)
{
    if (!location.core)
        return;
    m_cores->setCurrent(location.core);
    showPage(location.page);
    static_cast<CorePage*>(m_tabs->currentWidget())->reveal(location.item);
}

void MainWindow::showProblem(const OXA::Problem& problem)
{
    const CorePtr core = m_document.cores().value(problem.place.core);
    if (!core)
        return;
    showPlace({core, pageOf(problem), itemOf(problem.place)});
    static_cast<CorePage*>(m_tabs->currentWidget())->revealNamedIn(problem.text);
}

void MainWindow::updateChecks()
{
    m_problems->check(m_document.mode(), m_document.cores(), m_part->part(), m_document.design());
    m_cost->count(m_document.cores(), m_part->part());
}

void MainWindow::choosePart()
{
    m_build->setPart(m_part->part());
    m_rehearsal->setPart(m_part->part());
    QSettings settings;
    settings.setValue("part/last", m_part->key());
    if (!m_document.path().isEmpty())
        settings.setValue(partSetting(), m_part->key());
    m_checkTimer.start();
}

QString MainWindow::partSetting() const { return fileSetting("part", m_document.path()); }

QString MainWindow::workDirSetting() const { return fileSetting("workDir", m_document.path()); }

/// The part and the work directory belong to the user's file, but its format does not contain them.
void MainWindow::restoreFileSettings()
{
    const QString path = m_document.path();
    const QSettings settings;
    if (settings.contains(partSetting()))
        m_part->setKey(settings.value(partSetting()).toString());
    const QFileInfo file(path);
    const QString folder = path.isEmpty()
        ? QString()
        : QString("%1/%2_oxa").arg(file.absolutePath(), file.completeBaseName());
    m_build->setWorkDir(settings.value(workDirSetting(), folder).toString());
}

void MainWindow::showTitle()
{
    const QString path = m_document.path();
    setWindowFilePath(path);
    setWindowTitle(
        tr("%1[*] – oxa-editor")
            .arg(path.isEmpty() ? tr("Untitled") : OXA::shownText(QFileInfo(path).fileName())));
    setWindowModified(m_document.isModified());
}

void MainWindow::showFileChange(bool exists)
{
    const auto keep = [this] {
        m_document.acceptFile();
        m_document.forgetFile();
    };
    if (exists)
        m_message->showMessage(fileText(true),
            {
                {tr("&Reload"),    [this] { reload(); }},
                {tr("&Keep Mine"), keep                }
        });
    else
        m_message->showMessage(fileText(false),
            {
                {tr("&Keep Mine"), keep}
        });
}
