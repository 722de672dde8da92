// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/simulation.h"

#include "files/fail.h"
#include "oxacapture/simulator/early_build.h"
#include "oxacapture/simulator/preparation.h"
#include "oxacapture/simulator/stimulus.h"
#include "oxacapture/simulator/target_capture.h"

#include <limits>

namespace OXA_CAPTURE {

namespace {

bool compileVerilated(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const Preparation& preparation, SimulatedTarget& target, QString* error)
{
    const auto goesOn
        = [&simulation] { return simulation.progress("compiling with Verilator", 0); };
    return simulation.early && simulation.early->isBegun()
        ? simulation.early->finish(goesOn, error)
        : buildVerilated(simulation, cores, preparation, target, goesOn, error);
}

bool build(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const Preparation& preparation, bool verilated, SimulatedTarget& target, QString* error)
{
    QString why;
    if (verilated && compileVerilated(simulation, cores, preparation, target, &why))
        return true;
    if (verilated && (why.isEmpty() || simulation.simulator == Simulator::Verilator))
        return OXA::fail(error, why);
    if (verilated)
        simulation.warn("simulated with Icarus, because Verilator cannot be used: " + why);
    if (simulation.early)
        simulation.early->stop(); // both use the work directory
    const auto goesOn = [&simulation] { return simulation.progress("compiling", 0); };
    const auto design = designOf(simulation, cores, preparation, error);
    return design
        && (target.build(*design, testbench(preparation.ports), goesOn)
            || OXA::fail(error, target.error()));
}

/// Builds a target, of whose steps about `toPlay` will be played.
bool buildTarget(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, int leadIn, qint64 toPlay, SimulatedTarget& target,
    qint64& steps, QString* error)
{
    const Preparation preparation = prepare(simulation, cores);
    auto stimulus
        = std::make_unique<Stimulus>(preparation.ports, leadIn, kLeadOut, waveform, cores);
    steps = stimulus->steps();
    const bool verilated = takesVerilator(simulation, std::min(steps, toPlay));
    if (!simulation.netlist.isEmpty() && simulation.simulator == Simulator::Verilator)
        return OXA::fail(error,
            "Verilator has no unknown values, which a netlist needs; simulate it with Icarus");
    if (!simulation.progress("generating", 0)
        || !build(simulation, cores, preparation, verilated, target, error))
        return false;
    target.setStimulus(std::move(stimulus));
    return true;
}

// Clock periods until those cores are at rest that run from power-up on with other settings than
// those of the run.
int periodsInFront(const Simulation& simulation, const std::vector<CorePlan>& cores)
{
    const bool all = !simulation.built.empty();
    const bool any = std::any_of(cores.begin(), cores.end(), [all](const CorePlan& core) {
        return core.core && core.core->captureInitDataEnabled
            && (all || core.powerUpPosition != core.setup.triggerPos);
    });
    return any ? kLeadIn : 0;
}

// Steps of the waveform after which every core has finished, by the trigger model; any number when
// one of them does not.
qint64 expectedSteps(const std::vector<CorePlan>& cores, const SampledWaveform& waveform,
    const std::vector<ModelRun>& runs)
{
    qint64 steps = 0;
    for (size_t core = 0; core < cores.size(); ++core) {
        if (runs[core].windows.empty())
            return std::numeric_limits<qint64>::max();
        const Window& last = runs[core].windows.back();
        const qint64 step
            = stepOfSample(waveform, cores[core].request, last.firstSample + last.span() - 1);
        steps = std::max(steps, step + 1 + qint64(2) * kLeadOut);
    }
    return steps;
}

const std::vector<CorePlan>& builtCores(
    const Simulation& simulation, const std::vector<CorePlan>& cores)
{
    return simulation.built.empty() ? cores : simulation.built;
}

bool capture(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, qint64 steps, qint64 expected, SimulatedTarget& target,
    std::vector<ModelRun>& runs, QString* error)
{
    TargetCapture client(target, builtCores(simulation, cores), cores, waveform);
    PlayedSteps played;
    played.leadIn = qint64(2) * periodsInFront(simulation, cores);
    played.leadOut = qint64(2) * kLeadOut;
    played.waveform = steps - played.leadIn - played.leadOut;
    played.expected = std::min(expected, played.waveform);
    const auto progress
        = [&simulation](int percent) { return simulation.progress("simulating", percent); };
    bool ok = client.begin(simulation.workDir + "/generated");
    if (ok && !client.namesWarning().isEmpty())
        simulation.warn(client.namesWarning());
    ok = ok && client.run(played, simulation.forceAt, progress);
    for (size_t core = 0; ok && core < cores.size(); ++core) {
        const std::vector<Window> expected = runs[core].windows;
        ok = simulation.progress("reading out", int(100 * core / cores.size()))
            && client.read(core, expected, runs[core]);
    }
    return ok || OXA::fail(error, client.error());
}

}

bool buildTarget(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, int leadIn, SimulatedTarget& target, qint64& steps,
    QString* error)
{
    return buildTarget(simulation, cores, waveform, leadIn, std::numeric_limits<qint64>::max(),
        target, steps, error);
}

bool simulate(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, std::vector<ModelRun>& runs, QString* error)
{
    SimulatedTarget own;
    SimulatedTarget& target = simulation.early ? simulation.early->target() : own;
    target.setGoesOn(simulation.goesOn);
    qint64 steps = 0;
    const qint64 expected = expectedSteps(cores, waveform, runs);
    if (!buildTarget(simulation, builtCores(simulation, cores), waveform,
            periodsInFront(simulation, cores), expected, target, steps, error))
        return false;
    if (!target.start())
        return OXA::fail(error, target.error());
    return capture(simulation, cores, waveform, steps, expected, target, runs, error);
}

}
