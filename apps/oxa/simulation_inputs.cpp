#include "simulation_inputs.h"

#include "progress_line.h"

using namespace OXA_CAPTURE;

void addSimulationInputs(CLI::App& command, SimulationInputs& inputs)
{
    addPartOptions(command, inputs.request.part)->required();
    addText(command, "--stimulus", inputs.stimulus, "The waveform")
        ->type_name("WAVE.vcd")
        ->required();
}

bool readStimulus(const SimulationInputs& inputs, const std::vector<SimulatedCore>& cores,
    SampledWaveform& waveform, TextOut& err)
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

bool report(const Problems& problems, TextOut& err)
{
    for (const Problem& problem : problems)
        err << "error: " << problem.message() << '\n';
    return problems.isEmpty();
}
