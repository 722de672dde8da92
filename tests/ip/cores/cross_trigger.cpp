// SPDX-License-Identifier: Apache-2.0
// Cores that force each other, at random clocks: cross_trigger TRIALS.
//
// In each trial the cores of cross_trigger.oxa begin at power-up, and one of them has a trigger, or
// two. The other one's has to be at the first edge of its own clock behind D periods of the first
// clock, so at most one period of its own later, and D + 1 edges later when the clocks are the same
// (docs/analyzer-cores.md).
#include "Vcross_trigger.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

using Time = int64_t; // picoseconds

constexpr int kCores = 2;
// Edges from a trigger sample's own to its pulse: with static, with dynamic expressions.
constexpr int kStages[kCores] = {3, 4};
constexpr bool kFalling[kCores] = {false, true}; // samples are taken at falling edges
constexpr double kMostRatio = 50;
// Samples from a trigger to the first one of the next window: of 4, one less at power-up (the
// part).
constexpr int kToNext = 3;
constexpr int kEarliest = 8; // samples before the trigger, at most
constexpr int kAfterwards = 12; // edges of each clock in which nothing else may happen

struct Clock {
    Time first = 0; // its first active edge
    Time period = 0;

    Time edge(int64_t number) const { return first + number * period; }
    // The first active edge behind `time`.
    int64_t edgeAfter(Time time) const { return time < first ? 0 : (time - first) / period + 1; }
};

struct Trial {
    Clock clocks[kCores];
    int source = 0;
    int64_t sample = 0; // of the source, its first trigger
    int triggers = 1; // the second one in the next window's first sample

    int forced() const { return 1 - source; }
    bool isEqual() const
    {
        return clocks[0].period == clocks[1].period && clocks[0].first == clocks[1].first;
    }
    // When the trigger `number` changes the level between the cores.
    Time pulse(int number) const
    {
        return clocks[source].edge(sample + number * kToNext + kStages[source]);
    }
};

Trial randomTrial(std::mt19937& random)
{
    const auto between = [&random](Time low, Time high) {
        return std::uniform_int_distribution<Time>(low, high)(random);
    };
    Trial trial;
    trial.source = int(between(0, 1));
    trial.sample = between(0, kEarliest);
    trial.triggers = between(0, 3) ? 1 : 2;
    const Time base = between(1000, 9999);
    const double ratio
        = std::exp(std::uniform_real_distribution<double>(0, std::log(kMostRatio))(random));
    const bool isEqual = between(0, 9) == 0;
    const int slow = int(between(0, 1));
    for (int core = 0; core < kCores; ++core) {
        Clock& clock = trial.clocks[core];
        clock.period = core == slow && !isEqual ? Time(double(base) * ratio) : base;
        clock.first = isEqual ? base : between(1, clock.period);
    }
    return trial;
}

// The cores, driven up to some time.
class Bench {
public:
    explicit Bench(const Trial& trial)
        : m_trial(trial)
    {
        for (int core = 0; core < kCores; ++core)
            setClock(core, false);
        m_cores.eval();
    }

    void runTo(Time end)
    {
        for (Time time = next(); time <= end; time = next())
            step(time);
    }
    int triggers(int core) const { return m_triggers[core]; }
    int64_t stamp(int core) const { return int64_t(events(core) >> 1); }
    bool wasForced(int core) const { return events(core) & 1; }

private:
    // The next change of a clock: 2 k for its active edge k, 2 k + 1 for the other one behind.
    Time changeOf(int core) const
    {
        const Clock& clock = m_trial.clocks[core];
        return clock.edge(m_changes[core] / 2) + (m_changes[core] % 2 ? clock.period / 2 : 0);
    }
    Time next() const { return std::min(changeOf(0), changeOf(1)); }
    uint64_t events(int core) const { return core ? m_cores.events1 : m_cores.events0; }
    void setClock(int core, bool active)
    {
        (core ? m_cores.clk1 : m_cores.clk0) = active != kFalling[core];
    }

    // At equal times, both clocks change at once.
    void step(Time time)
    {
        for (int core = 0; core < kCores; ++core) {
            if (changeOf(core) != time)
                continue;
            const bool active = m_changes[core] % 2 == 0;
            if (active) {
                const int64_t behind = m_changes[core] / 2 - m_trial.sample;
                (core ? m_cores.t1 : m_cores.t0) = core == m_trial.source
                    && (behind == 0 || (behind == kToNext && m_trial.triggers == 2));
                m_triggers[core] += core ? m_cores.trigger1 : m_cores.trigger0;
            }
            setClock(core, active);
            ++m_changes[core];
        }
        m_cores.eval();
    }

    const Trial& m_trial;
    Vcross_trigger m_cores;
    int64_t m_changes[kCores] = {0, 0};
    int m_triggers[kCores] = {0, 0}; // edges at which a core's output was high
};

// What is wrong in a trial with one trigger; null: nothing.
const char* faultOfOne(const Trial& trial, const Bench& bench)
{
    const Clock& forced = trial.clocks[trial.forced()];
    if (!bench.wasForced(trial.forced()))
        return "no trigger was forced";
    const int64_t sample = bench.stamp(trial.forced());
    const Time late = forced.edge(sample) - trial.pulse(0);
    if (late <= 0 || late > (sample > 0 ? forced.period : forced.first))
        return "the forced trigger is out of its bound";
    if (trial.isEqual() && sample != trial.sample + kStages[trial.source] + 1)
        return "the forced trigger is at another edge of the same clock";
    return bench.triggers(trial.forced()) == 1 ? nullptr : "more triggers, or a longer output";
}

// The same with two triggers: between two edges they cancel each other, and one in an open window
// is ignored.
const char* faultOfTwo(const Trial& trial, const Bench& bench)
{
    const Clock& forced = trial.clocks[trial.forced()];
    const int64_t first = forced.edgeAfter(trial.pulse(0));
    const int64_t second = forced.edgeAfter(trial.pulse(1));
    const int triggers = second == first ? 0 : second < first + kToNext ? 1 : 2;
    if (bench.triggers(trial.forced()) != triggers)
        return "another number of forced triggers";
    return triggers == 0 || bench.stamp(trial.forced()) == (triggers == 1 ? first : second)
        ? nullptr
        : "the forced trigger is at another sample";
}

const char* fault(const Trial& trial)
{
    const int last = trial.triggers - 1;
    const Clock& forced = trial.clocks[trial.forced()];
    Bench bench(trial);
    bench.runTo(std::max(trial.pulse(last) + kAfterwards * trial.clocks[trial.source].period,
        forced.edge(forced.edgeAfter(trial.pulse(last)) + kAfterwards)));
    if (bench.stamp(trial.source) != trial.sample + last * kToNext || bench.wasForced(trial.source)
        || bench.triggers(trial.source) != trial.triggers)
        return "the source's own triggers";
    return last ? faultOfTwo(trial, bench) : faultOfOne(trial, bench);
}

}

int main(int, char** arguments)
{
    std::mt19937 random(1);
    const int trials = std::atoi(arguments[1]);
    int equal = 0;
    int faster = 0; // forced clocks that are much faster
    int slower = 0; // and much slower
    for (int i = 0; i < trials; ++i) {
        const Trial trial = randomTrial(random);
        const Clock& source = trial.clocks[trial.source];
        const Clock& forced = trial.clocks[trial.forced()];
        equal += trial.isEqual();
        faster += source.period > 40 * forced.period;
        slower += forced.period > 40 * source.period;
        const char* const what = fault(trial);
        if (!what)
            continue;
        std::printf("trial %d, from core %d at its sample %d: %s\n", i, trial.source,
            int(trial.sample), what);
        return 1;
    }
    std::printf("%d trials, %d of equal clocks\n", trials, equal);
    return equal == 0 || faster == 0 || slower == 0;
}
