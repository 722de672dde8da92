// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_TARGET_TARGET_JOB_H
#define APPS_OXA_EDITOR_TARGET_TARGET_JOB_H

#include "target_run.h"

#include <QObject>
#include <QThread>

/// Accesses a chip in a separate thread, one run at a time.
class TargetJob : public QObject {
    Q_OBJECT

public:
    explicit TargetJob(QObject* parent = nullptr);

    /// Stops the run and waits for its end.
    ~TargetJob() override;

    bool isRunning() const { return m_thread != nullptr; }

    /// Starts a run; does nothing during a run.
    void start(const TargetRequest& request);

    /// Ends the run; what was captured is read, if OpenOCD responds.
    void stop();
    void force();

Q_SIGNALS:
    void found(const QList<FoundCore>& cores, const QString& builtFrom);
    void progress(const QStringList& texts); ///< of the cores that were armed
    void captured(const TargetResult& result); ///< of a run that goes on: its latest capture
    void finished(const TargetResult& result);

private:
    std::unique_ptr<QThread> m_thread;
    std::shared_ptr<TargetRun> m_run;
};

Q_DECLARE_METATYPE(FoundCore)
Q_DECLARE_METATYPE(TargetResult)

#endif
