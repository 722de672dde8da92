// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CAPTURES_CAPTURE_SAVER_H
#define APPS_OXA_EDITOR_CAPTURES_CAPTURE_SAVER_H

#include "capture_history.h"

#include "oxa-editor/wave/save_job.h"

class QWidget;
class WaveSettings;

/// Saves captures of the history to files, one at a time in the background.
class CaptureSaver : public QObject {
    Q_OBJECT

public:
    /// Samples get times of the clocks of `waves`. `window`, the owner, is that of the dialogs.
    CaptureSaver(CaptureHistory& history, const WaveSettings& waves, QWidget* window);

    bool isRunning() const { return m_job->isRunning(); }

    /// Asks for a file, and writes the samples.
    void ask(const CaptureRecordPtr& record);
    /// Writes the samples to the file `path`, in the format of its suffix.
    void start(const CaptureRecordPtr& record, const QString& path,
        const OXA_CAPTURE::CaptureFileOptions& options = {});
    /// Stops writing; the file is not changed.
    void stop() { m_job->stop(); }

    /// Asks what to do with samples that are not saved. False when the user cancelled, or saving
    /// failed.
    bool mayLose(const QList<CaptureRecordPtr>& records);

Q_SIGNALS:
    void started();
    void progress(const QString& path, int percent);
    void finished(const QString& path, const QString& error); ///< empty `error`: written

private:
    void wait();

    CaptureHistory& m_history;
    const WaveSettings& m_waves;
    QWidget* m_window;
    SaveJob* m_job;
    CaptureRecordPtr m_record; // that is being written
};

#endif
