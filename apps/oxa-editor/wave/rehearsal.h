#ifndef APPS_OXA_EDITOR_WAVE_REHEARSAL_H
#define APPS_OXA_EDITOR_WAVE_REHEARSAL_H

#include "waveform.h"

#include "oxa-editor/core.h"

#include <QDateTime>
#include <QObject>
#include <QThread>
#include <QTimer>

#include <atomic>

/// What to rehearse.
struct RehearsalRequest {
    QString stimulus; ///< a VCD file
    CorePtr core; ///< nobody else's, and never changed any more
    OXA::OxaArg arg; ///< the device and the configuration file's name
};

/// What a core samples of a stimulus. Never changes once it is made.
struct SampledStimulus {
    QString path;
    QDateTime modified; ///< the file
    OXA_CAPTURE::SampleRequest request;
    std::shared_ptr<const OXA_CAPTURE::SampleTable> samples;
    WaveRows rows;
};

struct RehearsalResult {
    WaveformPtr waveform; ///< null when the stimulus could not be sampled
    QStringList problems; ///< what keeps the core from sampling or triggering
    QStringList remarks; ///< what was captured, and what else there is to know
};

/// Tells, in a thread of its own, what a core would capture of a stimulus. Requests may come as
/// fast as somebody types: what was asked for last counts.
class Rehearsal : public QObject {
    Q_OBJECT

public:
    explicit Rehearsal(QObject* parent = nullptr);

    /// Drops what is running and waits for its end.
    ~Rehearsal() override;

    void ask(const RehearsalRequest& request);

    /// Nothing is wanted any more of what was asked for.
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
    bool m_isWanted = false; // the request, which was not begun yet
    QTimer m_delay; // since the last request
    std::unique_ptr<QThread> m_thread;
    std::shared_ptr<std::atomic_bool> m_dropped; // of the running one
    std::shared_ptr<const SampledStimulus> m_sampled; // most edits leave the samples as they are
};

Q_DECLARE_METATYPE(RehearsalResult)

#endif
