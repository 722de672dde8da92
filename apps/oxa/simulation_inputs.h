#ifndef APPS_OXA_SIMULATION_INPUTS_H
#define APPS_OXA_SIMULATION_INPUTS_H

#include "options.h"

#include "capture/simulated_core.h"

#include <QTextStream>

/// What a simulated analyzer is made of beside its configuration, for commands that need it.
struct SimulationInputs {
    PartOptions part;
    QString stimulus;
    QString ipDir;
};

/// Adds --part and its kin, and --stimulus.
void addSimulationInputs(CLI::App& command, SimulationInputs& inputs);
/// Adds --ip-dir.
void addIpDir(CLI::App& command, SimulationInputs& inputs);

// Each is false, said on `err`, when that fails.

/// Fills the request to generate `file` for the part.
bool fillRequest(
    const SimulationInputs& inputs, const QString& file, OXA::OxaArg& arg, QTextStream& err);
/// Whether the cores are where the request looks for them.
bool hasInstalledCores(const OXA::OxaArg& arg, QTextStream& err);
/// Reads what the cores sample from the waveform.
bool readStimulus(const SimulationInputs& inputs,
    const std::vector<OXA_CAPTURE::SimulatedCore>& cores, OXA_CAPTURE::SampledWaveform& waveform,
    QTextStream& err);
/// Whether there are no problems.
bool report(const OXA_CAPTURE::Problems& problems, QTextStream& err);

#endif
