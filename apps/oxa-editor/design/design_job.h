// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_DESIGN_DESIGN_JOB_H
#define APPS_OXA_EDITOR_DESIGN_DESIGN_JOB_H

#include "design_tree.h"

#include "oxautils/design/design_sources.h"

#include <QObject>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>

/// Reads designs in a separate thread, one at a time.
class DesignJob : public QObject {
    Q_OBJECT

public:
    using Tree = std::shared_ptr<const DesignTree>;

    explicit DesignJob(QObject* parent = nullptr);

    /// Stops reading and waits for its end.
    ~DesignJob() override;

    bool isRunning() const { return m_thread != nullptr; }

    // Each starts reading, or does nothing while another design is being read.
    void readSources(const OXA::DesignSources& sources);
    void readWaveform(const QString& path);

    /// Ends the reading within a second; `finished` follows.
    void stop() { m_stop = true; }

Q_SIGNALS:
    void progress(const QString& stage, int percent);
    void finished(const DesignJob::Tree& tree, const QString& error); ///< null on failure

private:
    void start(const std::function<bool(OXA::Design&, QString*)>& read);

    std::unique_ptr<QThread> m_thread;
    std::atomic_bool m_stop {false};
};

#endif
