#include "build_report.h"
#include "command.h"
#include "interrupt.h"
#include "progress_line.h"
#include "simulation_inputs.h"

#include "oxacapture/simulator/simulation.h"
#include "oxacapture/simulator/target_player.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/generate/installed.h"

#include <QTemporaryDir>

namespace {

using namespace OXA_CAPTURE;

constexpr char kSummary[] = "Run a simulated target for OpenOCD";

constexpr char kHelp[]
    = R"(The analyzer is generated and compiled with Icarus. It waits for OpenOCD to connect to
its JTAG pads. The waveform begins shortly after `oxa capture` has armed the cores. At
its end the sample clocks stop; with --loop it begins again.

  oxa target uart.oxa --part PN --stimulus uart.vcd &
  openocd -f simulated-target.cfg &
  oxa capture uart.oxa -o captured.vcd

Exit status 1: `oxa check` finds an error that prevents building the analyzer
(docs/checks.md). Ctrl-C ends the target. docs/first-capture.md is a tutorial.)";

constexpr int kDefaultPort = 9823;
constexpr int kMostPort = 65535;

struct Options {
    QString file;
    SimulationInputs inputs;
    int port = kDefaultPort;
    bool loop = false;
};

bool prepare(const OXA::Configuration& configuration, const OXA::OxaArg& arg,
    std::vector<CorePlan>& cores, TextOut& err)
{
    Messages messages;
    cores = corePlans(configuration.cores, configuration.liteCores, arg, messages);
    return report(messages, err);
}

void greet(const SimulatedTarget& target, TextOut& out)
{
    out << "the analyzer waits at port " << target.port() << "; connect with\n  openocd ";
    if (target.port() != kDefaultPort)
        out << "-c \"set OXA_PORT " << target.port() << "\" ";
    out << "-f " << OXA::installed("share/oxautils/openocd/simulated-target.cfg") << '\n';
    out.flush();
}

/// Builds the target and plays the stimulus until it is interrupted.
int serve(const Options& options, const OXA::OxaArg& arg, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, Io& io)
{
    const QTemporaryDir temporary;
    const Interrupt interrupt([] {});
    ProgressLine line(io.err);
    Simulation simulation;
    simulation.dirs = installedSimulator();
    simulation.arg = arg;
    simulation.workDir = temporary.path();
    simulation.progress = [&](const QString& stage, int percent) {
        line.show(stage, percent);
        return !interrupt.happened();
    };
    SimulatedTarget target;
    target.setGoesOn([&interrupt] { return !interrupt.happened(); });
    const QString stimulus = temporary.path() + "/stimulus.txt";
    qint64 steps = 0;
    QString error;
    bool ok = buildTarget(simulation, cores, waveform, 0, target, stimulus, steps, &error);
    line.clear();
    if (ok && !target.serve(stimulus, options.port)) {
        ok = false;
        error = target.error();
    }
    if (ok)
        greet(target, io.out);
    TargetPlayer player(target, steps, options.loop, cores);
    while (ok && !interrupt.happened()) {
        ok = player.step();
        error = target.error();
    }
    if (ok || interrupt.happened())
        return kDone;
    io.err.error(error);
    return kJobFailed;
}

int run(const Options& options, Io& io)
{
    const OXA::ParseOnce once;
    OXA::Configuration configuration;
    OXA::OxaArg arg;
    std::vector<CorePlan> cores;
    SampledWaveform waveform;
    if (!readConfiguration(options.file, configuration, io.err)
        || !fillRequest(options.inputs.request, options.file, arg, io.err)
        || !hasInstalledCores(arg, io.err))
        return kUnusable;
    const OXA::BuildRun build(arg, false);
    if (const int status = checkBuild(build, options.file, "serve", OtherProblems::NotSaid, io.err);
        status != kDone)
        return status;
    if (!prepare(configuration, arg, cores, io.err)
        || !readStimulus(options.inputs, cores, waveform, io.err))
        return kUnusable;
    return serve(options, arg, cores, waveform, io);
}

}

void addTarget(CLI::App& app, Io& io, int& status)
{
    CLI::App* command = addCommand(app, "target", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    addText(*command, "FILE", options->file, "The configuration")->required();
    addSimulationInputs(*command, options->inputs);
    command
        ->add_option("--port", options->port,
            "TCP port at 127.0.0.1 for OpenOCD; 0: any free port (default: 9823)")
        ->check(CLI::Range(0, kMostPort))
        ->type_name("N");
    command->add_flag("--loop", options->loop, "Repeat the waveform");
    addIpDir(*command, options->inputs.request);
    command->callback([&io, &status, options] { status = run(*options, io); });
}
