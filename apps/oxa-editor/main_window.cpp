// SPDX-License-Identifier: Apache-2.0
#include "main_window.h"

#include "build_panel.h"
#include "captures/captures_panel.h"
#include "core_list.h"
#include "core_page.h"
#include "core_pages.h"
#include "cost_panel.h"
#include "design/design_panel.h"
#include "file_watch.h"
#include "help_window.h"
#include "message_bar.h"
#include "part_choice.h"
#include "problem_location.h"
#include "problems_panel.h"
#include "recent_files.h"
#include "scrolling.h"
#include "target/target_panel.h"
#include "undo_keys.h"
#include "wave/rehearsal_panel.h"
#include "wave/wave_settings.h"
#include "welcome_page.h"

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
#include <QVBoxLayout>

namespace {

// In `m_content`.
enum Content { kConfiguration, kWelcome };

constexpr int kJudgeDelay = 150; // ms after an edit

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
    , m_content(new QStackedWidget)
    , m_welcome(new WelcomePage)
    , m_pages(new CorePages(m_document))
    , m_middle(new QStackedWidget)
    , m_message(new MessageBar)
    , m_problems(new ProblemsPanel)
    , m_part(new PartChoice)
    , m_cost(new CostPanel)
    , m_build(new BuildPanel(m_document))
    , m_buildDock(new QDockWidget(tr("Build")))
    , m_waves(new WaveSettings(&m_document, this))
    , m_rehearsal(new RehearsalPanel(m_document, *m_waves))
    , m_rehearsalDock(new QDockWidget(tr("Rehearsal")))
    , m_design(new DesignPanel(m_document))
    , m_designDock(new QDockWidget(tr("Design")))
    , m_history(new CaptureHistory(this))
    , m_saver(new CaptureSaver(*m_history, *m_waves, this))
    , m_target(new TargetPanel(m_document, *m_waves, *m_history, *m_saver))
    , m_targetDock(new QDockWidget(tr("Target")))
    , m_captures(new CapturesPanel(m_document, *m_waves, *m_history, *m_saver))
    , m_capturesDock(new QDockWidget(tr("Captures")))
    , m_recent(new RecentFiles(tr("Open &Recent"), "recentFiles", this))
    , m_recentCaptures(new RecentFiles(tr("Open Recent Cap&ture"), "recentCaptures", this))
    , m_watch(new FileWatch(m_document, this))
{
    m_checkTimer.setSingleShot(true);
    m_checkTimer.setInterval(kJudgeDelay);
    setAcceptDrops(true);
    new UndoKeys(this);
    new DialogHelp(this);
    layOut();
    makeActions();
    connectParts();
    connectDesign();
    connectCaptures();
    m_document.create(OXA::Standard);
    showWelcome();
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
    delete m_capturesDock;
    delete takeCentralWidget();
}

void MainWindow::layOut()
{
    auto* empty = new QLabel(tr("There is no core. Add one to begin."));
    empty->setAlignment(Qt::AlignCenter);
    m_middle->addWidget(m_pages);
    m_middle->addWidget(empty);
    auto* splitter = new QSplitter;
    splitter->addWidget(m_cores);
    splitter->addWidget(m_middle);
    splitter->addWidget(makeSide());
    splitter->setStretchFactor(1, 1);
    const int character = fontMetrics().averageCharWidth();
    splitter->setSizes({character * 26, character * 90, character * 44});
    splitter->setChildrenCollapsible(false);

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_message);
    layout->addWidget(m_content, 1);
    m_content->addWidget(splitter);
    m_content->addWidget(scrolling(m_welcome));
    setCentralWidget(content);
    resize(character * 170, fontMetrics().height() * 46);
    layOutDocks();
}

QWidget* MainWindow::makeSide()
{
    auto* cost = new QWidget;
    auto* costLayout = new QVBoxLayout(cost);
    auto* form = new QFormLayout;
    form->addRow(tr("Part:"), m_part);
    costLayout->addLayout(form);
    costLayout->addWidget(scrolling(m_cost), 1);
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
    connect(&m_document, &Document::replaced, this, &MainWindow::showDocument);
    connect(m_pages, &CorePages::designWanted, this, &MainWindow::showDesign);
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
    connect(m_welcome, &WelcomePage::chosen, this, &MainWindow::open);
    connect(m_welcome, &WelcomePage::openWanted, this, &MainWindow::chooseFile);
    connect(m_welcome, &WelcomePage::designWanted, this, &MainWindow::beginWithDesign);
    connect(m_welcome, &WelcomePage::exampleWanted, this, &MainWindow::openExample);
    connect(m_welcome, &WelcomePage::standardWanted, this, [this] { newDocument(OXA::Standard); });
    connect(m_welcome, &WelcomePage::liteWanted, this, [this] { newDocument(OXA::Lite); });
    connect(m_watch, &FileWatch::changed, this, &MainWindow::showFileChange);
    connect(m_watch, &FileWatch::unchanged, this, [this] {
        if (m_message->text() == fileText(true) || m_message->text() == fileText(false))
            m_message->hide();
    });
    connect(&m_checkTimer, &QTimer::timeout, this, &MainWindow::updateChecks);
}

void MainWindow::showWelcome()
{
    m_welcome->setFiles(m_recent->paths());
    m_content->setCurrentIndex(kWelcome);
}

void MainWindow::leaveWelcome() { m_content->setCurrentIndex(kConfiguration); }

void MainWindow::showDocument()
{
    leaveWelcome();
    m_pages->makePages();
    m_message->hide();
    m_cores->refresh();
    m_checkTimer.start();
}

void MainWindow::showCore()
{
    const CorePtr core = m_cores->current();
    m_middle->setCurrentIndex(core ? 0 : 1);
    m_pages->setCore(core);
    m_rehearsal->setCore(core);
    m_design->setCore(core);
}

void MainWindow::showChange(const Location& location)
{
    leaveWelcome();
    if (!location.core || location.page == Page::Capture)
        m_cores->refresh();
    m_pages->contentChanged();
    m_checkTimer.start();
}

/// Shows the place of a step that was undone or redone.
void MainWindow::showPlace(const Location& location)
{
    if (!location.core)
        return;
    m_cores->setCurrent(location.core);
    m_pages->showPage(location.page);
    m_pages->page()->reveal(location.item);
}

void MainWindow::showProblem(const OXA::Problem& problem)
{
    const Location location = locationOf(problem, m_document.cores());
    if (!location.core)
        return;
    showPlace(location);
    m_pages->page()->revealNamedIn(problem.text);
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

/// The name of the document's file, to show.
QString MainWindow::fileName() const
{
    const QString path = m_document.path();
    return path.isEmpty() ? tr("Untitled") : OXA::shownText(QFileInfo(path).fileName());
}

void MainWindow::showTitle()
{
    setWindowFilePath(m_document.path());
    setWindowTitle(tr("%1[*] – oxa-editor").arg(fileName()));
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
