// SPDX-License-Identifier: Apache-2.0
#include "capture_saver.h"

#include "oxa-editor/wave/wave_settings.h"

#include "oxautils/config/names_file.h"
#include "oxautils/model/shown_text.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QProgressDialog>

CaptureSaver::CaptureSaver(CaptureHistory& history, const WaveSettings& waves, QWidget* window)
    : QObject(window)
    , m_history(history)
    , m_waves(waves)
    , m_window(window)
    , m_job(new SaveJob(this))
{
    connect(m_job, &SaveJob::progress, this, &CaptureSaver::progress);
    connect(m_job, &SaveJob::finished, this, [this](const QString& path, const QString& error) {
        if (error.isEmpty())
            m_history.setSaved(m_record, path);
        m_record.reset();
        Q_EMIT finished(path, error);
    });
}

void CaptureSaver::ask(const CaptureRecordPtr& record)
{
    const QFileInfo configuration(record->configuration);
    const QString bits = tr("Table of single bits (*.csv)");
    QFileDialog dialog(m_window, tr("Save Samples"), configuration.path());
    dialog.setNameFilters({tr("Value change dump (*.vcd)"), tr("Compressed waveform (*.fst)"),
        tr("Table of buses (*.csv)"), bits, tr("sigrok session (*.sr)")});
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("vcd");
    dialog.selectFile(configuration.baseName()); // the format adds its suffix
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(filter.section("*.", 1).section(')', 0, 0));
    });
    if (dialog.exec() == QDialog::Accepted)
        start(record, dialog.selectedFiles().value(0), {dialog.selectedNameFilter() == bits, {}});
}

void CaptureSaver::start(const CaptureRecordPtr& record, const QString& path,
    const OXA_CAPTURE::CaptureFileOptions& options)
{
    if (isRunning())
        return;
    takeClocks(*record, m_waves, *record->capture);
    OXA::KnownNames names;
    OXA::readKnownNames(record->configuration, names, nullptr);
    OXA_CAPTURE::CaptureFileOptions named = options;
    named.states = names.states;
    m_record = record;
    m_job->start(path, record->capture, named);
    Q_EMIT started();
}

bool CaptureSaver::mayLose(const QList<CaptureRecordPtr>& records)
{
    wait();
    QList<CaptureRecordPtr> unsaved;
    for (const CaptureRecordPtr& record : records) {
        if (record->isUnsaved)
            unsaved += record;
    }
    if (unsaved.isEmpty())
        return true;
    const auto answer = QMessageBox::warning(m_window, tr("Save Samples?"),
        unsaved.size() == 1
            ? tr("The samples captured at %1 are not saved.").arg(unsaved.first()->time)
            : tr("The samples of %1 captures are not saved.").arg(unsaved.size()),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer != QMessageBox::Save)
        return answer == QMessageBox::Discard;
    for (const CaptureRecordPtr& record : qAsConst(unsaved)) {
        ask(record);
        wait();
        if (record->isUnsaved)
            return false;
    }
    return true;
}

/// Waits until the file is saved; the user may stop it. A failure is also shown in a message box:
/// another panel may cover the status line.
void CaptureSaver::wait()
{
    if (!isRunning())
        return;
    QProgressDialog dialog(tr("The samples are being saved."), tr("&Stop"), 0, 0, m_window);
    QString problem;
    connect(&dialog, &QProgressDialog::canceled, this, &CaptureSaver::stop);
    connect(this, &CaptureSaver::finished, &dialog, [&](const QString&, const QString& error) {
        problem = error;
        dialog.accept();
    });
    dialog.exec();
    if (!problem.isEmpty())
        QMessageBox::critical(m_window, tr("Cannot Save"), OXA::shownLines(problem));
}
