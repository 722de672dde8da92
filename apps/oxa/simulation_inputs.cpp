// SPDX-License-Identifier: Apache-2.0
#include "simulation_inputs.h"

#include "progress_line.h"

#include "oxacapture/files/capture_sampler.h"
#include "oxautils/check/check.h"
#include "oxautils/generate/installed.h"

using namespace OXA_CAPTURE;

namespace {

constexpr char kIcarus[] = "icarus";
constexpr char kVerilator[] = "verilator";
constexpr char kAuto[] = "auto";

}

Simulator SimulationInputs::simulatorKind() const
{
    return simulator == kIcarus ? Simulator::Icarus
        : simulator == kAuto    ? Simulator::Auto
                                : Simulator::Verilator;
}

Option addSimulationInputs(Command& command, SimulationInputs& inputs)
{
    addPartOptions(command, inputs.request.part).required();
    command
        .text("--simulator", inputs.simulator,
            "icarus; verilator, for long waveforms; or auto: by the waveform's length (default)")
        .oneOf({kIcarus, kVerilator, kAuto})
        .typeName("SIMULATOR");
    return command.text("--stimulus", inputs.stimulus, "The waveform").typeName("WAVE");
}

SimulatorDirs installedSimulator()
{
    return {OXA::installed("share/oxautils/sim"), OXA::installed("share/oxautils/cells"),
        OXA::installed(OXA_LIBDIR "/oxautils"), OXA::installed("share/oxautils/ip/boards/uart")};
}

// Reports on `err` what is wrong with the waveform, or with signals that `configuration` names.
static bool reportStimulus(
    const Messages& messages, const QString& configuration, const QString& stimulus, TextOut& err)
{
    for (const Message& message : messages) {
        const OXA::Place place = OXA::placeOfSignal(configuration, message.place);
        if (place.line == 0)
            err.error(message.message(), stimulus);
        else
            err.error(QString("%1:%2:%3: %4")
                          .arg(configuration, QString::number(place.line),
                              QString::number(place.column), message.message()),
                configuration);
    }
    return messages.isEmpty();
}

bool readStimulus(const SimulationInputs& inputs, const QString& configuration,
    const std::vector<CorePlan>& cores, SampledWaveform& waveform, TextOut& err,
    const std::function<bool()>& goesOn)
{
    std::vector<SampleRequest> requests;
    requests.reserve(cores.size());
    for (const CorePlan& core : cores)
        requests.push_back(core.request);
    ProgressLine line(err);
    const auto show = [&](int percent) {
        line.show("reading the waveform", percent);
        return !goesOn || goesOn();
    };
    Messages messages;
    const bool read = sampleStimulus(inputs.stimulus, requests, waveform, messages, show);
    line.clear();
    if (!read && messages.isEmpty())
        err.error("interrupted");
    return reportStimulus(messages, configuration, inputs.stimulus, err) && read;
}

bool report(const Messages& messages, TextOut& err, const QString& file)
{
    for (const Message& message : messages)
        err.error(message.message(), file);
    return messages.isEmpty();
}
