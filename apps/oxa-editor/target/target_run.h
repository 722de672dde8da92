#ifndef APPS_OXA_EDITOR_TARGET_TARGET_RUN_H
#define APPS_OXA_EDITOR_TARGET_TARGET_RUN_H

#include "oxa-editor/core.h"
#include "oxa-editor/wave/waveform.h"

#include "oxacapture/target/capture_run.h"

#include <atomic>

namespace OXA {
struct Configuration;
}

/// What to do with the analyzer in a chip.
struct TargetRequest {
    QString address; ///< of OpenOCD's Tcl server, "HOST:PORT"
    QString tap; ///< the device in the chain; empty: the one that has an analyzer
    Cores cores; ///< as they are to run; nobody else's
    QString configFile; ///< names them
    QString builtFrom; ///< the configuration file of the chip, when it is not `cores`
    bool arm = false; ///< else the chip is only looked at
    QList<int> chosen; ///< places of the cores to arm
};

/// A core that was found in the chip.
struct FoundCore {
    QString name;
    QString shape; ///< "18 signals, 1024 samples"
};

/// What a run found out.
struct TargetResult {
    QStringList problems; ///< nothing, or not all, was captured because of them
    QStringList warnings; ///< what was captured is to be taken with care because of them
    QStringList remarks; ///< one a core
    std::vector<int> places; ///< of the captured cores
    std::shared_ptr<OXA_CAPTURE::Capture> capture = std::make_shared<OXA_CAPTURE::Capture>();
    std::vector<WaveformPtr> waveforms; ///< of the captured cores
};

/// One visit to a chip, from connecting to the samples. All of it happens in one thread, that
/// calls `work`; others may use `stop` and `force`.
class TargetRun {
public:
    explicit TargetRun(TargetRequest request);

    /// Told when the analyzer was found: its cores, and what they are built from.
    std::function<void(const QList<FoundCore>&, const QString& builtFrom)> found;
    /// Told what each chosen core is doing, in the order of their places, whenever that changes.
    std::function<void(const QStringList&)> progress;

    void work();

    /// Ends the wait for triggers; what was captured is read, unless OpenOCD does not answer.
    void stop() { m_stop = true; }
    /// Ends all of it; what was captured is not needed.
    void abandon() { m_stop = m_abandoned = true; }
    /// Triggers every core that waits for its trigger.
    void force() { m_force = true; }

    const TargetResult& result() const { return m_result; }

private:
    bool find(OXA_CAPTURE::CaptureRun& run, OXA::Configuration& file);
    void tellCores(const OXA_CAPTURE::CaptureRun& run) const;
    bool plan(OXA_CAPTURE::CaptureRun& run);
    void capture(OXA_CAPTURE::CaptureRun& run);
    void take(OXA_CAPTURE::CoreOutcome&& outcome);

    const TargetRequest m_request;
    QList<OXA::AoCore*> m_cores; // of the request: one of the two
    QList<OXA::AOCore_Lite*> m_liteCores;
    TargetResult m_result;
    std::atomic_bool m_stop {false};
    std::atomic_bool m_abandoned {false};
    std::atomic_bool m_force {false};
};

#endif
