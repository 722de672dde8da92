#ifndef OXACAPTURE_SIMULATOR_SIMULATION_H
#define OXACAPTURE_SIMULATOR_SIMULATION_H

#include "oxacapture/simulator/simulated_target.h"
#include "oxacapture/trigger/core_plan.h"

#include <functional>

namespace OXA_CAPTURE {

/// One run of the generated Verilog of a configuration, with a waveform at its ports.
struct Simulation {
    SimulatorDirs dirs;
    OXA::OxaArg arg; ///< of the generation; its work directory is not used
    QString netlist; ///< takes the place of the Verilog; may be empty
    QString workDir; ///< an empty directory, for everything that the run writes
    qint64 forceAt = kNoSample; ///< sample of each core to force its trigger at
    /// Told what is being done and the percentage of it; the run stops when it returns false.
    std::function<bool(const QString& stage, int percent)> progress;
    std::function<bool()> goesOn; ///< asked while the simulator is waited for; may be empty
    /// Told what a user should know.
    std::function<void(const QString& text)> warn;
};

/// Clock periods behind the waveform that bring the last samples into memory.
constexpr int kLeadOut = 8;
/// Those in front of it in which cores that run from power-up on come to rest.
constexpr int kLeadIn = 12;

/// Generates and compiles it as a target for `cores`, which sample `waveform`, and writes the
/// waveform's steps to the file `stimulus`. `steps` counts them, two for each of the `leadIn`
/// periods in front of the waveform and of those behind it included. False when that fails, with
/// `error`, which is empty after `progress` stopped the work.
OXACAPTURE_EXPORT bool buildTarget(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, int leadIn, SimulatedTarget& target, const QString& stimulus,
    qint64& steps, QString& error);

/// Runs it for `cores`, which sample `waveform`. `runs` holds for each core what the trigger model
/// makes of it, and is replaced by what the simulated core captured.
///
/// False when that fails, with `error`, which is empty after `progress` stopped the run.
OXACAPTURE_EXPORT bool simulate(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, std::vector<ModelRun>& runs, QString& error);

}

#endif
