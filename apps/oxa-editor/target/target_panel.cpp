// SPDX-License-Identifier: Apache-2.0
#include "target_panel.h"

#include "oxa-editor/least_lines.h"
#include "oxa-editor/wave/wave_view.h"

#include "oxautils/model/shown_text.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>
#include <QTime>
#include <QTreeWidget>

#include <algorithm>

namespace {

constexpr char kAddressSetting[] = "target/openocd";
constexpr char kTapSetting[] = "target/tap";
constexpr int kProblemLines = 3; // visible

enum Column { Name, Shape, State, Columns };

// The text may be longer than its cell.
void setState(QTreeWidgetItem& item, const QString& text)
{
    item.setText(State, text);
    item.setToolTip(State, text.isEmpty() ? text : "<p>" + text.toHtmlEscaped() + "</p>");
}

}

TargetPanel::TargetPanel(Document& document, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_job(new TargetJob(this))
    , m_save(new SaveJob(this))
    , m_address(new QLineEdit(
          QSettings().value(kAddressSetting, OXA_CAPTURE::kOpenOcdAddress).toString()))
    , m_tap(new QLineEdit(QSettings().value(kTapSetting).toString()))
    , m_builtFrom(new QLineEdit)
    , m_cores(new QTreeWidget)
    , m_state(new QLabel)
    , m_problems(new QListWidget)
    , m_age(new QLabel)
    , m_view(new WaveView)
{
    auto* splitter = new QSplitter;
    splitter->addWidget(makeControls());
    splitter->addWidget(makeSamples());
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    setFocusProxy(m_address);
    connect(m_job, &TargetJob::found, this, &TargetPanel::showFound);
    connect(m_job, &TargetJob::progress, this, &TargetPanel::showProgress);
    connect(m_job, &TargetJob::finished, this, &TargetPanel::showResult);
    connect(m_save, &SaveJob::progress, this, [this](const QString& path, int percent) {
        if (m_stop->isEnabled())
            m_state->setText(tr("%1: %2 % written")
                                 .arg(QDir::toNativeSeparators(path), QString::number(percent)));
    });
    connect(m_save, &SaveJob::finished, this, &TargetPanel::showSaved);
    for (QLineEdit* field : {m_address, m_tap})
        connect(field, &QLineEdit::returnPressed, this, &TargetPanel::connectToChip);
    connect(m_cores, &QTreeWidget::currentItemChanged, this, &TargetPanel::showWaveform);
    connect(m_builtFrom, &QLineEdit::editingFinished, this,
        [this] { m_builtFromOf.insert(m_document.path(), m_builtFrom->text()); });
    connect(&m_document, &Document::replaced, this, &TargetPanel::documentReplaced);
    m_state->setText(tr("Start OpenOCD for the chip, then connect."));
    showState();
}

QWidget* TargetPanel::makeControls()
{
    m_address->setToolTip(tr(
        "The host and port of OpenOCD's Tcl server, or the serial port of an analyzer with a UART"
        " link: /dev/ttyUSB1, or /dev/ttyUSB1@9600 when it does not start at 115200"));
    m_tap->setPlaceholderText(tr("the chip with an analyzer"));
    m_tap->setToolTip(tr("The chip's name in OpenOCD's chain"));
    m_builtFrom->setPlaceholderText(tr("the configuration's file"));
    m_builtFrom->setToolTip(
        tr("The configuration that the chip was built from, when the one shown was "
           "changed since"));
    m_cores->setAccessibleName(tr("Cores of the chip"));
    m_cores->setHeaderLabels({tr("Core"), tr("Signals and depth"), tr("State")});
    m_cores->setRootIsDecorated(false);
    m_cores->setUniformRowHeights(true);
    m_cores->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    keepLeastLines(*m_cores);
    m_state->setWordWrap(true);
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* controls = new QWidget;
    auto* layout = new QVBoxLayout(controls);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* form = new QFormLayout;
    form->addRow(tr("OpenOCD or port:"), m_address);
    form->addRow(tr("TAP:"), m_tap);
    auto* file = new QHBoxLayout;
    auto* label = new QLabel(tr("Built from:"));
    label->setBuddy(m_builtFrom);
    file->addWidget(m_builtFrom, 1);
    addButton(
        tr("Bro&wse…"), tr("Choose the configuration of the chip"), &TargetPanel::browse, *file);
    form->addRow(label, file);
    layout->addLayout(form);
    auto* buttons = new QHBoxLayout;
    m_connect = addButton(tr("Connect"), tr("Find the analyzer in the chip, without arming it"),
        &TargetPanel::connectToChip, *buttons);
    m_arm = addButton(tr("Arm"),
        tr("Arm the chosen cores, and read the samples when they have triggered"),
        &TargetPanel::arm, *buttons);
    m_force = addButton(tr("Force"), tr("Force the trigger of all cores that wait for it"),
        &TargetPanel::force, *buttons);
    m_stop = addButton(tr("&Stop"), tr("Stop the cores, and read what they captured"),
        &TargetPanel::stop, *buttons);
    m_saveButton
        = addButton(tr("Save…"), tr("Write the samples to a file"), &TargetPanel::save, *buttons);
    layout->addLayout(buttons);
    layout->addWidget(m_cores, 1);
    layout->addWidget(m_state);
    return controls;
}

QWidget* TargetPanel::makeSamples()
{
    m_problems->setAccessibleName(tr("Problems of the capture"));
    m_problems->setMaximumHeight(fontMetrics().lineSpacing() * (kProblemLines + 1));
    m_problems->setWordWrap(true);
    m_problems->hide();
    m_age->hide();
    auto* samples = new QWidget;
    auto* layout = new QVBoxLayout(samples);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_problems);
    layout->addWidget(m_age);
    layout->addWidget(m_view, 1);
    return samples;
}

QPushButton* TargetPanel::addButton(
    const QString& text, const QString& tip, void (TargetPanel::*act)(), QLayout& layout)
{
    auto* button = new QPushButton(text);
    button->setToolTip(tip);
    connect(button, &QPushButton::clicked, this, act);
    layout.addWidget(button);
    return button;
}

void TargetPanel::browse()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Configuration of the Chip"),
        QFileInfo(m_document.path()).path(), tr("Analyzer configurations (*.oxa);;All files (*)"));
    if (path.isEmpty())
        return;
    m_builtFrom->setText(QDir::toNativeSeparators(path));
    m_builtFromOf.insert(m_document.path(), m_builtFrom->text());
}

/// The captured samples belong to the old document.
void TargetPanel::documentReplaced()
{
    m_builtFrom->setText(m_builtFromOf.value(m_document.path()));
    m_isForeign = m_job->isRunning();
    m_job->stop();
    m_result = {};
    m_isUnsaved = false;
    m_cores->clear();
    m_problems->hide();
    showAge(false);
    m_view->setWaveform(std::make_shared<Waveform>());
    m_state->setText(tr("Start OpenOCD for the chip, then connect."));
    showState();
}

QList<int> TargetPanel::chosenCores() const
{
    QList<int> chosen;
    for (int i = 0; i < m_cores->topLevelItemCount(); ++i) {
        if (m_cores->topLevelItem(i)->checkState(Name) == Qt::Checked)
            chosen += i;
    }
    // Before cores are found, all are chosen.
    for (int i = 0; m_cores->topLevelItemCount() == 0 && i < m_document.cores().size(); ++i)
        chosen += i;
    return chosen;
}

void TargetPanel::start(bool arm)
{
    if (isRunning() || (arm && !mayLoseSamples()))
        return;
    const QString file = QDir::fromNativeSeparators(m_builtFrom->text().trimmed());
    TargetRequest request;
    request.address = m_address->text().trimmed();
    request.tap = m_tap->text().trimmed();
    for (const CorePtr& core : m_document.cores())
        request.cores += core->clone();
    request.configFile = m_document.path().isEmpty() ? "untitled.oxa" : m_document.path();
    request.builtFrom = file.isEmpty() ? m_document.path() : file;
    request.arm = arm;
    request.chosen = chosenCores();
    m_armed = request.chosen;
    QSettings().setValue(kAddressSetting, request.address);
    QSettings().setValue(kTapSetting, request.tap);
    m_problems->hide();
    m_isArming = arm;
    m_isForeign = false;
    m_isFound = false;
    if (arm) {
        showAge(!m_result.capture->empty());
        for (int i = 0; i < m_cores->topLevelItemCount(); ++i)
            setState(*m_cores->topLevelItem(i), {});
    }
    m_state->setText(tr("Connecting to OpenOCD at %1…").arg(request.address));
    m_job->start(request);
    showState();
    Q_EMIT runningChanged();
}

void TargetPanel::stop()
{
    if (!isRunning())
        return;
    m_stop->setEnabled(false);
    m_force->setEnabled(false);
    m_state->setText(isSaving() ? tr("Stopping; the file is not changed…")
                                : tr("Stopping; reading what was captured…"));
    m_job->stop();
    m_save->stop();
}

void TargetPanel::force() { m_job->force(); }

void TargetPanel::showFound(const QList<FoundCore>& cores, const QString& builtFrom)
{
    if (m_isForeign)
        return;
    m_isFound = true;
    const QList<int> chosen = m_armed;
    if (m_cores->topLevelItemCount() != cores.size()) {
        m_cores->clear();
        for (int i = 0; i < cores.size(); ++i) {
            auto* item = new QTreeWidgetItem(m_cores);
            item->setCheckState(Name, chosen.contains(i) ? Qt::Checked : Qt::Unchecked);
        }
    }
    for (int i = 0; i < cores.size(); ++i) {
        QTreeWidgetItem* item = m_cores->topLevelItem(i);
        item->setText(Name, cores.at(i).name);
        item->setText(Shape, cores.at(i).shape);
        setState(*item, {});
    }
    if (!m_cores->currentItem())
        m_cores->setCurrentItem(m_cores->topLevelItem(0));
    if (m_stop->isEnabled())
        m_state->setText(builtFrom.isEmpty()
                ? tr("The chip is built from the configuration shown.")
                : tr("The chip is built from %1. Later changes are applied where they need no "
                     "synthesis.")
                      .arg(OXA::shownText(builtFrom)));
}

void TargetPanel::showProgress(const QStringList& texts)
{
    if (m_isForeign)
        return;
    for (int i = 0; i < texts.size() && i < m_armed.size(); ++i) {
        if (QTreeWidgetItem* item = m_cores->topLevelItem(m_armed.at(i)))
            setState(*item, texts.at(i));
    }
    m_force->setEnabled(m_stop->isEnabled());
}

void TargetPanel::showResult(const TargetResult& result)
{
    if (m_isForeign) {
        showState();
        Q_EMIT runningChanged();
        return;
    }
    m_problems->clear();
    for (const QString& text : result.problems + result.warnings)
        m_problems->addItem(OXA::shownText(text));
    m_problems->setVisible(m_problems->count() > 0);
    for (int i = 0; m_isArming && i < m_cores->topLevelItemCount(); ++i)
        setState(*m_cores->topLevelItem(i), m_armed.contains(i) ? tr("not captured") : QString());
    for (size_t i = 0; i < result.places.size(); ++i) {
        if (QTreeWidgetItem* item = m_cores->topLevelItem(result.places[i]))
            setState(*item, result.remarks.at(int(i)));
    }
    if (!result.capture->empty()) { // else keep the earlier samples
        m_result = result;
        m_capturedAt = QTime::currentTime().toString("HH:mm:ss");
        showAge(false);
        m_isUnsaved = std::any_of(result.capture->begin(), result.capture->end(),
            [](const OXA_CAPTURE::CapturedCore& core) { return !core.windows.empty(); });
    }
    if (!result.problems.isEmpty())
        m_state->setText(!m_isFound ? tr("Not connected: %1").arg(m_problems->item(0)->text())
                : result.capture->empty()
                ? tr("Nothing was captured: %1").arg(m_problems->item(0)->text())
                : tr("Not everything was captured."));
    else if (!result.capture->empty())
        m_state->setText(tr("Captured."));
    else if (!m_stop->isEnabled())
        m_state->setText(tr("Stopped."));
    showWaveform();
    showState();
    Q_EMIT runningChanged();
}

/// Samples that are not of the last run look so.
void TargetPanel::showAge(bool isEarlier)
{
    m_age->setText(isEarlier
            ? tr("These samples were captured at %1, not by the last run.").arg(m_capturedAt)
            : QString());
    m_age->setVisible(isEarlier);
    m_view->setDimmed(isEarlier);
}

/// Shows the samples of the current core.
void TargetPanel::showWaveform()
{
    m_view->setNamesOf(m_document.path());
    const int place = m_cores->indexOfTopLevelItem(m_cores->currentItem());
    for (size_t i = 0; i < m_result.places.size(); ++i) {
        if (m_result.places[i] == place)
            return m_view->setWaveform(m_result.waveforms[i]);
    }
    m_view->setWaveform(std::make_shared<Waveform>());
}

void TargetPanel::showState()
{
    m_connect->setEnabled(!isRunning());
    m_arm->setEnabled(!isRunning());
    m_force->setEnabled(false); // until a core waits
    m_stop->setEnabled(isRunning());
    m_saveButton->setEnabled(canSave());
    m_cores->setEnabled(!isRunning() || m_cores->topLevelItemCount() > 0);
}
