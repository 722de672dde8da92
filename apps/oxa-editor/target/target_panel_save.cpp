// SPDX-License-Identifier: Apache-2.0
// The functions of the panel that save samples.

#include "target_panel.h"

#include "oxa-editor/wave/wave_view.h"
#include "oxautils/config/names_file.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QProgressDialog>

void TargetPanel::save()
{
    const QString bits = tr("Table of single bits (*.csv)");
    QFileDialog dialog(this, tr("Save Samples"), QFileInfo(m_document.path()).path());
    dialog.setNameFilters({tr("Value change dump (*.vcd)"), tr("Compressed waveform (*.fst)"),
        tr("Table of buses (*.csv)"), bits, tr("sigrok session (*.sr)")});
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("vcd");
    dialog.selectFile(QFileInfo(m_document.path()).baseName()); // the format adds its suffix
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(filter.section("*.", 1).section(')', 0, 0));
    });
    if (dialog.exec() == QDialog::Accepted)
        saveTo(dialog.selectedFiles().value(0), {dialog.selectedNameFilter() == bits, {}});
}

void TargetPanel::saveTo(const QString& path, const OXA_CAPTURE::CaptureFileOptions& options)
{
    if (isRunning())
        return;
    for (OXA_CAPTURE::CapturedCore& core : *m_result.capture)
        core.clockHz = m_view->clock();
    OXA::KnownNames names;
    OXA::readKnownNames(m_document.path(), names, nullptr);
    OXA_CAPTURE::CaptureFileOptions named = options;
    named.states = names.states;
    m_save->start(path, m_result.capture, named);
    showState();
    Q_EMIT runningChanged();
}

void TargetPanel::showSaved(const QString& path, const QString& error)
{
    m_isUnsaved = m_isUnsaved && !error.isEmpty();
    m_state->setText(
        error.isEmpty() ? tr("%1: written").arg(QDir::toNativeSeparators(path)) : error);
    showState();
    Q_EMIT runningChanged();
}

bool TargetPanel::mayLoseSamples()
{
    if (m_job->isRunning() && !m_isForeign && (m_isArming || m_isUnsaved))
        return QMessageBox::question(this, tr("Stop the Run?"),
                   tr("A run is in progress. Stop it? Samples that are not saved are lost."))
            == QMessageBox::Yes;
    if (isSaving())
        waitForSave();
    if (!m_isUnsaved)
        return true;
    const auto answer = QMessageBox::warning(this, tr("Save Samples?"),
        tr("The samples captured from the chip are not saved."),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer != QMessageBox::Save)
        return answer == QMessageBox::Discard;
    save();
    waitForSave();
    return !m_isUnsaved;
}

/// Waits until the file is saved; the user may stop it. A failure is also shown in a message box:
/// another panel may cover the status line.
void TargetPanel::waitForSave()
{
    if (!isSaving())
        return;
    QProgressDialog dialog(tr("The samples are being saved."), tr("&Stop"), 0, 0, this);
    QString problem;
    connect(&dialog, &QProgressDialog::canceled, this, &TargetPanel::stop);
    connect(m_save, &SaveJob::finished, &dialog, [&](const QString&, const QString& error) {
        problem = error;
        dialog.accept();
    });
    dialog.exec();
    if (!problem.isEmpty())
        QMessageBox::critical(this, tr("Cannot Save"), problem);
}
