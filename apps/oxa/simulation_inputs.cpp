#include "simulation_inputs.h"

#include "installed.h"
#include "part.h"
#include "progress_line.h"

#include <QFileInfo>

using namespace OXA_CAPTURE;

void addSimulationInputs(CLI::App& command, SimulationInputs& inputs)
{
    addPartOptions(command, inputs.part)->required();
    addText(command, "--stimulus", inputs.stimulus, "The waveform")
        ->type_name("WAVE.vcd")
        ->required();
}

void addIpDir(CLI::App& command, SimulationInputs& inputs)
{
    addText(command, "--ip-dir", inputs.ipDir, "The installed cores (default: beside the program)")
        ->type_name("DIR");
}

bool fillRequest(
    const SimulationInputs& inputs, const QString& file, OXA::OxaArg& arg, QTextStream& err)
{
    const std::optional<DEV::ChipInfo> chip = findPart(inputs.part, err);
    if (!chip)
        return false;
    arg.configFile = file;
    arg.device = chip->partNumber;
    arg.package = chip->name;
    arg.ipDir = inputs.ipDir.isEmpty() ? installedIpDir() : inputs.ipDir;
    return true;
}

bool hasInstalledCores(const OXA::OxaArg& arg, QTextStream& err)
{
    if (QFileInfo(arg.ipDir).isDir())
        return true;
    err << "error: no installed cores in " << arg.ipDir << "; name their directory with --ip-dir\n";
    return false;
}

bool readStimulus(const SimulationInputs& inputs, const std::vector<SimulatedCore>& cores,
    SampledWaveform& waveform, QTextStream& err)
{
    std::vector<SampleRequest> requests;
    requests.reserve(cores.size());
    for (const SimulatedCore& core : cores)
        requests.push_back(core.request);
    ProgressLine line(err);
    const auto show = [&line](int percent) {
        line.show("reading the waveform", percent);
        return true;
    };
    Problems problems;
    const bool read = sampleWaveform(inputs.stimulus, requests, waveform, problems, show);
    line.clear();
    return report(problems, err) && read;
}

bool report(const Problems& problems, QTextStream& err)
{
    for (const Problem& problem : problems)
        err << "error: " << problem.message() << '\n';
    return problems.isEmpty();
}
