// SPDX-License-Identifier: Apache-2.0
#include "capture_outcomes.h"
#include "capture_repeat.h"
#include "interrupt.h"
#include "link_options.h"
#include "options.h"
#include "progress_line.h"
#include "request.h"
#include "run_settings.h"
#include "sample_clocks.h"
#include "simulation_inputs.h"
#include "work_dir.h"

#include "oxacapture/files/numbered_path.h"
#include "oxacapture/target/capture_run.h"
#include "oxautils/config/parse_once.h"

namespace {

using namespace OXA_CAPTURE;

constexpr char kSummary[] = "Capture from a running chip, through OpenOCD or a serial port";

constexpr char kHelp[] = R"(OpenOCD has to be running, configured for the adapter and the chip: see
docs/on-a-board.md, or docs/first-capture.md for a try without a board. The analyzer in
the chip has to be built from FILE, or FILE may differ from what it was built from in
settings of a run, when this computer remembers that build (docs/captures.md) or
--built-from names it. The cores are armed with the settings of FILE and the options of
this call, and read when they have triggered.

--unit, --expression, --store, --forced-by, --samples, --position and --windows take the
words of `oxa set`: M0='T0 >= 0x24', or only a value or a counter, for what the file has
otherwise. CORE is the core's position, from 0; it may be left out when there is only one
core. These options may be repeated. What needs another synthesis is refused.

Ctrl-C and --timeout stop the cores; what they have captured is read and written. For a
core that is still waiting for its trigger, these are its last samples, as a window
without a trigger. Samples are counted from 0 in each window.

  oxa capture uart.oxa -o captured.vcd --clock 50e6
  oxa capture uart.oxa --unit M0=1XXXXXXX0 --windows 4 --timeout 10
  oxa capture soc.oxa --unit 0.M1='T0 >= 0x24, 3 times' --expression 1.0='M0 && !M2'

--stop-and-show is for cores that are armed already: from power-up on (with --power-up),
or by a call that lost its connection. FILE and the options have to be those of that run.
--repeat arms the cores again after each capture, and prints how many captures a minute
there were, and for how long no core was armed. With -o, a place for the number is needed:

  oxa capture uart.oxa --repeat 20 -o cap-%04d.vcd

Exit status 1: a core did not capture everything. Its progress is printed, and what was
captured is written.)";

constexpr double kMost = 1e9; // samples, windows or seconds
constexpr double kLeastTimeout = 0.001; // s

struct Options {
    QString file;
    ChipAddress chip = usualChip();
    std::vector<int> cores;
    CaptureOutput output;
    double timeout = 0; // s; 0: none
    bool immediate = false;
    bool powerUp = false;
    bool stopAndShow = false;
    std::optional<int> repeat;
    bool follow = false;
    RunSettings run;
    QStringList clocks;
};

/// What is known before the chip is read.
struct Plan {
    OXA::Configuration built; // as the chip was built
    OXA::Configuration wanted; // as it is to run
    std::vector<BuiltConfiguration> builds;
    std::vector<size_t> chosen; // positions of the cores that run
    ClockFrequencies clocks;
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

QString firstFile(const Options& options)
{
    return options.repeat ? numberedPath(options.output.file, 0) : options.output.file;
}

/// Finds what is wrong with the options.
void checkCall(const Options& options, const OXA::Configuration& configuration, Messages& messages)
{
    QString error;
    const bool mayWrite = !options.repeat || mayRepeat(options.output, &error);
    if (!mayWrite || !mayWriteSamples(options.output, firstFile(options), &error))
        messages.append(Message {{}, error});
    if (options.follow && isCaptureStream(options.output.file))
        messages.append(Message {"--follow", "needs a file that can be written again: -o out.vcd"});
    const bool changes = options.run.change();
    if (configuration.mode == OXA::Lite && options.immediate)
        messages.append(Message {"--immediate", "Lite cores have no trigger"});
    if (options.powerUp && (changes || options.immediate || !options.run.builtFrom.isEmpty()))
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
    const QString& built = options.run.builtFile(options.file);
    if (!readConfiguration(built, plan.built, err)
        || !mayWrite(options.output.file,
            {
                {options.file,                           built, qEnvironmentVariable("OXA_DEVICE_DB")},
                {                                     }
    },
            err)
        || !readConfiguration(options.file, plan.wanted, err))
        return false;
    Messages messages;
    checkCall(options, plan.wanted, messages);
    plan.builds = builtConfigurations(built, plan.built.cores, plan.built.liteCores, messages);
    if (!messages.isEmpty())
        return report(messages, err, options.output.file);
    plan.chosen = chosenCores(options, plan.builds.front().cores, messages);
    QList<int> indexes;
    for (const size_t place : plan.chosen)
        indexes += plan.builds.front().cores[place].index();
    plan.clocks = sampleClocks(options.clocks, options.file, indexes, messages);
    if (options.powerUp)
        checkPowerUp(plan, messages);
    return report(messages, err, options.output.file)
        && changeSettings(options.run, options.file, plan.wanted, err);
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

RunOptions runOptions(const Options& options)
{
    RunOptions result;
    result.powerUp = options.powerUp;
    result.stopOnly = options.stopAndShow;
    result.immediate = options.immediate;
    result.timeout = qint64(options.timeout * 1000);
    return result;
}

/// Writes what the cores have so far; `state` tells how much that is. False, with `error`, when the
/// file stays as it was.
bool writeFollowed(const Options& options, const Plan& plan, std::vector<CoreOutcome>& outcomes,
    QString& state, QString* error)
{
    qint64 windows = 0;
    for (const CoreOutcome& outcome : outcomes)
        windows += qint64(outcome.captured.windows.size());
    const QString& file = options.output.file;
    if (!writeSamples(options.output, file, captureOf(outcomes, plan.clocks), error))
        return false;
    state = QString("%1 has %2").arg(file, counted(windows, "window"));
    return true;
}

/// Runs the capture, and shows its progress.
bool captureShown(const Options& options, const Plan& plan, CaptureRun& chip, TextOut& err)
{
    ProgressLine line(err);
    QString followed; // what was written so far
    if (options.follow)
        chip.followed = [&](std::vector<CoreOutcome>& outcomes) {
            QString error;
            if (writeFollowed(options, plan, outcomes, followed, &error))
                return line.show(followed);
            line.clear();
            err.warning(error);
        };
    chip.progress = [&](const QStringList& texts) {
        QStringList named {followed};
        named.removeAll({});
        for (int i = 0; i < texts.size(); ++i)
            named += chip.session().build().cores[chip.runs()[size_t(i)].core].name() + ": "
                + texts.at(i);
        line.show(named.join("; "));
    };
    QString error;
    const bool ok = chip.capture(runOptions(options), &error);
    line.clear();
    if (!ok)
        err.error(error);
    return ok;
}

int captureOnce(const Options& options, const Plan& plan, CaptureRun& chip, Io& io)
{
    if (!captureShown(options, plan, chip, io.err))
        return kJobFailed;
    std::vector<CoreOutcome> outcomes = chip.read();
    return deliverOutcomes(outcomes, plan.clocks, options.output, io);
}

int captureSeries(const Options& options, const Plan& plan, CaptureRun& chip, Io& io)
{
    CaptureSeries series;
    series.options = runOptions(options);
    series.count = *options.repeat;
    return captureRepeatedly(chip, series, plan.clocks, options.output, io);
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
    if (options.powerUp)
        reportPowerUp(chip, io.err);
    return options.repeat ? captureSeries(options, plan, chip, io)
                          : captureOnce(options, plan, chip, io);
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
    const Option powerUp = command.flag(
        "--power-up", options.powerUp, "Read what cores have captured since power-up");
    const Option stop = command.flag("--stop-and-show", options.stopAndShow,
        "Arm nothing: stop the cores that are armed, and read what they have");
    const Option follow
        = command
              .flag("--follow", options.follow,
                  "Write the file whenever another window is complete, not only at the end")
              .needs("--output");
    command
        .number("--repeat", options.repeat,
            "Capture N times, each to a file of its own; 0: until Ctrl-C")
        .between(0, kMost)
        .typeName("N")
        .excludes(powerUp)
        .excludes(stop)
        .excludes(follow);
    addRunSettings(command, options.run);
}

}

void addCapture(CLI::App& app, Io& io, int& status)
{
    Command command(app, "capture", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.configuration(options->file);
    addLinkOptions(command, options->chip);
    addCaptureFile(command, options->output);
    addRunOptions(command, *options);
    addClockOption(command, options->clocks);
    command.flag("--json", options->output.json, "For programs: one JSON object");
    command.setRun([&io, &status, options] {
        addStates(options->file, options->output, io.err);
        status = run(*options, io);
    });
}
