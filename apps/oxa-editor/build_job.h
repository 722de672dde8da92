// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_BUILD_JOB_H
#define APPS_OXA_EDITOR_BUILD_JOB_H

#include "oxautils/generate/build_run.h"

#include <QObject>
#include <QThread>

#include <memory>

/// Builds in a separate thread, one run at a time.
class BuildJob : public QObject {
    Q_OBJECT

public:
    explicit BuildJob(QObject* parent = nullptr);

    /// Stops the run and waits for its end.
    ~BuildJob() override;

    bool isRunning() const { return m_thread != nullptr; }

    /// Starts a run. Its configuration file has to exist until `finished`. Does nothing during a
    /// run.
    void start(std::unique_ptr<OXA::BuildRun> build);

    /// Ends the run within a second; `finished` follows.
    void stop();

    /// Sends what the library logs during a run to that run's `logged`, and other messages to the
    /// former handler. Call it once, at the program's start.
    static void installLog();

Q_SIGNALS:
    void progress(const QString& stage, int percent); ///< -1: unknown
    void logged(const QString& line);
    void finished(const OXA::BuildResult& result);

private:
    std::unique_ptr<OXA::BuildRun> m_build;
    std::unique_ptr<QThread> m_thread;
};

#endif
