// SPDX-License-Identifier: Apache-2.0
// The functions of the panel that begin and end runs.

#include "target_panel.h"

#include "repeat_rows.h"
#include "target_link.h"

#include "oxa-editor/wave/wave_settings.h"

#include "oxautils/config/names_file.h"
#include "oxautils/model/shown_text.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTime>

#include <algorithm>

bool TargetPanel::isRunning() const { return m_job->isRunning() || m_waiting || isSaving(); }

void TargetPanel::start(bool arm)
{
    TargetRequest request;
    if (isRunning() || !plan(arm, request))
        return;
    m_link->remember();
    m_problems->hide();
    m_waiting = request;
    if (!m_link->needsStart() && !m_link->isStarting())
        return runWaiting();
    m_state->setText(tr("Starting OpenOCD…"));
    showState();
    Q_EMIT runningChanged();
    if (m_link->needsStart())
        m_link->start();
}

/// Collects what the panel shows. False when it cannot be used.
bool TargetPanel::plan(bool arm, TargetRequest& request)
{
    const QString file = QDir::fromNativeSeparators(m_builtFrom->text().trimmed());
    for (const CorePtr& core : m_document.cores()) {
        request.cores += core->clone();
        request.clocks.insert(core->index(), m_waves.clock(core->index()));
    }
    request.configFile = m_document.path().isEmpty() ? "untitled.oxa" : m_document.path();
    request.builtFrom = file.isEmpty() ? m_document.path() : file;
    request.arm = arm;
    request.chosen = chosenCores();
    request.repeat = m_repeat->count();
    OXA::KnownNames names;
    OXA::readKnownNames(m_document.path(), names, nullptr);
    request.fileOptions.states = names.states;
    QString error;
    if (!arm
        || m_repeat->takePattern(
            QFileInfo(m_document.path()).absolutePath(), request.pattern, &error))
        return true;
    if (!error.isEmpty())
        m_state->setText(OXA::shownText(error));
    return false;
}

/// Begins the run that waits for OpenOCD.
void TargetPanel::runWaiting()
{
    if (!m_waiting)
        return;
    TargetRequest request = *m_waiting;
    m_waiting.reset();
    request.address = m_link->address();
    request.tap = m_link->tap();
    m_armed = request.chosen;
    QStringList asked;
    for (const int place : m_armed)
        asked += place < request.cores.size() ? askedText(*request.cores.at(place))
                                              : tr("core at place %1").arg(place);
    m_asked = asked.join("; ");
    m_askedFrom = m_document.path();
    m_isArming = request.arm;
    m_isForeign = false;
    m_isFound = false;
    if (request.arm) {
        showAge(m_record != nullptr);
        clearStates();
    }
    m_state->setText(tr("Connecting to OpenOCD at %1…").arg(request.address));
    m_job->start(request);
    showState();
    Q_EMIT runningChanged();
}

/// OpenOCD has ended: before it was ready, or during a run, which then fails by itself.
void TargetPanel::linkEnded(const QString& reason)
{
    const bool waited = m_waiting.has_value();
    m_waiting.reset();
    if (!m_job->isRunning())
        m_state->setText(!reason.isEmpty() ? OXA::shownText(reason)
                : waited                   ? tr("Stopped.")
                                           : tr("OpenOCD has ended."));
    showState();
    Q_EMIT runningChanged();
}

void TargetPanel::stop()
{
    if (!isRunning())
        return;
    m_stop->setEnabled(false);
    m_force->setEnabled(false);
    if (m_waiting)
        return m_link->end();
    m_state->setText(isSaving() ? tr("Stopping; the file is not changed…")
                                : tr("Stopping; reading what was captured…"));
    m_job->stop();
    m_saver.stop();
}

void TargetPanel::force() { m_job->force(); }

/// Shows a capture of a run that goes on.
void TargetPanel::showLatest(const TargetResult& result)
{
    if (m_isForeign)
        return;
    m_record = recordOf(result, {});
    m_places = result.places;
    showAge(false);
    showWaveform();
}

/// Samples of a run that began with another document are in the history only.
void TargetPanel::takeResult(const TargetResult& result)
{
    const CaptureRecordPtr record = recordOf(result, endedText(result));
    if (m_isArming)
        m_history.add(record);
    if (!result.capture->empty() && !m_isForeign) { // else keep the earlier samples
        m_record = record;
        m_places = result.places;
    }
    if (!m_isForeign)
        showResult(result);
    showState();
    Q_EMIT runningChanged();
}

QString TargetPanel::endedText(const TargetResult& result) const
{
    QStringList texts = result.remarks + result.problems;
    if (!result.series.isEmpty())
        texts.prepend(result.series);
    return texts.isEmpty() ? tr("stopped") : texts.join("; ");
}

CaptureRecordPtr TargetPanel::recordOf(const TargetResult& result, const QString& ended) const
{
    auto record = std::make_shared<CaptureRecord>();
    record->time = QTime::currentTime().toString("HH:mm:ss");
    record->asked = m_asked;
    record->ended = ended;
    record->configuration = m_askedFrom;
    record->capture = result.capture;
    record->waveforms = result.waveforms;
    record->file = result.file;
    record->isUnsaved = result.file.isEmpty()
        && std::any_of(result.capture->begin(), result.capture->end(),
            [](const OXA_CAPTURE::CapturedCore& core) { return !core.windows.empty(); });
    return record;
}

bool TargetPanel::mayStop()
{
    return !m_job->isRunning() || m_isForeign || !m_isArming
        || QMessageBox::question(this, tr("Stop the Run?"),
               tr("A run is in progress. Stop it? What it captured will be among the captures of "
                  "this session."))
        == QMessageBox::Yes;
}
