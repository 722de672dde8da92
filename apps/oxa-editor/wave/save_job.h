// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_SAVE_JOB_H
#define APPS_OXA_EDITOR_WAVE_SAVE_JOB_H

#include "oxacapture/files/capture_file.h"

#include <QObject>
#include <QThread>

#include <atomic>

/// Writes captures to files in a separate thread, one at a time.
class SaveJob : public QObject {
    Q_OBJECT

public:
    explicit SaveJob(QObject* parent = nullptr);

    /// Stops writing and waits for its end.
    ~SaveJob() override;

    bool isRunning() const { return m_thread != nullptr; }

    /// Starts writing `capture`, which must not change until `finished`, in the format of the
    /// suffix of `path`. Does nothing while another file is being written.
    void start(const QString& path, const std::shared_ptr<const OXA_CAPTURE::Capture>& capture,
        const OXA_CAPTURE::CaptureFileOptions& options = {});

    /// Stops writing; the file is not changed. `finished` follows.
    void stop() { m_stop = true; }

Q_SIGNALS:
    void progress(const QString& path, int percent);
    void finished(const QString& path, const QString& error); ///< empty `error`: written

private:
    std::unique_ptr<QThread> m_thread;
    std::atomic_bool m_stop {false};
};

#endif
