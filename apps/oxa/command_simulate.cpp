// SPDX-License-Identifier: Apache-2.0
#include "build_report.h"
#include "capture_report.h"
#include "interrupt.h"
#include "options.h"
#include "part.h"
#include "progress_line.h"
#include "run_settings.h"
#include "simulation_inputs.h"
#include "work_dir.h"

#include "files/empty_directory.h"
#include "oxacapture/files/capture_result.h"
#include "oxacapture/simulator/early_build.h"
#include "oxacapture/target/hardware_changes.h"
#include "oxacapture/trigger/joint_model.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/inputs.h"
#include "oxautils/generate/work_dir.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace {

using namespace OXA_CAPTURE;

constexpr char kSummary[] = "Show what an analyzer would capture from a recorded waveform";

constexpr double kLastSample = 1e15;

constexpr char kHelp[]
    = R"(The waveform is a value change dump (VCD), as simulators write it, also compressed by
gzip; an FST file; or a sigrok session. The watched signals and the sample clock are
found by their full hierarchical names, or by as many of the last components as make
them unique. A sample contains the values just before the active edge of the clock, as
a register would store them. Sample 0 is the first in the waveform; every core is armed
before it.

A saved capture (.vcd, .fst or .csv, as oxa wrote it) needs no clock: its samples are
taken as they are. So are those of a sigrok session without the sample clock.

--unit, --expression, --store, --forced-by, --samples, --position and --windows change
the run and not what is built, in the words of `oxa set`; --built-from names what is
built when FILE has changed since. What needs another synthesis is refused. CORE is the
core's position, from 0; it may be left out when there is only one core. These may be
repeated.

  oxa simulate uart.oxa --part PN --stimulus uart.vcd --unit M0='T0 == 0x43c'

Unknown and floating values count as 0 for triggers and are captured as x.

Exit status 1: `oxa check` finds an error that prevents building the analyzer
(docs/checks.md), or a core did not trigger; its progress is printed, and the other
cores' samples are written.)";

struct Options {
    QString file;
    SimulationInputs inputs;
    RunSettings run;
    CaptureOutput output;
    QString netlist;
    QString workDir;
    bool model = false;
    qint64 forceAt = kNoSample;
};

/// What is simulated.
struct Job {
    OXA::OxaArg arg; // of the generation
    OXA::Configuration built;
    OXA::Configuration wanted; // as it runs
    std::vector<CorePlan> builtCores;
    std::vector<CorePlan> cores; // of `wanted`
};

std::vector<ModelRun> modelledRuns(const Options& options, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, TextOut& err)
{
    std::vector<ModelRun> runs = runModels(cores, waveform, {options.forceAt});
    for (size_t i = 0; i < cores.size(); ++i) {
        const SampleTable& samples = waveform.cores[i];
        if (options.forceAt >= samples.size())
            err.warning(cores[i].name() + ": cannot be forced at sample "
                + QString::number(options.forceAt) + ", there are only "
                + QString::number(samples.size()));
        const QString warning = unknownBitsWarning(cores[i], samples, runs[i], options.forceAt);
        if (!warning.isEmpty())
            err.warning(cores[i].name() + ": " + warning);
    }
    return runs;
}

bool sameWindows(const std::vector<Window>& a, const std::vector<Window>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Window& x, const Window& y) {
        return x.firstSample == y.firstSample && x.samples == y.samples
            && x.triggerSample == y.triggerSample && x.stored == y.stored && x.forced == y.forced
            && x.stamp == y.stamp;
    });
}

/// Runs the generated Verilog, which is compiled while the waveform is read.
class VerilogRun {
public:
    VerilogRun(const Options& options, const Job& job, TextOut& err)
        : m_cores(job.cores)
        , m_err(err)
        , m_line(err)
        , m_simulation(simulation(options, job))
        , m_early(m_simulation, job.builtCores, QFileInfo(options.inputs.stimulus).size())
    {
        m_simulation.early = &m_early;
    }

    bool goesOn() const { return !m_interrupt.happened(); }

    /// Replaces the models' results by those of the Verilog; false, with the error, when there are
    /// none.
    bool run(const SampledWaveform& waveform, std::vector<ModelRun>& runs)
    {
        const std::vector<ModelRun> models = runs;
        QString error;
        const bool ok = simulate(m_simulation, m_cores, waveform, runs, &error);
        m_line.clear();
        if (!ok)
            m_err.error(goesOn() ? error : "interrupted");
        for (size_t i = 0; ok && i < m_cores.size(); ++i) {
            if (!sameWindows(models[i].windows, runs[i].windows))
                m_err.warning(m_cores[i].name()
                    + ": the trigger model expects other windows; one of the two is wrong");
        }
        return ok;
    }

private:
    Simulation simulation(const Options& options, const Job& job)
    {
        Simulation simulation;
        simulation.dirs = installedSimulator();
        simulation.arg = job.arg;
        if (options.run.change() || !options.run.builtFrom.isEmpty())
            simulation.built = job.builtCores;
        simulation.netlist = options.netlist;
        simulation.workDir = options.workDir.isEmpty() ? m_temporary.path() : options.workDir;
        simulation.forceAt = options.forceAt;
        simulation.simulator = options.inputs.simulatorKind();
        simulation.progress = [this](const QString& stage, int percent) {
            m_line.show(stage, percent);
            return goesOn();
        };
        simulation.goesOn = [this] { return goesOn(); };
        simulation.warn = [this](const QString& text) {
            m_line.clear();
            m_err.warning(text);
        };
        return simulation;
    }

    const std::vector<CorePlan>& m_cores;
    TextOut& m_err;
    const QTemporaryDir m_temporary;
    ProgressLine m_line;
    const Interrupt m_interrupt {[] {}};
    Simulation m_simulation;
    EarlyBuild m_early;
};

Capture cutCapture(const std::vector<CorePlan>& cores, const SampledWaveform& waveform,
    const std::vector<ModelRun>& runs)
{
    Capture capture;
    for (size_t i = 0; i < cores.size(); ++i) {
        capture.push_back(capturedCore(cores[i], waveform.cores[i], runs[i]));
        capture.back().forcedBy = forcingIndexes(cores, cores[i].setup);
        addTimes(capture.back(), waveform.times[i], waveform.timeExponent);
    }
    return capture;
}

/// Plans the cores, and checks everything before anything is simulated.
bool prepare(const Options& options, Job& job, TextOut& err)
{
    QString error;
    if (!mayWriteSamples(options.output, options.output.file, &error)) {
        err.error(error, options.output.file);
        return false;
    }
    Messages messages;
    job.builtCores = corePlans(job.built.cores, job.built.liteCores, job.arg, messages);
    job.cores = corePlans(job.wanted.cores, job.wanted.liteCores, job.arg, messages);
    std::vector<CoreIdentity> identities;
    for (const CorePlan& core : job.builtCores)
        identities.push_back(identityOf(core, int(identities.size())));
    if (messages.isEmpty())
        fitsHardware(identities, job.builtCores, job.cores, messages);
    if (options.forceAt != kNoSample && job.wanted.mode == OXA::Lite)
        messages.append(Message {"--force-trigger-at", "Lite cores have no trigger"});
    if (!options.netlist.isEmpty() && !QFileInfo(options.netlist).isFile())
        messages.append(Message {options.netlist, "there is no such netlist"});
    return report(messages, err, options.netlist);
}

/// Creates or empties the directory that --work-dir keeps; false, with the error on `err`, when
/// another run uses it.
bool prepareWorkDir(const QString& path, OXA::WorkDir& workDir, TextOut& err)
{
    if (path.isEmpty())
        return true;
    QString error;
    if (!workDir.claim(path, &error)) {
        err.error(error);
        return false;
    }
    OXA_FILES::emptyDirectory(path, OXA::WORK_DIR_MARK);
    return true;
}

/// Whether the run writes over none of its inputs.
bool keepsInputs(const Options& options, const OXA::OxaArg& arg, TextOut& err)
{
    const OXA_FILES::Inputs inputs = OXA::inputsOf(arg,
        {namedCatalogue(options.inputs.request.part), options.inputs.stimulus, options.netlist,
            options.file});
    return mayWrite(options.output.file, inputs, err)
        && (options.workDir.isEmpty() || mayEmpty(options.workDir, false, inputs, err));
}

bool hasCores(const Options& options, const OXA::OxaArg& arg, TextOut& err)
{
    return options.model || hasInstalledCores(arg, err);
}

int run(const Options& options, Io& io)
{
    const OXA::ParseOnce once;
    Job job;
    SampledWaveform waveform;
    OXA::WorkDir workDir;
    if (options.file == "-" && options.inputs.stimulus == "-") {
        io.err.error("standard input is either FILE or the waveform; name one of the two");
        return kUnusable;
    }
    const QString& built = options.run.builtFile(options.file);
    if (!readConfiguration(built, job.built, io.err)
        || !readConfiguration(options.file, job.wanted, io.err)
        || !fillRequest(options.inputs.request, built, job.arg, io.err)
        || !keepsInputs(options, job.arg, io.err) || !hasCores(options, job.arg, io.err))
        return kUnusable;
    const OXA::BuildRun build(job.arg, false);
    if (const int status = checkBuild(build, built, "simulate", OtherProblems::NotSaid, io.err);
        status != kDone)
        return status;
    if (!changeSettings(options.run, options.file, job.wanted, io.err)
        || !prepare(options, job, io.err) || !prepareWorkDir(options.workDir, workDir, io.err))
        return kUnusable;

    std::optional<VerilogRun> verilog;
    if (!options.model)
        verilog.emplace(options, job, io.err);
    const auto goesOn = [&verilog] { return !verilog || verilog->goesOn(); };
    if (!readStimulus(options.inputs, options.file, job.cores, waveform, io.err, goesOn))
        return goesOn() ? kUnusable : kJobFailed;
    std::vector<ModelRun> runs = modelledRuns(options, job.cores, waveform, io.err);
    if (verilog && !verilog->run(waveform, runs))
        return kJobFailed;
    const Capture capture = cutCapture(job.cores, waveform, runs);
    const bool delivered = deliver(options.output, capture, io);
    const bool allTriggered = reportIdleCores(capture, io.err);
    return delivered && allTriggered ? kDone : kJobFailed;
}

}

void addSimulate(CLI::App& app, Io& io, int& status)
{
    Command command(app, "simulate", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.configuration(options->file);
    addSimulationInputs(command, options->inputs).required();
    addCaptureFile(command, options->output);
    addRunSettings(command, options->run);
    const Option model = command.flag("--model", options->model,
        "Use the trigger model instead of simulating the generated Verilog");
    command
        .text("--netlist", options->netlist,
            "Simulate this synthesized netlist instead of the generated Verilog")
        .typeName("NETLIST")
        .excludes(model);
    addIpDir(command, options->inputs.request);
    command
        .text("--keep-work", options->workDir, "Keep the files of the simulation in this directory")
        .typeName("DIR")
        .excludes(model);
    command
        .number("--force-trigger-at", options->forceAt, "Force every core's trigger at this sample")
        .between(0, kLastSample)
        .typeName("SAMPLE");
    command.flag("--json", options->output.json, "For programs: one JSON object");
    command.setRun([&io, &status, options] {
        addStates(options->file, options->output, io.err);
        status = run(*options, io);
    });
}
