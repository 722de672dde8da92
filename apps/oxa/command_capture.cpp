// SPDX-License-Identifier: Apache-2.0
#include "capture_report.h"
#include "interrupt.h"
#include "link_options.h"
#include "options.h"
#include "progress_line.h"
#include "request.h"
#include "run_settings.h"
#include "simulation_inputs.h"
#include "work_dir.h"

#include "oxacapture/target/capture_run.h"
#include "oxautils/config/parse_once.h"

namespace {

using namespace OXA_CAPTURE;

constexpr char kSummary[] = "Capture from a running chip, through OpenOCD or a serial port";

constexpr char kHelp[] = R"(OpenOCD has to be running, configured for the adapter and the chip: see
docs/on-a-board.md, or docs/first-capture.md for a try without a board. The analyzer in
the chip has to be built from FILE, or FILE may differ from what it was built from in
settings of a run, when this computer remembers that build (docs/captures.md). The
cores are armed with the settings of FILE and the options of this call, and read when
they have triggered.

Ctrl-C and --timeout stop the cores; what they have captured is read and written. For a
core that is still waiting for its trigger, these are its last samples, as a window
without a trigger. Samples are counted from 0 in each window.

  oxa capture uart.oxa -o captured.vcd --clock 50e6
  oxa capture uart.oxa --unit M0=1XXXXXXX0 --windows 4 --timeout 10

Exit status 1: a core did not capture everything. Its progress is printed, and what was
captured is written.)";

constexpr double kMost = 1e9; // samples, windows or seconds
constexpr double kLeastTimeout = 0.001; // s
constexpr double kSlowestClock = 1; // Hz, the least rate of a sigrok session
constexpr double kFastestClock = 1e12; // Hz

struct Options {
    QString file;
    ChipAddress chip = usualChip();
    std::vector<int> cores;
    QString output;
    double timeout = 0; // s; 0: none
    bool immediate = false;
    bool powerUp = false;
    RunSettings run;
    double clockHz = 0;
    bool json = false;
};

/// What is known before the chip is read.
struct Plan {
    OXA::Configuration built; // as the chip was built
    OXA::Configuration wanted; // as it is to run
    std::vector<BuiltConfiguration> builds;
    std::vector<size_t> chosen; // positions of the cores that run
};

std::vector<size_t> chosenCores(
    const Options& options, const std::vector<CorePlan>& cores, Messages& messages)
{
    std::vector<size_t> chosen;
    QStringList known;
    for (size_t place = 0; place < cores.size(); ++place) {
        const auto& wanted = options.cores;
        known += QString::number(cores[place].index());
        if (wanted.empty()
            || std::find(wanted.begin(), wanted.end(), cores[place].index()) != wanted.end())
            chosen.push_back(place);
    }
    for (const int index : options.cores) {
        if (!known.contains(QString::number(index)))
            messages.append(Message {QString("--core %1").arg(index),
                "the configuration has no such core, only " + known.join(", ")});
    }
    return chosen;
}

bool changesSettings(const RunSettings& run)
{
    return !run.units.isEmpty() || !run.counters.isEmpty() || run.position >= 0 || run.windows > 0
        || run.samples > 0;
}

/// Finds what is wrong with the options.
void checkCall(const Options& options, const OXA::Configuration& configuration, Messages& messages)
{
    QString error;
    if (!options.output.isEmpty() && !mayWriteCapture(options.output, &error))
        messages.append(Message {{}, error});
    const bool changes = changesSettings(options.run);
    if (configuration.mode == OXA::Lite && (changes || options.immediate))
        messages.append(Message {options.file, "Lite cores have no trigger and no settings"});
    if (options.powerUp && (changes || options.immediate))
        messages.append(Message {"--power-up", "settings cannot change in a run that has started"});
}

/// --power-up needs cores that capture from power-up on: another core may have been armed by
/// another program, with unknown settings.
void checkPowerUp(const Plan& plan, Messages& messages)
{
    for (const size_t place : plan.chosen) {
        const CorePlan& core = plan.builds.front().cores[place];
        if (!(core.core ? core.core->captureInitDataEnabled : core.lite->captureInitDataEnabled))
            messages.append(Message {"--power-up",
                core.name()
                    + " does not capture from power-up on; leave out the option, or choose other"
                      " cores with --core"});
    }
}

bool prepare(const Options& options, Plan& plan, TextOut& err)
{
    const OXA::ParseOnce once;
    if (!readConfiguration(options.file, plan.built, err)
        || !mayWrite(options.output,
            {
                {options.file,      qEnvironmentVariable("OXA_DEVICE_DB")},
                {                 }
    },
            err)
        || !readConfiguration(options.file, plan.wanted, err))
        return false;
    Messages messages;
    checkCall(options, plan.built, messages);
    plan.builds
        = builtConfigurations(options.file, plan.built.cores, plan.built.liteCores, messages);
    if (!messages.isEmpty())
        return report(messages, err, options.output);
    plan.chosen = chosenCores(options, plan.builds.front().cores, messages);
    if (options.powerUp)
        checkPowerUp(plan, messages);
    QList<OXA::AoCore*> running;
    for (const size_t place : plan.chosen) {
        if (plan.wanted.mode != OXA::Lite)
            running += plan.wanted.cores.at(int(place));
    }
    changeUnits(options.run, running, messages);
    return report(messages, err, options.output);
}

QString cutText(const CoreOutcome& outcome)
{
    const CapturedCore& core = outcome.captured;
    const qint64 windows = outcome.run.setup.windowNum;
    const QString name = QString("core %1 was stopped ").arg(core.index);
    return windows == 0 // of a Lite core
        ? name + QString("after %1 samples").arg(core.windows.front().samples.size())
        : name
            + QString("with %1 of %2 windows complete")
                  .arg(QString::number(core.window), QString::number(windows));
}

/// Reports the trigger position of runs that began before the file's settings could be written.
void reportPowerUp(CaptureRun& chip, TextOut& err)
{
    for (const CoreRun& run : chip.runs()) {
        const CorePlan& core = chip.session().build().cores[run.core];
        if (core.core && core.powerUpPosition != core.setup.triggerPos)
            err << core.name() << ": a run from power-up on has " << core.powerUpPosition
                << " samples before the trigger on this device, not " << core.setup.triggerPos
                << " as in the file\n";
    }
}

/// Runs the capture, and shows its progress.
bool captureShown(const Options& options, CaptureRun& chip, TextOut& err)
{
    ProgressLine line(err);
    chip.progress = [&](const QStringList& texts) {
        QStringList named;
        for (int i = 0; i < texts.size(); ++i)
            named += chip.session().build().cores[chip.runs()[size_t(i)].core].name() + ": "
                + texts.at(i);
        line.show(named.join("; "));
    };
    QString error;
    const bool ok = chip.capture(
        {options.powerUp, options.immediate, qint64(options.timeout * 1000)}, &error);
    line.clear();
    if (!ok)
        err.error(error);
    return ok;
}

int readAndDeliver(const Options& options, CaptureRun& chip, Io& io)
{
    Capture capture;
    QStringList errors;
    QStringList cuts; // runs that ended early
    for (CoreOutcome& outcome : chip.read()) {
        if (!outcome.error.isEmpty()) {
            errors += outcome.error;
            continue;
        }
        if (!outcome.finished && outcome.captured.triggered())
            cuts += cutText(outcome);
        outcome.captured.clockHz = options.clockHz;
        capture.push_back(std::move(outcome.captured));
    }
    const bool delivered = capture.empty() || deliver(options.output, options.json, capture, io);
    for (const QString& text : errors)
        io.err.error(text);
    for (const QString& text : cuts)
        io.err.failure(text);
    const bool triggered = reportIdleCores(capture, io.err);
    return delivered && triggered && errors.isEmpty() && cuts.isEmpty() ? kDone : kJobFailed;
}

int capture(const Options& options, const Plan& plan, Io& io)
{
    const Interrupt interrupt([] {});
    CaptureRun chip;
    chip.goesOn = [&interrupt] { return !interrupt.happened(); };
    QString error;
    if (!chip.find(options.chip, {[&plan] { return plan.builds; }}, &error)) {
        io.err.error(error);
        return kJobFailed;
    }
    if (const QString warning = chip.session().namesWarning(); !warning.isEmpty())
        io.err.warning(warning);
    Messages messages;
    if (options.powerUp && chip.remembered())
        messages.append(Message {"--power-up",
            "the chip was built from " + chip.remembered()->text()
                + ", and that run has its settings; capture with "
                + chip.remembered()->configuration});
    if (!report(messages, io.err))
        return kUnusable;
    chip.plan(plan.wanted.cores, plan.wanted.liteCores, plan.chosen, messages);
    if (!report(messages, io.err))
        return kUnusable;
    if (chip.remembered())
        io.err << "the chip was built from " << chip.remembered()->text()
               << "; the run has the settings of " << options.file << '\n';
    for (CoreRun& run : chip.runs())
        changeWindows(options.run, run.setup);
    if (options.powerUp)
        reportPowerUp(chip, io.err);
    return captureShown(options, chip, io.err) ? readAndDeliver(options, chip, io) : kJobFailed;
}

int run(const Options& options, Io& io)
{
    Plan plan;
    return prepare(options, plan, io.err) ? capture(options, plan, io) : kUnusable;
}

void addRunOptions(Command& command, Options& options)
{
    command.numbers("--core", options.cores, "Arm only this core; may be repeated");
    command.number("--timeout", options.timeout, "Stop waiting after this time")
        .between(kLeastTimeout, kMost)
        .typeName("S");
    command.flag("--immediate", options.immediate, "Trigger at once, without waiting");
    command.flag("--power-up", options.powerUp, "Read what cores have captured since power-up");
    command
        .texts("--unit", options.run.units,
            "Value to compare with in this run: M3=10XR, or M3=0010..0111 for a range; may be"
            " repeated")
        .typeName("UNIT=VALUE");
    command
        .texts("--counter", options.run.counters,
            "Number to count to in this run: M3=12; may be repeated")
        .typeName("UNIT=N");
    command.number("--position", options.run.position, "Samples in each window before its trigger")
        .between(0, kMost);
    command.number("--samples", options.run.samples, "Samples in each window").between(1, kMost);
    command.number("--windows", options.run.windows, "Windows in the run").between(1, kMost);
}

}

void addCapture(CLI::App& app, Io& io, int& status)
{
    Command command(app, "capture", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.text("FILE", options->file, "The configuration").required();
    addLinkOptions(command, options->chip);
    command
        .text("-o,--output", options->output,
            "File for the samples: .vcd, .csv or .sr (sigrok session)")
        .typeName("OUT");
    addRunOptions(command, *options);
    command
        .number("--clock", options->clockHz, "Frequency of the sample clock, for times in the file")
        .between(kSlowestClock, kFastestClock)
        .typeName("HZ");
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
