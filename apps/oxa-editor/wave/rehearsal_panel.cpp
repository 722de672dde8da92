// SPDX-License-Identifier: Apache-2.0
#include "rehearsal_panel.h"

#include "wave_view.h"

#include "oxa-editor/least_lines.h"

#include "oxautils/model/shown_text.h"

#include <QDir>
#include <QFileDialog>
#include <QFileSystemWatcher>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace {

constexpr int kProblemLines = 3; // visible
constexpr int kWidestPath = 140; // characters
constexpr int kRemarks = 3; // windows that are listed

}

RehearsalPanel::RehearsalPanel(Document& document, WaveSettings& waves, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_rehearsal(new Rehearsal(this))
    , m_watcher(new QFileSystemWatcher(this))
    , m_path(new QLineEdit)
    , m_state(new QLabel)
    , m_problems(new QListWidget)
    , m_view(new WaveView(&waves))
{
    layOut();
    connect(m_path, &QLineEdit::editingFinished, this, &RehearsalPanel::takeStimulus);
    connect(m_rehearsal, &Rehearsal::finished, this, &RehearsalPanel::show);
    connect(m_rehearsal, &Rehearsal::progress, this, [this](int percent) {
        m_state->setText(tr("Reading the stimulus: %1 %").arg(percent));
        m_state->show();
    });
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, &RehearsalPanel::rehearse);
    connect(&m_document, &Document::changed, this, &RehearsalPanel::rehearse);
    connect(&m_document, &Document::replaced, this, &RehearsalPanel::restoreStimulus);
    connect(&m_document, &Document::pathChanged, this, [this] {
        m_stimuli.insert(m_document.path(), stimulus());
        m_view->setNamesOf(m_document.path());
    });
}

void RehearsalPanel::layOut()
{
    m_path->setPlaceholderText(tr("a waveform of a simulation, or an earlier capture"));
    m_problems->setAccessibleName(tr("Problems that prevent triggering"));
    keepMostLines(*m_problems, kProblemLines);
    m_problems->setWordWrap(true);
    m_problems->hide();
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* label = new QLabel(tr("&Stimulus:"));
    label->setBuddy(m_path);
    auto* browse = new QPushButton(tr("Bro&wse…"));
    connect(browse, &QPushButton::clicked, this, &RehearsalPanel::browse);

    auto* where = new QHBoxLayout;
    where->addWidget(label);
    m_path->setMaximumWidth(fontMetrics().averageCharWidth() * kWidestPath);
    where->addWidget(m_path, 1);
    where->addWidget(browse);
    where->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(where);
    layout->addWidget(m_state);
    layout->addWidget(m_problems);
    layout->addWidget(m_view, 1);
}

void RehearsalPanel::setCore(const CorePtr& core)
{
    m_core = core;
    rehearse();
}

void RehearsalPanel::setPart(const DEV::ChipInfo& part)
{
    m_part = part;
    rehearse();
}

QString RehearsalPanel::stimulus() const
{
    return QDir::fromNativeSeparators(m_path->text().trimmed());
}

void RehearsalPanel::setStimulus(const QString& path)
{
    m_path->setText(QDir::toNativeSeparators(path));
    takeStimulus();
}

void RehearsalPanel::browse()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Stimulus"), stimulus(),
        tr("Waveforms and captures (*.vcd *.vcd.gz *.fst *.sr *.csv);;All files (*)"));
    if (!path.isEmpty())
        setStimulus(path);
}

void RehearsalPanel::takeStimulus()
{
    if (m_stimuli.value(m_document.path()) == stimulus())
        return;
    m_stimuli.insert(m_document.path(), stimulus());
    rehearse();
}

void RehearsalPanel::restoreStimulus()
{
    m_core = nullptr; // it belonged to the old document
    m_path->setText(QDir::toNativeSeparators(m_stimuli.value(m_document.path())));
    rehearse();
}

void RehearsalPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    rehearse();
}

void RehearsalPanel::rehearse()
{
    if (!isVisible())
        return;
    if (!m_watcher->files().isEmpty())
        m_watcher->removePaths(m_watcher->files());
    if (stimulus().isEmpty() || !m_core) {
        m_rehearsal->drop();
        RehearsalResult nothing;
        nothing.remarks += stimulus().isEmpty()
            ? tr("Choose a stimulus to see what the core would capture.")
            : tr("There is no core.");
        return show(nothing);
    }
    m_watcher->addPath(stimulus());
    RehearsalRequest request;
    request.stimulus = stimulus();
    request.cores = coresThatReach(m_document.cores(), m_core);
    request.arg.configFile = m_document.path().isEmpty() ? "untitled.oxa" : m_document.path();
    request.arg.device = m_part.partNumber;
    request.arg.package = m_part.name;
    m_rehearsal->ask(request);
}

void RehearsalPanel::show(const RehearsalResult& result)
{
    m_problems->clear();
    for (const QString& problem : result.problems)
        m_problems->addItem(OXA::shownText(problem));
    m_problems->setVisible(!result.problems.isEmpty());
    QStringList remarks = result.remarks.mid(0, kRemarks);
    if (result.remarks.size() > kRemarks)
        remarks += tr("and %n more", nullptr, result.remarks.size() - kRemarks);
    m_state->setText(remarks.join("; "));
    m_state->setVisible(!remarks.isEmpty());
    setFocusProxy(stimulus().isEmpty() ? static_cast<QWidget*>(m_path) : m_view);
    m_view->setNamesOf(m_document.path());
    m_view->setWaveform(result.waveform ? result.waveform : std::make_shared<Waveform>());
}
