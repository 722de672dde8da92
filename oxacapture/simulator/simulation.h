// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_SIMULATION_H
#define OXACAPTURE_SIMULATOR_SIMULATION_H

#include "oxacapture/simulator/simulated_target.h"
#include "oxacapture/trigger/core_plan.h"

#include <functional>

namespace OXA_CAPTURE {

class EarlyBuild;

/// One run of the generated Verilog of a configuration, with a waveform at its ports.
struct Simulation {
    SimulatorDirs dirs; ///< of the installation
    OXA::OxaArg arg; ///< of the generation; its work directory is not used
    /// The cores as they are built, when the run has other settings; else empty.
    std::vector<CorePlan> built;
    QString netlist; ///< used instead of the Verilog; may be empty
    QString workDir; ///< an empty directory, for everything that the run writes
    bool overUart = false; ///< the analyzer's link is a UART, not JTAG
    Simulator simulator = Simulator::Icarus; ///< what simulates
    /// What compiles it since before the waveform was read; may be null.
    EarlyBuild* early = nullptr;
    qint64 forceAt = kNoSample; ///< sample of each core to force its trigger at
    /// Called with the stage and its percentage; the run stops when it returns false.
    std::function<bool(const QString& stage, int percent)> progress;
    std::function<bool()> goesOn; ///< called during a wait for the simulator; may be empty
    /// Called with warnings for the user.
    std::function<void(const QString& text)> warn;
};

/// Clock periods after the waveform, in which the last samples are written to memory.
constexpr int kLeadOut = 8;
/// Clock periods before the waveform, after which stopped power-up captures are at rest.
constexpr int kLeadIn = 12;

/// Steps from which on `Simulator::Auto` takes Verilator: it plays them faster than Icarus by the
/// time that its own compilation takes (docs/simulated-target.md).
constexpr qint64 kVerilatorPays = 200'000;

/// Generates and compiles a target for `cores`, which plays `waveform`; both have to outlive it.
/// `steps` is the number of steps that it can play, with two for each of the `leadIn` periods
/// before the waveform and of those after it. False when that fails, with `error`, which is empty
/// when `progress` stopped the work.
OXACAPTURE_EXPORT bool buildTarget(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, int leadIn, SimulatedTarget& target, qint64& steps,
    QString* error);

/// Runs it for `cores`, which sample `waveform`. `runs` has the result of the trigger model for
/// each core, and gets what the simulated core captured. The waveform is played until every core
/// has finished, or to its end.
///
/// False when that fails, with `error`, which is empty when `progress` stopped the run.
OXACAPTURE_EXPORT bool simulate(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, std::vector<ModelRun>& runs, QString* error);

}

#endif
