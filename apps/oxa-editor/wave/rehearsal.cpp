// SPDX-License-Identifier: Apache-2.0
#include "rehearsal.h"

#include "wave_events.h"
#include "wave_times.h"

#include "oxacapture/files/capture_sampler.h"
#include "oxacapture/trigger/joint_model.h"
#include "oxautils/check/check.h"
#include "oxautils/model/shown_text.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>

using namespace OXA_CAPTURE;

namespace {

constexpr int kDelay = 200; // ms after the last edit

SampleRequest requestOf(const Core& core)
{
    return core.standard ? sampleRequest(*core.standard) : sampleRequest(*core.lite);
}

std::vector<SampleRequest> requestsOf(const Cores& cores)
{
    std::vector<SampleRequest> requests;
    for (const CorePtr& core : cores)
        requests.push_back(requestOf(*core));
    return requests;
}

bool same(const std::vector<SampleRequest>& a, const std::vector<SampleRequest>& b)
{
    const auto isSame = [](const SampleRequest& x, const SampleRequest& y) {
        return x.clock == y.clock && x.fallingEdge == y.fallingEdge && x.fields == y.fields;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

void append(const Messages& problems, QStringList& texts)
{
    for (const Message& problem : problems)
        texts += problem.message();
}

/// The problems that prevent building the cores, as in every program that builds.
QStringList stoppingProblems(const Cores& cores)
{
    QStringList texts;
    const QList<OXA::Problem> problems = cores.first()->standard
        ? OXA::checkCores(standardCores(cores))
        : OXA::checkCores(liteCores(cores));
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
    const QString text = window.forced
        ? Rehearsal::tr("window %1: forced at sample %2, %3 samples from %4 on")
        : Rehearsal::tr("window %1: trigger at sample %2, %3 samples from %4 on");
    const QString placed = text.arg(QString::number(number), QString::number(window.triggerSample),
        QString::number(window.samples), QString::number(window.firstSample));
    return window.span() == window.samples
        ? placed
        : Rehearsal::tr("%1, which span %2").arg(placed, QString::number(window.span()));
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
    bool sample(const std::vector<SampleRequest>& requests, SampledWaveform& waveform,
        Messages& problems) const;
    WaveRows stimulusRows(const std::shared_ptr<const SampleTable>& samples) const;
    void show(const CorePlan& core, const ModelRun& run);
};

bool Rehearsal::Run::isSampled() const
{
    return sampled && sampled->path == request.stimulus
        && sampled->modified == QFileInfo(request.stimulus).lastModified()
        && same(sampled->requests, requestsOf(request.cores));
}

/// The data signals, and the signals of the ports that are not data signals.
WaveRows Rehearsal::Run::stimulusRows(const std::shared_ptr<const SampleTable>& samples) const
{
    const Core& core = *request.cores.first();
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

bool Rehearsal::Run::sample(
    const std::vector<SampleRequest>& requests, SampledWaveform& waveform, Messages& problems) const
{
    const auto goesOn = [this](int percent) {
        progress(percent);
        return !*dropped;
    };
    const QString& clock = requests.front().clock;
    if (clock.isEmpty() && !isSampledCapture(request.stimulus, {clock}))
        problems.append(Message {{}, tr("the core has no sample clock")});
    return problems.isEmpty()
        && sampleStimulus(request.stimulus, requests, waveform, problems, goesOn);
}

/// False on failure, with the reasons among the problems, or when the run was dropped. When the
/// signals of the other cores are not there, only the first one is sampled.
bool Rehearsal::Run::sample()
{
    auto fresh = std::make_shared<SampledStimulus>();
    fresh->path = request.stimulus;
    fresh->modified = QFileInfo(request.stimulus).lastModified();
    fresh->requests = requestsOf(request.cores);
    auto waveform = std::make_shared<SampledWaveform>();
    Messages problems;
    if (!sample(fresh->requests, *waveform, problems) && request.cores.size() > 1 && !*dropped) {
        fresh->alone = problems.first().message();
        problems.clear();
        sample({fresh->requests.front()}, *waveform, problems);
    }
    if (!problems.isEmpty() || *dropped) {
        append(problems, result.problems);
        return false;
    }
    fresh->waveform = waveform;
    if (waveform->timeExponent)
        fresh->clockHz = clockOf(fresh->times(), *waveform->timeExponent);
    fresh->rows = stimulusRows({waveform, &waveform->cores.front()});
    sampled = fresh;
    return true;
}

void Rehearsal::Run::show(const CorePlan& core, const ModelRun& run)
{
    auto waveform = std::make_shared<Waveform>();
    const std::optional<int> exponent = sampled->waveform->timeExponent;
    waveform->samples = sampled->samples().size();
    waveform->rows = sampled->rows;
    waveform->captured = capturedCore(core, sampled->samples(), run);
    if (exponent) {
        waveform->times = {sampled, &sampled->times()};
        waveform->timeExponent = *exponent;
        waveform->clockHz = sampled->clockHz;
    }
    addTimes(waveform->captured, sampled->times(), exponent);
    for (const Window& window : run.windows)
        waveform->windows.push_back(
            {window.firstSample, window.span(), window.triggerSample, window.forced});
    if (core.core) {
        const WaveRows events = eventRows(*core.core, core.setup, run.events);
        waveform->rows.insert(waveform->rows.end(), events.begin(), events.end());
        addStoredRow(*waveform);
    }
    result.waveform = waveform;
}

void Rehearsal::Run::work()
{
    result.problems = stoppingProblems(request.cores);
    const bool isBuilt = result.problems.isEmpty();
    if (!isSampled() && !sample())
        return;
    const Cores cores = request.cores.mid(0, int(sampled->waveform->cores.size()));
    Messages problems;
    const std::vector<CorePlan> plans
        = corePlans(standardCores(cores), liteCores(cores), request.arg, problems);
    if (isBuilt)
        append(problems, result.problems);
    const CorePlan& own = plans.front();
    std::vector<ModelRun> runs;
    if (result.problems.isEmpty())
        runs = runModels(plans, *sampled->waveform, {kNoSample, 0, [this] { return !*dropped; }});
    if (runs.empty()) {
        // Without the events, the stimulus can still be shown.
        ModelRun none;
        none.progress = TriggerModel(own.setup, sampled->samples().layout()).progress();
        show(own, none);
        return;
    }
    const ModelRun& run = runs.front();
    show(own, run);
    for (size_t window = 0; window < run.windows.size(); ++window)
        result.remarks += windowText(run.windows[window], window);
    if (run.windows.empty())
        result.remarks += tr("It does not trigger: %1.").arg(progressText(own.setup, run.progress));
    const QString warning = unknownBitsWarning(own, sampled->samples(), run);
    if (!warning.isEmpty())
        result.problems += warning;
    if (!sampled->alone.isEmpty())
        result.remarks += tr("without the triggers of other cores: %1").arg(sampled->alone);
}

Cores coresThatReach(const Cores& cores, const CorePtr& core)
{
    Cores reaching {core};
    for (int i = 0; i < reaching.size(); ++i) {
        const OXA::AoCore* forced = reaching.at(i)->standard.get();
        for (const CorePtr& other : cores) {
            if (forced && other->standard && !reaching.contains(other)
                && forced->events.forcedBy.contains(other->index()))
                reaching += other;
        }
    }
    for (CorePtr& reached : reaching)
        reached = reached->clone();
    return reaching;
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
