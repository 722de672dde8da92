// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_BENCH_SIMULATION_H
#define OXACAPTURE_SIMULATOR_BENCH_SIMULATION_H

#include "oxacapture/simulator/simulated_target.h"
#include "oxacapture/trigger/core_plan.h"
#include "oxautils/design/read_design.h"

namespace OXA_CAPTURE {

/// A design in its own test bench, with an analyzer beside it. Neither is changed: the analyzer is
/// a second module at the top of the simulation, which refers to the nets of the design by path.
struct BenchSimulation {
    SimulatorDirs dirs; ///< of the installation
    OXA::OxaArg arg; ///< of the generation; its work directory is not used
    OXA::DesignSources sources; ///< of the design
    QStringList names; ///< that the cores watch
    QStringList bench; ///< Verilog that instantiates the top of the design
    QString workDir; ///< an empty directory, for everything that the run writes
    OXA::DesignHooks hooks; ///< called while Yosys runs
    /// Called with warnings for the user, of one or more lines.
    std::function<void(const QString& text)> warn;
};

/// Generates and compiles the target. A design whose sources Icarus does not read is simulated as
/// Yosys writes it. False when that fails, with `error`.
OXACAPTURE_EXPORT bool buildTarget(const BenchSimulation& simulation,
    const std::vector<CorePlan>& cores, SimulatedTarget& target, QString* error);

}

#endif
