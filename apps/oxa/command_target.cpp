// SPDX-License-Identifier: Apache-2.0
#include "build_report.h"
#include "command.h"
#include "design_options.h"
#include "simulation_inputs.h"

#include "oxacapture/simulator/bench_simulation.h"
#include "oxacapture/simulator/simulation.h"
#include "oxacapture/simulator/target_player.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/design/attach.h"
#include "oxautils/generate/installed.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <limits>

namespace {

using namespace OXA_CAPTURE;

constexpr char kSummary[] = "Run a simulated target for OpenOCD";

constexpr char kHelp[]
    = R"(The analyzer is generated and compiled with Icarus or Verilator. It waits for OpenOCD
to connect to its JTAG pads.

--stimulus plays a recorded waveform. It begins shortly after `oxa capture` has armed
the cores. At its end the sample clocks stop; with --loop it begins again.

  oxa target uart.oxa --part PN --stimulus uart.vcd &
  openocd -f simulated-target.cfg &
  oxa capture uart.oxa -o captured.vcd

--bench runs the design itself in its test bench, with the analyzer connected to its
nets; design and bench are not changed. Simulated time passes only while a core is
armed. $finish does not end the design. The output of the bench is printed. The
design is that of --design or -f, or the one saved beside FILE
(docs/co-simulation.md).

  oxa target soc.oxa --part PN --design *.sv --top soc --bench tb.v &

Exit status 1: `oxa check` finds an error that prevents building the analyzer
(docs/checks.md). Ctrl-C ends the target. docs/first-capture.md is a tutorial.)";

constexpr int kDefaultPort = 9823;
constexpr int kMostPort = 65535;
constexpr char kJtag[] = "jtag";
constexpr char kUart[] = "uart";

struct Options {
    QString file;
    SimulationInputs inputs;
    DesignOptions design;
    QStringList bench;
    int port = kDefaultPort;
    bool loop = false;
    QString link = kJtag;
};

/// A waveform or a design with its bench.
struct Job {
    OXA::OxaArg arg;
    std::vector<CorePlan> cores;
    SampledWaveform waveform;
    OXA::DesignSources sources;
    QStringList names; // of the design's signals
};

bool prepare(
    const Options& options, const OXA::Configuration& configuration, Job& job, TextOut& err)
{
    Messages messages;
    job.cores = corePlans(configuration.cores, configuration.liteCores, job.arg, messages);
    for (const QString& bench : options.bench) {
        if (!QFileInfo(bench).isFile())
            messages.append(Message {bench, "there is no such bench"});
    }
    if (!report(messages, err))
        return false;
    if (options.bench.isEmpty())
        return readStimulus(options.inputs, options.file, job.cores, job.waveform, err);
    job.names = OXA::watchedNames(configuration);
    if (!findSources(options.design, options.file, job.sources, err))
        return false;
    if (job.sources.isEmpty())
        err.error("no design is named; use --design or -f");
    return !job.sources.isEmpty();
}

void greetSerial(const SimulatedTarget& target, const Options& options, TextOut& out)
{
    out << "the analyzer waits at " << target.serialDevice() << "; capture with\n  oxa capture "
        << options.file << " --serial " << target.serialDevice() << " -o OUT\n";
    out.flush();
}

void greet(const SimulatedTarget& target, TextOut& out)
{
    out << "the analyzer waits at port " << target.port() << "; connect with\n  openocd ";
    if (target.port() != kDefaultPort)
        out << "-c \"set OXA_PORT " << target.port() << "\" ";
    out << "-f " << OXA::installed("share/oxautils/openocd/simulated-target.cfg") << '\n';
    out.flush();
}

/// Prints the lines that the bench has printed.
void print(SimulatedTarget& target, TextOut& out)
{
    const QString lines = target.printed();
    if (lines.isEmpty())
        return;
    out.lines(lines);
    out.flush();
}

/// Builds the target in `workDir`; `steps` is the number of steps that it can play.
bool build(const Options& options, const Job& job, const QString& workDir, DesignWork& work,
    SimulatedTarget& target, qint64& steps, Io& io, QString* error)
{
    const OXA::DesignHooks hooks = work.hooks();
    const auto warn = [&](const QString& text) {
        work.clear();
        io.err.warning(text);
        io.err.flush();
    };
    if (options.bench.isEmpty()) {
        Simulation simulation;
        simulation.dirs = installedSimulator();
        simulation.arg = job.arg;
        simulation.workDir = workDir;
        simulation.overUart = options.link == kUart;
        simulation.simulator = options.inputs.simulatorKind();
        simulation.warn = warn;
        simulation.progress = [&](const QString& stage, int percent) {
            hooks.progress(stage, percent);
            return !hooks.stopAsked();
        };
        return buildTarget(simulation, job.cores, job.waveform, 0, target, steps, error);
    }
    BenchSimulation simulation;
    simulation.dirs = installedSimulator();
    simulation.arg = job.arg;
    simulation.sources = job.sources;
    simulation.names = job.names;
    simulation.bench = options.bench;
    simulation.workDir = workDir;
    simulation.hooks = hooks;
    simulation.warn = warn;
    steps = std::numeric_limits<qint64>::max();
    return buildTarget(simulation, job.cores, target, error);
}

/// Builds the target and lets its time pass until it is interrupted.
int serve(const Options& options, const Job& job, Io& io)
{
    const QTemporaryDir temporary;
    DesignWork work(io.err);
    const auto goesOn = [stopAsked = work.hooks().stopAsked] { return !stopAsked(); };
    SimulatedTarget target;
    target.setGoesOn(goesOn);
    const bool hasBench = !options.bench.isEmpty();
    qint64 steps = 0;
    QString error;
    bool ok = build(options, job, temporary.path(), work, target, steps, io, &error);
    work.clear();
    const bool overUart = options.link == kUart;
    if (ok) {
        ok = overUart ? target.serveSerial() : target.serve(options.port);
        error = target.error();
    }
    if (ok && overUart)
        greetSerial(target, options, io.out);
    else if (ok)
        greet(target, io.out);
    TargetPlayer player(target, steps, options.loop || hasBench, job.cores);
    while (ok && goesOn()) {
        ok = player.step();
        error = target.error();
        if (hasBench)
            print(target, io.out);
    }
    if (ok || !goesOn())
        return kDone;
    io.err.error(error);
    return kJobFailed;
}

int run(const Options& options, Io& io)
{
    const OXA::ParseOnce once;
    OXA::Configuration configuration;
    Job job;
    const bool hasBench = !options.bench.isEmpty();
    if (hasBench != options.inputs.stimulus.isEmpty() || (!hasBench && options.design.given())) {
        io.err.error("use --stimulus with a waveform, or --bench with a test bench of the"
                     " design");
        return kUnusable;
    }
    if (hasBench && options.inputs.simulatorKind() == Simulator::Verilator) {
        io.err.error("a design in its test bench is simulated by Icarus; use --simulator icarus");
        return kUnusable;
    }
    if (!readConfiguration(options.file, configuration, io.err)
        || !fillRequest(options.inputs.request, options.file, job.arg, io.err)
        || !hasInstalledCores(job.arg, io.err))
        return kUnusable;
    const OXA::BuildRun build(job.arg, false);
    if (const int status = checkBuild(build, options.file, "serve", OtherProblems::NotSaid, io.err);
        status != kDone)
        return status;
    if (!prepare(options, configuration, job, io.err))
        return kUnusable;
    return serve(options, job, io);
}

}

void addTarget(CLI::App& app, Io& io, int& status)
{
    Command command(app, "target", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.text("FILE", options->file, "The configuration").required();
    const Option stimulus = addSimulationInputs(command, options->inputs);
    addDesignOptions(command, options->design);
    const Option bench = command
                             .texts("--bench", options->bench,
                                 "Test bench of the design, with an instance of its top")
                             .typeName("TB.v")
                             .atLeast(1)
                             .excludes(stimulus);
    command
        .number("--port", options->port,
            "TCP port at 127.0.0.1 for OpenOCD; 0: any free port (default: 9823)")
        .between(0, kMostPort);
    command
        .text("--link", options->link,
            "jtag, for OpenOCD; or uart, a serial port for `oxa capture --serial`")
        .oneOf({kJtag, kUart})
        .typeName("LINK")
        .excludes(bench);
    command.flag("--loop", options->loop, "Repeat the waveform").excludes(bench);
    addIpDir(command, options->inputs.request);
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
