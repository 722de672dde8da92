// SPDX-License-Identifier: Apache-2.0
#include "build_panel.h"

#include "document.h"
#include "file_viewer.h"
#include "least_lines.h"

#include "files/replace_file.h"

#include "oxautils/generate/file_names.h"
#include "oxautils/generate/inputs.h"
#include "oxautils/generate/installed.h"
#include "oxautils/model/shown_text.h"
#include "oxautils/model/verilog_word.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kWidestPath = 140; // characters
constexpr int kMostLines = 5000; // of the log

}

BuildPanel::BuildPanel(Document& document, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_job(new BuildJob(this))
    , m_workDir(new QLineEdit)
    , m_generate(new QPushButton(tr("Generate")))
    , m_synthesize(new QPushButton(tr("Synthesize")))
    , m_stop(new QPushButton(tr("&Stop")))
    , m_progress(new QProgressBar)
    , m_stage(new QLabel(tr("Ready")))
    , m_log(new QListWidget)
{
    layOut();
    connect(m_generate, &QPushButton::clicked, this, &BuildPanel::generate);
    connect(m_synthesize, &QPushButton::clicked, this, &BuildPanel::synthesize);
    connect(m_stop, &QPushButton::clicked, this, &BuildPanel::stop);
    connect(m_workDir, &QLineEdit::editingFinished, this, &BuildPanel::workDirChanged);
    connect(m_log, &QListWidget::itemActivated, this, &BuildPanel::openPlace);
    connect(m_log, &QListWidget::itemClicked, this, &BuildPanel::openPlace);
    connect(m_job, &BuildJob::progress, this, &BuildPanel::showProgress);
    connect(m_job, &BuildJob::logged, this, &BuildPanel::say);
    connect(m_job, &BuildJob::finished, this, &BuildPanel::showFinish);
    connect(&m_seconds, &QTimer::timeout, this, [this] { setStage(m_stageText); });
    m_stage->setWordWrap(true);
    showState();
}

void BuildPanel::layOut()
{
    m_generate->setToolTip(tr("Write the Verilog of the analyzer into the work directory (F7)"));
    m_synthesize->setToolTip(tr("Write the Verilog and synthesize a netlist (F8)"));
    m_progress->setAccessibleName(tr("Progress"));
    QSizePolicy policy = m_progress->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_progress->setSizePolicy(policy);
    m_log->setAccessibleName(tr("Log"));
    keepLeastLines(*m_log);
    m_log->setUniformItemSizes(true);
    m_log->setTextElideMode(Qt::ElideNone);
    auto* browse = new QPushButton(tr("Bro&wse…"));
    connect(browse, &QPushButton::clicked, this, &BuildPanel::browse);
    auto* label = new QLabel(tr("Wor&k directory:"));
    label->setBuddy(m_workDir);

    auto* where = new QHBoxLayout;
    where->addWidget(label);
    m_workDir->setMaximumWidth(fontMetrics().averageCharWidth() * kWidestPath);
    where->addWidget(m_workDir, 1);
    where->addWidget(browse);
    where->addWidget(m_generate);
    where->addWidget(m_synthesize);
    where->addWidget(m_stop);
    where->addStretch();
    auto* state = new QHBoxLayout;
    state->addWidget(m_stage, 2);
    state->addWidget(m_progress, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(where);
    layout->addLayout(state);
    layout->addWidget(m_log, 1);
}

QString BuildPanel::workDir() const
{
    return QDir::fromNativeSeparators(m_workDir->text().trimmed());
}

void BuildPanel::setWorkDir(const QString& path)
{
    m_workDir->setText(QDir::toNativeSeparators(path));
}

void BuildPanel::browse()
{
    const QString path = QFileDialog::getExistingDirectory(this, tr("Work Directory"), workDir());
    if (path.isEmpty())
        return;
    setWorkDir(path);
    Q_EMIT workDirChanged();
}

bool BuildPanel::mayEmptyWorkDir(const OXA::OxaArg& arg)
{
    QString lost;
    switch (OXA::workDirFault(arg.workDir, OXA::inputsOf(arg, {m_document.path()}), lost)) {
    case OXA::WorkDirFault::None:
        return true;
    case OXA::WorkDirFault::HoldsForeignFiles:
        return QMessageBox::question(this, tr("Empty the Work Directory?"),
                   tr("The directory %1 is emptied before files are generated. It contains files "
                      "that were not generated. Delete them?")
                       .arg(QDir::toNativeSeparators(arg.workDir)),
                   QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
            == QMessageBox::Yes;
    case OXA::WorkDirFault::HoldsInput:
        setStage(tr("The work directory would be emptied, but it contains, or is in, %1. Choose "
                    "another.")
                     .arg(QDir::toNativeSeparators(lost)));
        break;
    default:
        setStage(tr("Choose a work directory first."));
    }
    m_workDir->setFocus();
    return false;
}

/// A name that is not one token in Verilog could add code. The build checks it too, but a file
/// cannot contain some of these names.
bool BuildPanel::namesStayWords()
{
    const bool lite = m_document.mode() == OXA::Lite;
    const QStringList faults = lite ? OXA::wordFaults(liteCores(m_document.cores()))
                                    : OXA::wordFaults(standardCores(m_document.cores()));
    for (const QString& fault : faults)
        say(fault);
    if (!faults.isEmpty())
        setStage(tr("Nothing was generated: correct the signal names first."));
    return faults.isEmpty();
}

/// Writes the shown configuration to a file for the job, so that editing can go on.
bool BuildPanel::writeSnapshot(OXA::OxaArg& arg)
{
    QString error;
    const QByteArray bytes = m_document.bytes(&error);
    m_snapshot = std::make_unique<QTemporaryDir>();
    const QString name = m_document.path().isEmpty() ? QString("untitled.oxa")
                                                     : QFileInfo(m_document.path()).fileName();
    arg.configFile = m_snapshot->filePath(name);
    if (!bytes.isEmpty() && OXA_FILES::replaceFile(arg.configFile, bytes, &error))
        return true;
    setStage(error);
    return false;
}

/// Logs the problems that prevent building; false when there are any.
bool BuildPanel::passesCheck(const OXA::BuildRun& build)
{
    const OXA::BuildResult checked = build.check();
    for (const OXA::Problem& problem : checked.problems) {
        if (!stopsBuild(problem))
            continue;
        const QString text = tr("%1: %2. %3").arg(problem.place.text(), problem.text, problem.hint);
        say(OXA::shownText(text));
    }
    for (const QString& message : checked.messages)
        say(message);
    if (checked.end == OXA::BuildEnd::NoCores)
        setStage(tr("Nothing was generated"));
    else if (checked.end != OXA::BuildEnd::Done)
        setStage(tr("Nothing was generated: correct the problems in the log"));
    return checked.end == OXA::BuildEnd::Done;
}

void BuildPanel::start(bool synthesize)
{
    if (isRunning())
        return;
    if (m_part.partNumber.isEmpty()) {
        setStage(tr("Choose a part first."));
        Q_EMIT partNeeded();
        return;
    }
    OXA::OxaArg arg;
    arg.ipDir = OXA::installedIpDir();
    arg.device = m_part.partNumber;
    arg.package = m_part.name;
    arg.workDir = workDir();
    arg.outputFile = arg.workDir + "/" + OXA::NETLIST_FILE_NAME;
    m_log->clear();
    if (!namesStayWords() || !writeSnapshot(arg))
        return;
    auto build = std::make_unique<OXA::BuildRun>(arg, synthesize);
    build->remembered.original = m_document.path().isEmpty()
        ? "untitled.oxa"
        : QFileInfo(m_document.path()).absoluteFilePath();
    build->remembered.device = arg.device;
    if (!passesCheck(*build) || !mayEmptyWorkDir(arg))
        return;
    m_builtPart = m_part;
    m_time.start();
    m_seconds.start(1000);
    m_job->start(std::move(build));
    setStage(tr("Generating"));
    showState();
    Q_EMIT runningChanged();
}

void BuildPanel::stop()
{
    if (!isRunning())
        return;
    m_stop->setEnabled(false);
    setStage(tr("Stopping…"));
    m_job->stop();
}

void BuildPanel::showProgress(const QString& stage, int percent)
{
    if (!m_stop->isEnabled())
        return; // stopping
    m_progress->setRange(0, percent < 0 ? 0 : 100);
    m_progress->setValue(percent);
    setStage(stage);
}

void BuildPanel::showFinish(const OXA::BuildResult& result)
{
    m_snapshot.reset();
    m_seconds.stop();
    for (const QString& text : result.messages + result.files)
        say(text);
    setStage(stageAfter(result));
    showState();
    Q_EMIT runningChanged();
}

QString BuildPanel::stageAfter(const OXA::BuildResult& result) const
{
    QStringList done = {tr("Done in %1 s").arg(m_time.elapsed() / 1000)};
    if (!result.cells.isEmpty())
        done += amountsText(result.takes);
    switch (result.end) {
    case OXA::BuildEnd::Done:
        return tr("%1: %2").arg(done.join(": "), m_workDir->text());
    case OXA::BuildEnd::TooLarge:
        return tr("The netlist does not fit the part: %1")
            .arg(result.cells.isEmpty() ? m_workDir->text() : amountsText(result.takes));
    case OXA::BuildEnd::Stopped:
        return tr("Stopped");
    case OXA::BuildEnd::Failed:
        return tr("Failed; the engine's input and log are in the work directory");
    default:
        return tr("Nothing was generated");
    }
}

/// "812 of 8640 look-up tables, 3 of 26 block SRAMs"
QString BuildPanel::amountsText(const OXA_TOOL::AnalyzerAmounts& takes) const
{
    const OXA_TOOL::AnalyzerAmounts available = OXA_TOOL::amountsOf(m_builtPart);
    QStringList texts;
    for (const OXA_TOOL::AnalyzerResource& resource : OXA_TOOL::analyzerResources()) {
        const qint64 amount = takes.*resource.amount;
        const qint64 most = available.*resource.amount;
        if (amount > 0)
            texts += tr("%1 of %2 %3")
                         .arg(QString::number(amount), most > 0 ? QString::number(most) : tr("?"),
                             resource.units);
    }
    return texts.join(", ");
}

/// Shows the stage, during a run with its time, here and wherever another panel is in front.
void BuildPanel::setStage(const QString& text)
{
    m_stageText = text;
    m_stage->setText(
        isRunning() ? tr("%1, %2 s").arg(text, QString::number(m_time.elapsed() / 1000)) : text);
    Q_EMIT stageChanged(m_stage->text());
}

/// Adds a line to the log. A line with a file name opens that file when activated.
void BuildPanel::say(const QString& line)
{
    for (const QString& text : line.split('\n')) {
        if (text.trimmed().isEmpty())
            continue;
        auto* item = new QListWidgetItem(OXA::shownText(text));
        if (!placeIn(text, workDir()).path.isEmpty()) {
            item->setForeground(palette().link());
            item->setToolTip(tr("Show the file (Enter)"));
        }
        m_log->addItem(item);
    }
    while (m_log->count() > kMostLines)
        delete m_log->takeItem(0);
    m_log->scrollToBottom();
}

void BuildPanel::showState()
{
    m_generate->setEnabled(!isRunning());
    m_synthesize->setEnabled(!isRunning());
    m_stop->setEnabled(isRunning());
    m_workDir->setReadOnly(isRunning());
    m_progress->setVisible(isRunning());
}

void BuildPanel::openPlace()
{
    const QListWidgetItem* item = m_log->currentItem();
    const FilePlace place = item ? placeIn(item->text(), workDir()) : FilePlace();
    if (place.path.isEmpty())
        return;
    delete m_viewer; // of an earlier click
    m_viewer = new FileViewer(place, this);
    m_viewer->show();
}
