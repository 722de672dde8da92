// SPDX-License-Identifier: Apache-2.0
#include "simulation_inputs.h"

#include "progress_line.h"

#include "oxautils/generate/installed.h"

using namespace OXA_CAPTURE;

Option addSimulationInputs(Command& command, SimulationInputs& inputs)
{
    addPartOptions(command, inputs.request.part).required();
    return command.text("--stimulus", inputs.stimulus, "The waveform").typeName("WAVE.vcd");
}

SimulatorDirs installedSimulator()
{
    return {OXA::installed("share/oxautils/sim"), OXA::installed("share/oxautils/cells"),
        OXA::installed(OXA_LIBDIR "/oxautils"), OXA::installed("share/oxautils/ip/boards/uart")};
}

bool readStimulus(const SimulationInputs& inputs, const std::vector<CorePlan>& cores,
    SampledWaveform& waveform, TextOut& err)
{
    std::vector<SampleRequest> requests;
    requests.reserve(cores.size());
    for (const CorePlan& core : cores)
        requests.push_back(core.request);
    ProgressLine line(err);
    const auto show = [&line](int percent) {
        line.show("reading the waveform", percent);
        return true;
    };
    Messages messages;
    const bool read = sampleWaveform(inputs.stimulus, requests, waveform, messages, show);
    line.clear();
    return report(messages, err, inputs.stimulus) && read;
}

bool report(const Messages& messages, TextOut& err, const QString& file)
{
    for (const Message& message : messages)
        err.error(message.message(), file);
    return messages.isEmpty();
}
