// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/trigger/joint_model.h"

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kAtOnce = 4096; // samples or edges between two calls of `goesOn`

// A Standard core while its samples are taken.
class RunningCore {
public:
    RunningCore(const CorePlan& plan, const SampledWaveform& waveform, size_t place, qint64 forceAt,
        bool withEvents)
        : m_samples(waveform.cores[place])
        , m_clock(waveform.clocks.indexOf(plan.request.clock))
        , m_fallingEdge(plan.request.fallingEdge)
        , m_forceAt(forceAt)
        , m_withEvents(withEvents)
        , m_delay(pulseDelay(*plan.core))
        , m_forcedBy(plan.setup.forcedBy)
        , m_seen(size_t(m_forcedBy.size()))
        , m_model(plan.setup, m_samples.layout())
    {
    }

    bool isDone() const { return m_model.finished() && !m_withEvents; }
    bool atEnd() const { return m_next == m_samples.size(); }
    bool samplesAt(const ClockEdge& edge) const
    {
        return edge.clock == m_clock && edge.level != m_fallingEdge;
    }
    bool level() const { return m_level; } ///< of its pulse output

    /// Takes the next sample. `levels` are those of all cores before its edge.
    void take(const std::vector<bool>& levels)
    {
        const qint64 sample = m_next++;
        m_changes = !m_toTell.empty() && m_toTell.front() == sample;
        if (m_changes)
            m_toTell.pop_front();
        if (isDone())
            return;
        const bool pulse = look(levels);
        if (pulse)
            m_run.pulses.push_back(sample);
        const SampleEvents events = m_model.take(m_samples.row(sample), sample == m_forceAt, pulse);
        if (events.own)
            m_toTell.push_back(sample + m_delay);
        if (m_withEvents)
            m_run.events.push_back(events);
    }

    /// Behind all samples taken at the same time.
    void settle()
    {
        m_level = m_level != m_changes;
        m_changes = false;
    }

    ModelRun finish()
    {
        m_model.stop();
        m_run.windows = m_model.windows();
        m_run.progress = m_model.progress();
        return std::move(m_run);
    }

private:
    // Whether a level changed since the sample before.
    bool look(const std::vector<bool>& levels)
    {
        bool pulse = false;
        size_t i = 0;
        for (const int core : m_forcedBy) {
            const bool now = levels[size_t(core)];
            pulse = pulse || now != m_seen[i];
            m_seen[i++] = now;
        }
        return pulse;
    }

    const SampleTable& m_samples;
    int m_clock;
    bool m_fallingEdge;
    qint64 m_forceAt;
    bool m_withEvents;
    qint64 m_delay; // from a trigger to the change of the level
    const QList<int>& m_forcedBy;
    std::vector<bool> m_seen; // the levels of these at the sample before
    TriggerModel m_model;
    qint64 m_next = 0;
    std::deque<qint64> m_toTell; // samples at whose edges the level changes
    bool m_level = false;
    bool m_changes = false; // the level, at the edge of the last sample
    ModelRun m_run;
};

using RunningCores = std::vector<std::unique_ptr<RunningCore>>; // null: a Lite core

// One core after the other, when none forces another.
bool runEach(RunningCores& cores, const std::function<bool()>& goesOn)
{
    const std::vector<bool> levels(cores.size());
    for (const auto& core : cores) {
        for (qint64 sample = 0; core && !core->isDone() && !core->atEnd(); ++sample) {
            if (sample % kAtOnce == 0 && goesOn && !goesOn())
                return false;
            core->take(levels);
        }
    }
    return true;
}

// Takes the samples of the edges from `at` on that have the same time; returns the edge behind.
size_t takeOneTime(
    RunningCores& cores, const std::vector<ClockEdge>& edges, size_t at, std::vector<bool>& levels)
{
    do {
        for (const auto& core : cores) {
            if (core && core->samplesAt(edges[at]))
                core->take(levels);
        }
    } while (++at < edges.size() && edges[at].sameTime);
    for (size_t place = 0; place < cores.size(); ++place) {
        if (!cores[place])
            continue;
        cores[place]->settle();
        levels[place] = cores[place]->level();
    }
    return at;
}

bool runTogether(
    RunningCores& cores, const std::vector<ClockEdge>& edges, const std::function<bool()>& goesOn)
{
    const auto isDone = [](const auto& core) { return !core || core->isDone(); };
    std::vector<bool> levels(cores.size());
    qint64 times = 0;
    for (size_t at = 0; at < edges.size(); at = takeOneTime(cores, edges, at, levels)) {
        if (times++ % kAtOnce != 0)
            continue;
        if (goesOn && !goesOn())
            return false;
        if (std::all_of(cores.begin(), cores.end(), isDone))
            break;
    }
    return true;
}

}

std::vector<ModelRun> runModels(const std::vector<CorePlan>& cores, const SampledWaveform& waveform,
    const JointOptions& options)
{
    RunningCores running;
    for (size_t place = 0; place < cores.size(); ++place)
        running.push_back(cores[place].lite
                ? nullptr
                : std::make_unique<RunningCore>(cores[place], waveform, place, options.forceAt,
                    options.eventsOf == int(place)));
    const bool areJoined = !waveform.edges.empty()
        && std::any_of(cores.begin(), cores.end(),
            [](const CorePlan& core) { return !core.setup.forcedBy.isEmpty(); });
    if (!(areJoined ? runTogether(running, waveform.edges, options.goesOn)
                    : runEach(running, options.goesOn)))
        return {};
    std::vector<ModelRun> runs;
    for (size_t place = 0; place < cores.size(); ++place)
        runs.push_back(running[place] ? running[place]->finish()
                                      : runModel(*cores[place].lite, waveform.cores[place]));
    return runs;
}

}
