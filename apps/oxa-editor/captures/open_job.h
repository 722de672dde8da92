// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CAPTURES_OPEN_JOB_H
#define APPS_OXA_EDITOR_CAPTURES_OPEN_JOB_H

#include "capture_record.h"

#include <QObject>
#include <QThread>

#include <atomic>

/// Reads captures from files in a separate thread, one after the other.
class OpenJob : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Stops reading and waits for its end.
    ~OpenJob() override;

    bool isRunning() const { return m_thread != nullptr; }

    /// Reads `path` behind those that were asked for before.
    void start(const QString& path);

    /// Stops reading, and drops the files that wait. `finished` follows.
    void stop();

Q_SIGNALS:
    void progress(const QString& path, int percent);
    void finished(const CaptureRecordPtr& record, const QString& path,
        const QString& error); ///< `record`: null with an error

private:
    void startNext();

    QStringList m_waiting;
    std::unique_ptr<QThread> m_thread;
    std::atomic_bool m_stop {false};
};

#endif
