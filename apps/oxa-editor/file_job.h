// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_FILE_JOB_H
#define APPS_OXA_EDITOR_FILE_JOB_H

#include "oxacapture/progress.h"

#include <QObject>
#include <QThread>

#include <atomic>
#include <memory>

/// Reads or writes files in a separate thread, one at a time.
class FileJob : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Stops the work and waits for its end.
    ~FileJob() override;

    bool isRunning() const { return m_thread != nullptr; }

    /// Stops the work; its end follows.
    void stop() { m_stop = true; }

Q_SIGNALS:
    void progress(const QString& path, int percent);

protected:
    /// Does `work` on the file `path` in the thread, then `finish` in that of this object, when the
    /// job is no longer running. Call it only when it is not.
    void run(const QString& path, const std::function<void(const OXA_CAPTURE::Progress&)>& work,
        const std::function<void()>& finish);

private:
    std::unique_ptr<QThread> m_thread;
    std::atomic_bool m_stop {false};
};

#endif
