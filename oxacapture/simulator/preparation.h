// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_PREPARATION_H
#define OXACAPTURE_SIMULATOR_PREPARATION_H

#include "oxacapture/simulator/simulation.h"
#include "oxacapture/simulator/stimulus.h"

#include <QHash>

#include <optional>

namespace OXA_CAPTURE {

/// The configuration as it is simulated, and the wrapper's ports.
struct Preparation {
    StimulusPorts ports;
    QHash<QString, QString> clockNames; ///< new names of sample clocks that are also watched
};

/// Whether Verilator is used to play `steps` steps.
bool takesVerilator(const Simulation& simulation, qint64 steps);

Preparation prepare(const Simulation& simulation, const std::vector<CorePlan>& cores);

/// What is built; nothing, with `error`, when that cannot be simulated.
std::optional<SimulatedTarget::Design> designOf(const Simulation& simulation,
    const std::vector<CorePlan>& cores, const Preparation& preparation, QString* error);

/// Builds `target` with Verilator. Stops, without an error, when `goesOn` returns false.
bool buildVerilated(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const Preparation& preparation, SimulatedTarget& target, const std::function<bool()>& goesOn,
    QString* error);

}

#endif
