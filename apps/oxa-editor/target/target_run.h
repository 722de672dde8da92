#ifndef APPS_OXA_EDITOR_TARGET_TARGET_RUN_H
#define APPS_OXA_EDITOR_TARGET_TARGET_RUN_H

#include "oxa-editor/core.h"
#include "oxa-editor/wave/waveform.h"

#include "oxacapture/target/find_analyzer.h"

#include <atomic>

struct Configuration;

/// What to do with the analyzer in a chip.
struct TargetRequest {
    QString address; ///< of OpenOCD's Tcl server, "HOST:PORT"
    QString tap; ///< the device in the chain; empty: the one that has an analyzer
    Cores cores; ///< as they are to run; nobody else's
    QString configFile; ///< names them
    QString builtFrom; ///< the configuration file of the chip, when it is not `cores`
    bool arm = false; ///< else the chip is only looked at
    QList<int> chosen; ///< places of the cores to arm; empty: all
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
    ~TargetRun();

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
    struct Candidate;

    bool fail(const QString& problem);
    void addEdited();
    void addFile();
    bool connectTo(OXA_CAPTURE::OpenOcdLink& link);
    bool find(OXA_CAPTURE::OpenOcdLink& link);
    bool matches(OXA_CAPTURE::CaptureSession& session);
    bool matches(OXA_CAPTURE::CaptureSession& session, const Candidate& candidate);
    void tellCores() const;
    bool plan();
    bool checkTakeover(const std::vector<OXA_CAPTURE::CorePlan>& wanted);
    bool watch();
    bool forceWaiting(const std::vector<OXA_CAPTURE::CoreProgress>& now);
    void tellProgress(const std::vector<OXA_CAPTURE::CoreProgress>& now);
    void readAll();
    bool read(const OXA_CAPTURE::CoreRun& run, bool finished);

    const TargetRequest m_request;
    std::vector<std::unique_ptr<Candidate>> m_candidates;
    const Candidate* m_built = nullptr; // what the chip is built from
    QStringList m_invalid; // why the cores as edited become no hardware
    std::unique_ptr<OXA_CAPTURE::CaptureSession> m_session;
    std::vector<OXA_CAPTURE::CoreRun> m_runs;
    std::vector<OXA_CAPTURE::CoreProgress> m_last;
    QStringList m_told;
    TargetResult m_result;
    std::atomic_bool m_stop {false};
    std::atomic_bool m_abandoned {false};
    std::atomic_bool m_force {false};
};

#endif
