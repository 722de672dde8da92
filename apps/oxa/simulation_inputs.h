#ifndef APPS_OXA_SIMULATION_INPUTS_H
#define APPS_OXA_SIMULATION_INPUTS_H

#include "request.h"
#include "text_out.h"

#include "oxacapture/simulator/simulated_target.h"
#include "oxacapture/trigger/core_plan.h"

/// What a simulated analyzer is made of beside its configuration, for commands that need it.
struct SimulationInputs {
    RequestOptions request;
    QString stimulus;
};

/// Adds --part and its kin, and --stimulus.
void addSimulationInputs(CLI::App& command, SimulationInputs& inputs);

/// What a simulation takes of what is installed with the program.
OXA_CAPTURE::SimulatorDirs installedSimulator();

// Each is false, said on `err`, when that fails.

/// Reads what the cores sample from the waveform.
bool readStimulus(const SimulationInputs& inputs, const std::vector<OXA_CAPTURE::CorePlan>& cores,
    OXA_CAPTURE::SampledWaveform& waveform, TextOut& err);
/// Whether there are no messages.
bool report(const OXA_CAPTURE::Messages& messages, TextOut& err);

#endif
