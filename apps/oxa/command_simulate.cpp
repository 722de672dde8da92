#include "command.h"
#include "configuration.h"
#include "interrupt.h"
#include "options.h"
#include "part.h"
#include "progress_line.h"

#include "capture/capture_result.h"
#include "capture/trigger_model.h"
#include "capture/waveform_sampler.h"

namespace {

using namespace OXA_CAPTURE;

constexpr char kSummary[] = "Show what an analyzer would capture from a recorded waveform";

constexpr char kHelp[]
    = R"(The waveform is a value change dump (VCD), as simulators write it. The watched
signals and the sample clock are found in it by their full hierarchical name, or
by so many of its last components that no other signal has them. A sample holds
what a register would see: the values just before the clock's active edge.
Sample 0 is the waveform's first; every core is armed before it.

Unknown and floating values count as 0 for triggers and are captured as x.

Exit status 1 says that a core did not trigger; how far it got is said, and the
other cores' samples are written all the same.)";

struct Options {
    QString file;
    PartOptions part;
    QString stimulus;
    QString output;
    bool model = false;
    qint64 forceAt = kNoSample;
    bool json = false;
};

/// What is simulated: a core with what it samples and looks for.
struct SimulatedCore {
    int index = 0;
    QList<OXA::SignalItem> items;
    SampleRequest request;
    const OXA::AOCore_Lite* lite = nullptr; ///< else it is a Standard core, and has triggers
    TriggerSetup setup;
};

QString coreName(int index) { return QString("core %1").arg(index); }

bool report(const Problems& problems, QTextStream& err)
{
    for (const Problem& problem : problems)
        err << "error: " << problem.message() << '\n';
    return problems.isEmpty();
}

std::vector<SimulatedCore> simulatedCores(const Configuration& configuration, Problems& problems)
{
    std::vector<SimulatedCore> cores;
    for (const OXA::AoCore* core : configuration.cores) {
        SimulatedCore simulated;
        simulated.index = core->index;
        simulated.items = core->captureSignals;
        simulated.request = sampleRequest(*core);
        triggerSetup(*core, coreName(core->index), simulated.setup, problems);
        cores.push_back(std::move(simulated));
    }
    // Of a Lite configuration only the first core becomes hardware.
    for (const OXA::AOCore_Lite* core : configuration.liteCores.mid(0, 1)) {
        SimulatedCore simulated;
        simulated.index = core->index;
        simulated.items = core->signalList;
        simulated.request = sampleRequest(*core);
        simulated.lite = core;
        cores.push_back(std::move(simulated));
    }
    return cores;
}

/// Unknown bits are common before a reset; they are worth a word when they decide the trigger.
void warnOfUnknownBits(const SimulatedCore& core, const SampleTable& samples,
    const TriggerProgress& progress, qint64 forceAt, QTextStream& err)
{
    for (size_t unit = 0; unit < progress.firstUnknown.size(); ++unit) {
        const qint64 first = progress.firstUnknown[unit];
        if (first == kNoSample || !dependsOnUnknown(core.setup, samples, forceAt))
            continue;
        err << "warning: " << coreName(core.index) << ": unknown values decide when it triggers; M"
            << core.setup.units[unit].index << " first compares one at sample " << first
            << ", as 0\n";
        return;
    }
}

CapturedCore captureByModel(
    const SimulatedCore& core, const SampleTable& samples, qint64 forceAt, QTextStream& err)
{
    const ModelRun run
        = core.lite ? runModel(*core.lite, samples) : runModel(core.setup, samples, forceAt);
    warnOfUnknownBits(core, samples, run.progress, forceAt, err);
    CapturedCore captured;
    captured.index = core.index;
    captured.items = core.items;
    captured.windows = cutWindows(run.windows, samples);
    if (!core.lite)
        captured.progress = progressText(core.setup, run.progress);
    return captured;
}

void print(const CapturedCore& core, QTextStream& out)
{
    for (size_t i = 0; i < core.windows.size(); ++i) {
        const Window& window = core.windows[i].place;
        out << coreName(core.index) << ", window " << i << ": ";
        if (window.triggerSample != kNoSample)
            out << "trigger at sample " << window.triggerSample << ", ";
        out << window.samples << " samples from " << window.firstSample << " on\n";
    }
}

/// Writes and prints what was captured; false, said on `err`, when the file cannot be written.
bool deliver(const Options& options, const Capture& capture, Io& io)
{
    QString error;
    if (!options.output.isEmpty() && !writeCapture(options.output, capture, &error)) {
        io.err << "error: " << error << '\n';
        return false;
    }
    if (options.json) {
        io.out << QString::fromUtf8(captureJson(capture));
        return true;
    }
    for (const CapturedCore& core : capture)
        print(core, io.out);
    if (!options.output.isEmpty())
        io.out << options.output << ": written\n";
    return true;
}

bool reportIdleCores(const Capture& capture, QTextStream& err)
{
    bool allTriggered = true;
    for (const CapturedCore& core : capture) {
        if (core.triggered())
            continue;
        allTriggered = false;
        err << coreName(core.index) << " did not trigger: " << core.progress << '\n';
    }
    return allTriggered;
}

/// Reads what the cores sample from the waveform; false, said on `err`, when that fails.
bool readStimulus(const Options& options, const std::vector<SimulatedCore>& cores,
    SampledWaveform& waveform, QTextStream& err)
{
    std::vector<SampleRequest> requests;
    for (const SimulatedCore& core : cores)
        requests.push_back(core.request);
    ProgressLine line(err);
    const auto show = [&line](int percent) {
        line.show("reading the waveform", percent);
        return true;
    };
    Problems problems;
    const bool read = sampleWaveform(options.stimulus, requests, waveform, problems, show);
    line.clear();
    return report(problems, err) && read;
}

/// Everything that has to be right before anything is simulated.
bool prepare(const Options& options, const Configuration& configuration,
    std::vector<SimulatedCore>& cores, QTextStream& err)
{
    QString error;
    if (!options.output.isEmpty() && !hasCaptureFormat(options.output, &error)) {
        err << "error: " << error << '\n';
        return false;
    }
    Problems problems;
    cores = simulatedCores(configuration, problems);
    if (cores.empty())
        problems.append({options.file, "it holds no core, so there is nothing to simulate"});
    if (!options.model)
        problems.append(Problem {{}, "only --model simulates so far"});
    if (options.forceAt != kNoSample && configuration.mode == OXA::Lite)
        problems.append(Problem {"--force-trigger-at", "Lite cores have no trigger"});
    return report(problems, err);
}

int run(const Options& options, Io& io)
{
    Configuration configuration;
    std::vector<SimulatedCore> cores;
    SampledWaveform waveform;
    if (!readConfiguration(options.file, configuration, io.err) || !findPart(options.part, io.err)
        || !prepare(options, configuration, cores, io.err)
        || !readStimulus(options, cores, waveform, io.err))
        return kUnusable;

    Capture capture;
    for (size_t i = 0; i < cores.size(); ++i)
        capture.push_back(captureByModel(cores[i], waveform.cores[i], options.forceAt, io.err));
    const bool delivered = deliver(options, capture, io);
    const bool allTriggered = reportIdleCores(capture, io.err);
    return delivered && allTriggered ? kDone : kJobFailed;
}

}

void addSimulate(CLI::App& app, Io& io, int& status)
{
    CLI::App* command = addCommand(app, "simulate", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    addText(*command, "FILE", options->file, "The configuration")->required();
    addPartOptions(*command, options->part)->required();
    addText(*command, "--stimulus", options->stimulus, "The waveform")
        ->type_name("WAVE.vcd")
        ->required();
    addText(*command, "-o,--output", options->output,
        "Where the captured samples go: a .vcd, .csv or .sr (sigrok session) file")
        ->type_name("OUT");
    command->add_flag("--model", options->model,
        "Ask the model of the trigger instead of simulating the generated Verilog");
    command
        ->add_option(
            "--force-trigger-at", options->forceAt, "Force every core's trigger at this sample")
        ->check(CLI::NonNegativeNumber)
        ->type_name("SAMPLE");
    command->add_flag("--json", options->json, "For programs: one JSON object");
    command->callback([&io, &status, options] { status = run(*options, io); });
}
