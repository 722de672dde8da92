// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_SIMULATION_INPUTS_H
#define APPS_OXA_SIMULATION_INPUTS_H

#include "request.h"
#include "text_out.h"

#include "oxacapture/simulator/simulated_target.h"
#include "oxacapture/trigger/core_plan.h"

#include <functional>

/// Inputs of a simulated analyzer beside its configuration.
struct SimulationInputs {
    RequestOptions request;
    QString simulator = "auto";
    QString stimulus;

    OXA_CAPTURE::Simulator simulatorKind() const;
};

/// Adds --part, --device, --device-db, --simulator and --stimulus; returns the last, so that it can
/// be required.
Option addSimulationInputs(Command& command, SimulationInputs& inputs);

/// The installed directories that a simulation needs.
OXA_CAPTURE::SimulatorDirs installedSimulator();

// On failure, each returns false with the error on `err`.

/// Reads the samples of the cores from the waveform, until `goesOn` returns false; it may be empty.
bool readStimulus(const SimulationInputs& inputs, const QString& configuration,
    const std::vector<OXA_CAPTURE::CorePlan>& cores, OXA_CAPTURE::SampledWaveform& waveform,
    TextOut& err, const std::function<bool()>& goesOn = {});
/// Prints the messages; true when there are none.
bool report(const OXA_CAPTURE::Messages& messages, TextOut& err, const QString& file = {});

#endif
