// SPDX-License-Identifier: Apache-2.0
#include "target_panel.h"

#include "target_link.h"

#include "oxa-editor/beside_samples.h"
#include "oxa-editor/wave/wave_view.h"

#include "oxautils/model/shown_text.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>

#include <algorithm>

namespace {

enum Column { Name, Shape, State, Columns };

/// How a run begins.
QString hintText()
{
    return TargetPanel::tr("Start OpenOCD for the target, or enter its serial port; then connect.");
}

// The text may be longer than its cell.
void setState(QTreeWidgetItem& item, const QString& text)
{
    item.setText(State, text);
    item.setToolTip(State, text.isEmpty() ? text : "<p>" + text.toHtmlEscaped() + "</p>");
}

}

TargetPanel::TargetPanel(Document& document, WaveSettings& waves, CaptureHistory& history,
    CaptureSaver& saver, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_waves(waves)
    , m_history(history)
    , m_saver(saver)
    , m_job(new TargetJob(this))
    , m_builtFrom(new QLineEdit)
    , m_cores(new QTreeWidget)
    , m_joint(new QCheckBox(tr("All cores at their times")))
    , m_axis(new QLabel)
    , m_state(new QLabel)
    , m_problems(new QListWidget)
    , m_age(new QLabel)
    , m_view(new WaveView(&waves))
{
    QWidget* controls = makeControls();
    layOutBeside(*this, controls, makeSamples());
    setFocusProxy(m_link->addressField());
    connect(m_job, &TargetJob::found, this, &TargetPanel::showFound);
    connect(m_job, &TargetJob::progress, this, &TargetPanel::showProgress);
    connect(m_job, &TargetJob::finished, this, &TargetPanel::takeResult);
    connect(&m_saver, &CaptureSaver::started, this, [this] {
        showState();
        Q_EMIT runningChanged();
    });
    connect(&m_saver, &CaptureSaver::progress, this, [this](const QString& path, int percent) {
        if (m_stop->isEnabled())
            m_state->setText(tr("%1: %2 % written")
                                 .arg(QDir::toNativeSeparators(path), QString::number(percent)));
    });
    connect(&m_saver, &CaptureSaver::finished, this, &TargetPanel::showSaved);
    connect(m_job, &TargetJob::captured, this, &TargetPanel::showLatest);
    connect(m_link, &TargetLink::connectWanted, this, &TargetPanel::connectToChip);
    connect(m_link, &TargetLink::ready, this, &TargetPanel::runWaiting);
    connect(m_link, &TargetLink::ended, this, &TargetPanel::linkEnded);
    connect(m_cores, &QTreeWidget::currentItemChanged, this, &TargetPanel::showWaveform);
    connect(m_builtFrom, &QLineEdit::editingFinished, this,
        [this] { m_builtFromOf.insert(m_document.path(), m_builtFrom->text()); });
    connect(&m_document, &Document::replaced, this, &TargetPanel::documentReplaced);
    m_state->setText(hintText());
    showState();
}

/// The captured samples belong to the old document; they stay in the history.
void TargetPanel::documentReplaced()
{
    m_builtFrom->setText(m_builtFromOf.value(m_document.path()));
    m_isForeign = m_job->isRunning();
    m_waiting.reset();
    m_job->stop();
    m_record.reset();
    m_cores->clear();
    m_problems->hide();
    showAge(false);
    showWaveform();
    m_state->setText(hintText());
    showState();
}

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
                ? tr("The target was built from the configuration shown.")
                : tr("The target was built from %1. Later changes are applied where they need no "
                     "synthesis.")
                      .arg(OXA::shownText(builtFrom)));
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

void TargetPanel::clearStates()
{
    for (int i = 0; i < m_cores->topLevelItemCount(); ++i)
        setState(*m_cores->topLevelItem(i), {});
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
    if (!result.capture->empty())
        showAge(false);
    if (!result.problems.isEmpty())
        m_state->setText(!m_isFound ? tr("Not connected: %1").arg(m_problems->item(0)->text())
                : result.capture->empty()
                ? tr("Nothing was captured: %1").arg(m_problems->item(0)->text())
                : tr("Not everything was captured."));
    else if (!result.capture->empty())
        m_state->setText(result.series.isEmpty() ? tr("Captured.") : result.series);
    else if (!m_stop->isEnabled())
        m_state->setText(tr("Stopped."));
    showWaveform();
}

/// Samples that are not of the last run look so.
void TargetPanel::showAge(bool isEarlier)
{
    m_age->setText(isEarlier
            ? tr("These samples were captured at %1, not by the last run.").arg(m_record->time)
            : QString());
    m_age->setVisible(isEarlier);
    m_view->setDimmed(isEarlier);
}

/// Shows the samples of the current core.
void TargetPanel::showWaveform()
{
    m_view->setNamesOf(m_document.path());
    const bool mayJoin = m_record && m_places.size() > 1;
    const bool isJoint = mayJoin && m_joint->isChecked();
    m_joint->setVisible(mayJoin);
    m_axis->setVisible(isJoint);
    if (isJoint) {
        QString text;
        const WaveformPtr joint = jointWaveform(*m_record, m_waves, text);
        m_axis->setText(text);
        return m_view->setWaveform(joint ? joint : std::make_shared<Waveform>());
    }
    const int place = m_cores->indexOfTopLevelItem(m_cores->currentItem());
    for (size_t i = 0; m_record && i < m_places.size(); ++i) {
        if (m_places[i] == place)
            return m_view->setWaveform(m_record->waveforms[i]);
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

void TargetPanel::save() { m_saver.ask(m_record); }

void TargetPanel::saveTo(const QString& path, const OXA_CAPTURE::CaptureFileOptions& options)
{
    if (canSave())
        m_saver.start(m_record, path, options);
}

void TargetPanel::showSaved(const QString& path, const QString& error)
{
    m_state->setText(
        error.isEmpty() ? tr("%1: written").arg(QDir::toNativeSeparators(path)) : error);
    showState();
    Q_EMIT runningChanged();
}
