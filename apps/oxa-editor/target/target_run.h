// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_TARGET_TARGET_RUN_H
#define APPS_OXA_EDITOR_TARGET_TARGET_RUN_H

#include "oxa-editor/core.h"
#include "oxa-editor/wave/waveform.h"

#include "oxacapture/files/capture_file.h"
#include "oxacapture/target/capture_run.h"

#include <QElapsedTimer>

#include <atomic>

namespace OXA {
struct Configuration;
}

/// A request for a run on a chip.
struct TargetRequest {
    QString address; ///< of OpenOCD's Tcl server, "HOST:PORT"
    QString tap; ///< the device in the chain; empty: the one with an analyzer
    Cores cores; ///< with the wanted settings; not shared
    QString configFile; ///< their file's name
    QString builtFrom; ///< the configuration file of the chip, when it is not `cores`
    bool arm = false; ///< else only find the analyzer
    QList<int> chosen; ///< positions of the cores to arm
    qint64 repeat = 1; ///< captures, one after the other; 0: until `stop`
    QString pattern; ///< of the files of repeated captures; empty: no files
    OXA_CAPTURE::CaptureFileOptions fileOptions;
    /// Of the cores' sample clocks in Hz, by their indexes, for the files.
    QMap<int, double> clocks;
};

/// A core found in the chip.
struct FoundCore {
    QString name;
    QString shape; ///< "18 signals, 1024 samples"
};

/// The result of a run.
struct TargetResult {
    QStringList problems; ///< reasons why not everything was captured
    QStringList warnings; ///< reasons to doubt the samples
    QStringList remarks; ///< one for each core
    std::vector<int> places; ///< of the captured cores
    std::shared_ptr<OXA_CAPTURE::Capture> capture = std::make_shared<OXA_CAPTURE::Capture>();
    std::vector<WaveformPtr> waveforms; ///< of the captured cores
    QString series; ///< of repeated captures: how many, and their files
    QString file; ///< of these: the last one, with the samples above; empty: not written
};

/// One run on a chip, from connecting to the samples. One thread calls `work`; others may call
/// `stop` and `force`.
class TargetRun {
public:
    explicit TargetRun(TargetRequest request);

    /// Called when the analyzer is found, with its cores and what they are built from.
    std::function<void(const QList<FoundCore>&, const QString& builtFrom)> found;
    /// Called when the state of a chosen core changes, with texts in the order of positions.
    std::function<void(const QStringList&)> progress;
    /// Called with some of the captures when they are repeated, not more than twice a second; and
    /// with the complete windows of a run that goes on.
    std::function<void(const TargetResult&)> captured;

    void work();

    /// Ends the wait for triggers; what was captured is read, if OpenOCD responds.
    void stop() { m_stop = true; }
    /// Ends the run without reading.
    void abandon() { m_stop = m_abandoned = true; }
    /// Forces the trigger of every core that waits for it.
    void force() { m_force = true; }

    const TargetResult& result() const { return m_result; }

private:
    bool find(OXA_CAPTURE::CaptureRun& run, OXA::Configuration& file);
    void tellCores(const OXA_CAPTURE::CaptureRun& run) const;
    bool plan(OXA_CAPTURE::CaptureRun& run);
    void capture(OXA_CAPTURE::CaptureRun& run);
    void captureSeries(OXA_CAPTURE::CaptureRun& run);
    bool takeCapture(qint64 number, std::vector<OXA_CAPTURE::CoreOutcome>& outcomes);
    void tellCapture();
    void takeAll(std::vector<OXA_CAPTURE::CoreOutcome>& outcomes);
    void take(OXA_CAPTURE::CoreOutcome&& outcome);

    const TargetRequest m_request;
    QList<OXA::AoCore*> m_cores; // of the request
    QList<OXA::AOCore_Lite*> m_liteCores;
    TargetResult m_result;
    QElapsedTimer m_told; // since `captured` was called
    std::atomic_bool m_stop {false};
    std::atomic_bool m_abandoned {false};
    std::atomic_bool m_force {false};
};

#endif
