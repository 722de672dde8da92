// SPDX-License-Identifier: Apache-2.0
#include "rehearsal.h"

#include "wave_events.h"
#include "wave_times.h"

#include "oxacapture/files/capture_sampler.h"
#include "oxautils/check/check.h"
#include "oxautils/model/shown_text.h"

#include <QFileInfo>
#include <QSet>

using namespace OXA_CAPTURE;

namespace {

constexpr int kDelay = 200; // ms after the last edit
constexpr qint64 kSamplesAtOnce = 4096; // between two checks for a stop

SampleRequest requestOf(const Core& core)
{
    return core.standard ? sampleRequest(*core.standard) : sampleRequest(*core.lite);
}

bool same(const SampleRequest& a, const SampleRequest& b)
{
    return a.clock == b.clock && a.fallingEdge == b.fallingEdge && a.fields == b.fields;
}

void append(const Messages& problems, QStringList& texts)
{
    for (const Message& problem : problems)
        texts += problem.message();
}

/// The problems that prevent building the core, as in every program that builds.
QStringList stoppingProblems(const Core& core)
{
    QStringList texts;
    const QList<OXA::Problem> problems = core.standard ? OXA::checkCores({core.standard.get()})
                                                       : OXA::checkCores({core.lite.get()});
    for (const OXA::Problem& problem : problems) {
        if (stopsBuild(problem))
            texts += problem.place.text() + ": " + OXA::shownText(problem.text);
    }
    return texts;
}

QString windowText(const Window& window, size_t number)
{
    if (window.triggerSample == kNoSample)
        return Rehearsal::tr("%1 samples from %2 on")
            .arg(QString::number(window.samples), QString::number(window.firstSample));
    return Rehearsal::tr("window %1: trigger at sample %2, %3 samples from %4 on")
        .arg(QString::number(number), QString::number(window.triggerSample),
            QString::number(window.samples), QString::number(window.firstSample));
}

}

/// One run in the thread.
struct Rehearsal::Run {
    RehearsalRequest request;
    std::shared_ptr<const SampledStimulus> sampled; ///< of an earlier run; may be null
    std::shared_ptr<std::atomic_bool> dropped;
    std::function<void(int percent)> progress;
    RehearsalResult result;

    void work();

private:
    bool isSampled() const;
    bool sample();
    WaveRows stimulusRows(const std::shared_ptr<const SampleTable>& samples) const;
    bool runModel(const CorePlan& core, ModelRun& run) const;
    void show(const CorePlan& core, const ModelRun& run);
};

bool Rehearsal::Run::isSampled() const
{
    return sampled && sampled->path == request.stimulus
        && sampled->modified == QFileInfo(request.stimulus).lastModified()
        && same(sampled->request, requestOf(*request.core));
}

/// The data signals, and the signals of the ports that are not data signals.
WaveRows Rehearsal::Run::stimulusRows(const std::shared_ptr<const SampleTable>& samples) const
{
    const Core& core = *request.core;
    const QList<OXA::SignalItem> data
        = core.standard ? core.standard->captureSignals : core.lite->signalList;
    WaveRows rows = signalRows(data, samples, 0);
    if (!core.standard)
        return rows;
    const QStringList names = OXA::flattenedNames(data);
    QSet<QString> seen(names.begin(), names.end());
    int field = 0;
    for (const OXA::TriggerPort* port : core.standard->availableTriggers()) {
        const WaveRows all = signalRows(port->signalList, samples, ++field);
        for (int i = 0; i < port->signalList.size(); ++i) {
            const QStringList own = OXA::flattenedNames({port->signalList.at(i)});
            const QSet<QString> bits(own.begin(), own.end());
            if (!seen.contains(bits))
                rows.push_back(all[size_t(i)]);
            seen += bits;
        }
    }
    return rows;
}

/// False on failure, with the reasons among the problems, or when the run was dropped.
bool Rehearsal::Run::sample()
{
    auto fresh = std::make_shared<SampledStimulus>();
    fresh->path = request.stimulus;
    fresh->modified = QFileInfo(request.stimulus).lastModified();
    fresh->request = requestOf(*request.core);
    SampledWaveform waveform;
    Messages problems;
    const auto goesOn = [this](int percent) {
        progress(percent);
        return !*dropped;
    };
    const bool isCapture = isCaptureFile(request.stimulus);
    if (!isCapture && fresh->request.clock.isEmpty())
        problems.append({{}, tr("the core has no sample clock")});
    if (problems.isEmpty() && isCapture)
        sampleCapture(request.stimulus, fresh->request, waveform, problems, goesOn);
    else if (problems.isEmpty())
        sampleWaveform(request.stimulus, {fresh->request}, waveform, problems, goesOn);
    if (!problems.isEmpty() || *dropped) {
        append(problems, result.problems);
        return false;
    }
    fresh->samples = std::make_shared<SampleTable>(std::move(waveform.cores.front()));
    fresh->times = std::move(waveform.times.front());
    fresh->timeExponent = waveform.timeExponent;
    if (fresh->timeExponent)
        fresh->clockHz = clockOf(fresh->times, *fresh->timeExponent);
    fresh->rows = stimulusRows(fresh->samples);
    sampled = fresh;
    return true;
}

bool Rehearsal::Run::runModel(const CorePlan& core, ModelRun& run) const
{
    const SampleTable& samples = *sampled->samples;
    if (core.lite) {
        run = OXA_CAPTURE::runModel(*core.lite, samples);
        return true;
    }
    TriggerModel model(core.setup, samples.layout());
    for (qint64 sample = 0; sample < samples.size(); ++sample) {
        if (sample % kSamplesAtOnce == 0 && *dropped)
            return false;
        run.events.push_back(model.take(samples.row(sample)));
    }
    run.windows = model.windows();
    run.progress = model.progress();
    return true;
}

void Rehearsal::Run::show(const CorePlan& core, const ModelRun& run)
{
    auto waveform = std::make_shared<Waveform>();
    waveform->samples = sampled->samples->size();
    waveform->rows = sampled->rows;
    waveform->captured = capturedCore(core, *sampled->samples, run);
    if (sampled->timeExponent) {
        waveform->times = {sampled, &sampled->times};
        waveform->timeExponent = *sampled->timeExponent;
        waveform->clockHz = sampled->clockHz;
    }
    addTimes(waveform->captured, sampled->times, sampled->timeExponent);
    for (const Window& window : run.windows)
        waveform->windows.push_back({window.firstSample, window.span(), window.triggerSample});
    if (core.core) {
        const WaveRows events = eventRows(*core.core, core.setup, run.events);
        waveform->rows.insert(waveform->rows.end(), events.begin(), events.end());
    }
    result.waveform = waveform;
}

void Rehearsal::Run::work()
{
    const Core& core = *request.core;
    Messages problems;
    const std::vector<CorePlan> cores = core.standard
        ? corePlans({core.standard.get()}, {}, request.arg, problems)
        : corePlans({}, {core.lite.get()}, request.arg, problems);
    result.problems = stoppingProblems(core);
    if (result.problems.isEmpty())
        append(problems, result.problems);
    if (!isSampled() && !sample())
        return;
    const CorePlan& own = cores.front();
    ModelRun run;
    if (!result.problems.isEmpty() || !runModel(own, run)) {
        // Without the events, the stimulus can still be shown.
        run.events.clear();
        run.progress = TriggerModel(own.setup, sampled->samples->layout()).progress();
        show(own, run);
        return;
    }
    show(own, run);
    for (size_t window = 0; window < run.windows.size(); ++window)
        result.remarks += windowText(run.windows[window], window);
    if (run.windows.empty())
        result.remarks += tr("It does not trigger: %1.").arg(progressText(own.setup, run.progress));
    const QString warning = unknownBitsWarning(own, *sampled->samples, run.progress);
    if (!warning.isEmpty())
        result.problems += warning;
}

Rehearsal::Rehearsal(QObject* parent)
    : QObject(parent)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(kDelay);
    connect(&m_delay, &QTimer::timeout, this, &Rehearsal::start);
}

Rehearsal::~Rehearsal()
{
    if (!m_thread)
        return;
    *m_dropped = true;
    m_thread->wait();
}

void Rehearsal::ask(const RehearsalRequest& request)
{
    drop();
    m_request = request;
    m_isWanted = true;
    m_delay.start();
}

void Rehearsal::drop()
{
    if (m_dropped)
        *m_dropped = true;
    m_isWanted = false;
    m_delay.stop();
}

void Rehearsal::start()
{
    if (m_thread)
        return; // dropped: a new run begins at its end
    m_isWanted = false;
    auto run = std::make_shared<Run>();
    m_dropped = std::make_shared<std::atomic_bool>(false);
    run->request = m_request;
    run->sampled = m_sampled;
    run->dropped = m_dropped;
    run->progress = [this](int percent) { Q_EMIT progress(percent); };
    m_thread.reset(QThread::create([run] { run->work(); }));
    connect(m_thread.get(), &QThread::finished, this, [this, run] { finish(run); });
    m_thread->start();
}

void Rehearsal::finish(const std::shared_ptr<Run>& run)
{
    m_thread->wait();
    m_thread.reset();
    m_sampled = run->sampled;
    if (!*run->dropped)
        Q_EMIT finished(run->result);
    else if (m_isWanted && !m_delay.isActive())
        start();
}
