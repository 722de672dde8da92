// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "configuration_change.h"
#include "design_options.h"
#include "options.h"
#include "problems.h"
#include "state_options.h"

#include "files/replace_file.h"
#include "oxautils/config/names_file.h"
#include "oxautils/design/add_core.h"
#include "oxautils/design/attach.h"
#include "oxautils/design/design_rules.h"

#include <QFileInfo>
#include <QJsonArray>

namespace {

constexpr char kSummary[] = "Add a core that watches signals of a design, by name";

constexpr char kHelp[]
    = R"(Creates FILE when it does not exist. Use the names that `oxa signals` lists. A GLOB is
a name or a pattern with `*` and `?`; a range of bits may follow. A bus adds all its
bits, the most significant first. The signals that a pattern matches are in the
design's order, without memories and the sample clock.

  oxa add soc.oxa --clock soc/clk --data 'cpu/*' soc/leds 'fifo/wr_count[3:0]' \
    --trigger cpu/state --trigger cpu/pc --design soc.sv uart.v --top soc

Each --trigger defines the next trigger port, from T0 on. The core triggers at once:
each port has a unit that matches any value, and all units have to match. `oxa set`
changes the condition; without --trigger, it also adds a port.

The command writes the design's sources to FILE.design, where later calls of `oxa
add`, `oxa check` and `oxa set` find them, and names of values to FILE.names, where all
commands find them: of SystemVerilog's enumerations, and those that --enum names. When `oxa check` would find an error in the
core, nothing is written and the exit status is 1; when a name is not found, it is 2.)";

constexpr int kNotGiven = -1;
constexpr int kMost = 1 << 24; // samples, windows

struct Options {
    QString file;
    OXA::CoreRequest request;
    QStringList triggers; ///< of all ports, separated by empty texts
    int position = kNotGiven;
    int windows = kNotGiven;
    bool lite = false;
    DesignOptions design;
    QStringList enums;
    bool json = false;
};

/// Makes the request from the options; false, with the reason on `err`, when an option does not
/// apply to Lite cores.
bool requestOf(const Options& options, bool lite, OXA::CoreRequest& request, TextOut& err)
{
    request = options.request;
    if (lite
        && (!options.triggers.isEmpty() || options.position != kNotGiven
            || options.windows != kNotGiven)) {
        err.error("Lite cores have no --trigger, --position or --windows");
        return false;
    }
    request.position = options.position == kNotGiven ? request.position : options.position;
    request.windows = options.windows == kNotGiven ? request.windows : options.windows;
    bool isNew = true;
    for (const QString& word : options.triggers) {
        if (isNew)
            request.triggers += QStringList();
        isNew = word.isEmpty();
        if (!isNew)
            request.triggers.last() += word;
    }
    return true;
}

/// Reads the file that the core is added to, or makes an empty configuration.
bool begin(const Options& options, ConfigurationChange& change, TextOut& err)
{
    if (!QFileInfo::exists(options.file) || OXA_FILES::isStream(options.file)) {
        change.configuration.mode = options.lite ? OXA::Lite : OXA::Standard;
        change.before = problemsOf(change.configuration);
        return true;
    }
    if (!change.read(options.file, err))
        return false;
    if (!options.lite || change.configuration.mode == OXA::Lite)
        return true;
    err.error(options.file + ": its cores are Standard cores; leave out --lite", options.file);
    return false;
}

template <typename Core>
bool addTo(QList<Core*>& cores, std::unique_ptr<Core> core, const OXA::DesignIndex& index,
    const OXA::CoreRequest& request, TextOut& err)
{
    OXA::CoreNotes notes;
    const bool ok = OXA::fillCore(index, request, *core, notes);
    for (const QString& warning : notes.warnings)
        err.warning(warning);
    for (const QString& error : notes.errors)
        err.error(error);
    cores += core.release();
    return ok;
}

bool addCore(const OXA::DesignIndex& index, const OXA::CoreRequest& request,
    OXA::Configuration& configuration, TextOut& err)
{
    if (configuration.mode != OXA::Lite)
        return addTo(configuration.cores, std::make_unique<OXA::AoCore>(configuration.cores.size()),
            index, request, err);
    auto core = std::make_unique<OXA::AOCore_Lite>();
    core->index = configuration.liteCores.size();
    return addTo(configuration.liteCores, std::move(core), index, request, err);
}

/// The new problems, including those of the last core against the design.
QList<OXA::Problem> problemsWith(const ConfigurationChange& change, const OXA::DesignIndex& index)
{
    const OXA::Configuration& configuration = change.configuration;
    QList<OXA::Problem> all = problemsOf(configuration);
    if (configuration.mode == OXA::Lite)
        OXA::addDesignProblems(configuration.liteCores, index, all);
    else
        OXA::addDesignProblems(configuration.cores, index, all);
    const int last = configuration.cores.size() + configuration.liteCores.size() - 1;
    QList<OXA::Problem> problems;
    for (const OXA::Problem& problem : without(all, change.before)) {
        if (problem.place.core < 0 || problem.place.core == last)
            problems += problem;
    }
    return problems;
}

/// The core that was added.
struct Added {
    int position = 0;
    QString clock;
    int width = 0;
    QList<OXA::TriggerPort*> ports; ///< with signals
};

template <typename Core> Added lastOf(const QList<Core*>& cores)
{
    const Core& core = *cores.last();
    return {int(cores.size()) - 1, core.sampleClock, int(core.dataSignals().size()), {}};
}

Added addedTo(const OXA::Configuration& configuration)
{
    if (configuration.mode == OXA::Lite)
        return lastOf(configuration.liteCores);
    Added added = lastOf(configuration.cores);
    added.ports = configuration.cores.last()->availableTriggers();
    return added;
}

void print(const QString& file, const Added& core, bool lite, TextOut& out)
{
    out << "core " << core.position << ": " << core.width
        << (core.width == 1 ? " data signal" : " data signals");
    for (const OXA::TriggerPort* port : core.ports)
        out << ", T" << port->index << " of " << port->singleSignals().size();
    out << ", clock " << core.clock << '\n' << file << ": written\n";
    if (lite)
        return;
    const bool hasPort = !core.ports.isEmpty();
    out << "It triggers at once. To wait for a value: oxa set " << file;
    if (!hasPort)
        out << " --port " << core.position << ".T0=NAMES";
    out << " --unit " << core.position << ".M0='T0 == VALUE'";
    if (!hasPort)
        out << " --expression " << core.position << ".0=M0";
    out << '\n';
}

void printJson(const QString& file, bool written, const Added& core,
    const QList<OXA::Problem>& problems, TextOut& out)
{
    QJsonArray ports;
    for (const OXA::TriggerPort* port : core.ports)
        ports += QJsonObject {
            {"index", port->index                 },
            {"width", port->singleSignals().size()}
        };
    QJsonArray array;
    for (const OXA::Problem& problem : problems)
        array += problemJson(problem);
    out.setResult({
        {"file",        file         },
        {"written",     written      },
        {"position",    core.position},
        {"sampleClock", core.clock   },
        {"width",       core.width   },
        {"ports",       ports        },
        {"problems",    array        },
    });
}

/// Writes the names of values beside the configuration.
bool rememberStates(const Options& options, const OXA::DesignIndex& index,
    const OXA::Configuration& configuration, TextOut& err)
{
    OXA::StateNames states = OXA::statesOf(index, OXA::watchedNames(configuration));
    QString error;
    if (OXA_FILES::isStream(options.file))
        return true;
    if (!readEnums(options.enums, options.design, options.file, configuration, states, err))
        return false;
    if (OXA::addKnownStates(options.file, states, &error))
        return true;
    err.error(error);
    return false;
}

/// Writes the list of the design's sources beside the configuration.
bool remember(const Options& options, TextOut& err)
{
    OXA::DesignSources sources;
    if (!(options.design.given() || options.design.changes()) || !options.design.wave.isEmpty()
        || OXA_FILES::isStream(options.file))
        return true;
    QString error;
    if (findSources(options.design, options.file, sources, err)
        && OXA::rememberDesign(options.file, sources, &error))
        return true;
    if (!error.isEmpty())
        err.error(error);
    return false;
}

int run(const Options& options, Io& io)
{
    ConfigurationChange change;
    OXA::CoreRequest request;
    OXA::Design design;
    int status = kUnusable;
    if (!begin(options, change, io.err)
        || !requestOf(options, change.configuration.mode == OXA::Lite, request, io.err)
        || !readSignals(options.design, options.file, design, status, io.err))
        return status;
    const OXA::DesignIndex index(design);
    if (!addCore(index, request, change.configuration, io.err))
        return kUnusable;

    const QList<OXA::Problem> problems = problemsWith(change, index);
    QString error;
    const bool written = change.write(options.file, problems, &error);
    const Added added = addedTo(change.configuration);
    if (options.json)
        printJson(options.file, written, added, problems, io.out);
    else
        sayProblems(options.file, problems, io.err);
    if (written && !options.json)
        print(options.file, added, change.configuration.mode == OXA::Lite,
            OXA_FILES::isStream(options.file) ? io.err : io.out);
    if (!written)
        io.err.error(error, options.file);
    return written && remember(options, io.err)
            && rememberStates(options, index, change.configuration, io.err)
        ? kDone
        : kJobFailed;
}

}

void addAdd(CLI::App& app, Io& io, int& status)
{
    Command command(app, "add", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.text("FILE", options->file, "The configuration").required();
    command.text("--clock", options->request.clock, "The sample clock").typeName("PATH").required();
    command.texts("--data", options->request.data, "Signals to capture")
        .typeName("GLOB")
        .atLeast(1)
        .required();
    command.texts("--trigger", options->triggers, "Signals of a trigger port")
        .typeName("GLOB")
        .atLeast(1)
        .separate();
    command.number("--samples", options->request.samples, "Samples in each window (1024)")
        .between(1, kMost);
    command.number("--position", options->position, "Samples in each window before its trigger (0)")
        .between(0, kMost);
    command.number("--windows", options->windows, "Windows in a run (1)").between(1, kMost);
    command.flag(
        "--falling", options->request.fallingEdge, "Take samples at the clock's falling edges");
    command.flag("--lite", options->lite, "Create FILE with Lite cores, which have no triggers");
    addEnumOption(command, options->enums);
    addDesignOptions(command, options->design);
    addWaveOption(command, options->design);
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
