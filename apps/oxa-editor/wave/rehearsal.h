// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_REHEARSAL_H
#define APPS_OXA_EDITOR_WAVE_REHEARSAL_H

#include "waveform.h"

#include "oxa-editor/core.h"

#include <QDateTime>
#include <QObject>
#include <QThread>
#include <QTimer>

#include <atomic>

/// The inputs of a rehearsal.
struct RehearsalRequest {
    QString stimulus; ///< a VCD file
    /// The core, and behind it those whose triggers reach it; not shared, and never changed.
    Cores cores;
    OXA::OxaArg arg; ///< device and name of the configuration file
};

/// The samples of a core in a stimulus. Never changes once it is made.
struct SampledStimulus {
    QString path;
    QDateTime modified; ///< of the file
    std::vector<OXA_CAPTURE::SampleRequest> requests; ///< of the cores
    /// Of the cores, or of the first one alone.
    std::shared_ptr<const OXA_CAPTURE::SampledWaveform> waveform;
    QString alone; ///< why the first one is alone; else empty
    double clockHz = 0; ///< of the first one, by its times; 0: unknown
    WaveRows rows;

    const OXA_CAPTURE::SampleTable& samples() const { return waveform->cores.front(); }
    const std::vector<quint64>& times() const { return waveform->times.front(); }
};

struct RehearsalResult {
    WaveformPtr waveform; ///< null when the stimulus could not be sampled
    QStringList problems; ///< problems that prevent sampling or triggering
    QStringList remarks; ///< windows, and warnings
};

/// `core`, and behind it those of `cores` that force it, or force one of these, as copies.
Cores coresThatReach(const Cores& cores, const CorePtr& core);

/// Computes in a separate thread what a core would capture from a stimulus. A new request replaces
/// the one before, so requests may come at every key press.
class Rehearsal : public QObject {
    Q_OBJECT

public:
    explicit Rehearsal(QObject* parent = nullptr);

    /// Drops the run and waits for its end.
    ~Rehearsal() override;

    void ask(const RehearsalRequest& request);

    /// Drops all requests.
    void drop();

    bool isBusy() const { return m_thread || m_delay.isActive(); }

Q_SIGNALS:
    void progress(int percent); ///< of reading the stimulus
    void finished(const RehearsalResult& result); ///< of the last request

private:
    struct Run;

    void start();
    void finish(const std::shared_ptr<Run>& run);

    RehearsalRequest m_request;
    bool m_isWanted = false; // the request is not started yet
    QTimer m_delay; // since the last request
    std::unique_ptr<QThread> m_thread;
    std::shared_ptr<std::atomic_bool> m_dropped; // of the running one
    std::shared_ptr<const SampledStimulus> m_sampled; // most edits do not change the samples
};

Q_DECLARE_METATYPE(RehearsalResult)

#endif
