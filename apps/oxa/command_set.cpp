// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "configuration_change.h"
#include "core_changes.h"
#include "design_options.h"
#include "options.h"
#include "problems.h"
#include "simulation_inputs.h"
#include "state_options.h"

#include "files/replace_file.h"
#include "oxautils/config/names_file.h"
#include "oxautils/encoding/unit_text.h"

#include <QJsonArray>

namespace {

constexpr char kSummary[] = "Change settings of a configuration";

constexpr char kHelp[]
    = R"(Texts are written as `oxa show` prints them. CORE is the core's position, from 0; it
may be left out when there is only one core. Every option may be repeated.

  oxa set uart.oxa --unit M3='T0 == 0x43c' --expression 0='M3 && !M1'
  oxa set uart.oxa --unit 1.M0='T2 not in 3..7, 3 times in a row'
  oxa set uart.oxa --unit M0='Extended: T0 == 1X0R' --samples 1=256
  oxa set uart.oxa --unit M3=off --expression 1=none
  oxa set uart.oxa --port T3='uart_tx/busy, uart_tx/state' --unit M3='T3 == 6'

A unit is [TYPE:] PORT, then ==, !=, <, <=, > or >= VALUE, or [not] in VALUE..VALUE,
or, when the port has one signal, rises, falls or changes; then optionally ", N times
[in a row]". Without TYPE, the cheapest sufficient type is used. "off" and "on" switch
a unit and keep its settings; M3=5, M3=3..7 and M3='4 times' change only the value or
the counter. A value is a digit for each signal of the port, 0, 1,
X (any), R (rises), F (falls), B (changes) or N (does not change); or a decimal number;
or a number that begins with 0b or 0x. docs/settings.md has the details. For a port of
one signal, a value can be a name of FILE.names or of the design's enumeration: of the
design that --design, -f or FILE.design, which `oxa add` writes, names:

  oxa set soc.oxa --unit M0='T0 == STOP'

--enum keeps names of values in FILE.names (docs/designs.md), for all commands:

  oxa set soc.oxa --enum cpu/state=ST_* --unit M0='T0 == ST_STOP'

NAMES are signals, buses or bits that the core already captures or watches, separated
by commas, the most significant first; "none" removes all signals of the port.

LEVEL is the position of an expression, from 0; the first unused position adds an
expression, and "none" removes one.

--store takes which samples a core stores: "all"; "changes", when a data signal differs
from the sample before; "changes of NAME NAME", when one of these does; or "when" and
an expression. After the last three, ", gap BITS" sets how long a gap between stored
samples can be, and ", limit SAMPLES" ends a window that many samples after its trigger,
with 0 only when it is full. What is left out stays as it is; after "all", it is a gap
of 16 bits and no limit (docs/settings.md):

  oxa set uart.oxa --store 'changes of uart_tx/state uart_tx/busy, gap 12'

--forced-by lets triggers of other cores force a core: "none", or their positions,
separated by commas, which replace those before. --trigger-out and --stamps switch an
output of the wrapper at a core's triggers, and the number of a window's trigger sample
in the run (docs/settings.md):

  oxa set soc.oxa --forced-by 1=0,2 --trigger-out 0=on --stamps 1=on

Without options, the file is written again with a correct checksum. When `oxa check`
would find a new error, nothing is written and the exit status is 1; when an option
cannot be read, it is 2.)";

struct Options {
    QString file;
    QString output;
    CoreChanges changes;
    DesignOptions design;
    QStringList enums;
    bool json = false;
};

/// Each unit that `--unit` names, with its text.
QJsonArray changedUnits(const QStringList& texts, const OXA::Configuration& configuration,
    const OXA::StateNames& states)
{
    QJsonArray units;
    for (const QString& text : texts) {
        int core = 0;
        const OXA::MatchUnit* unit = changedUnit(text, configuration, &core);
        const QString shown = OXA::unitText(*unit, states);
        units += QJsonObject {
            {"core",  core       },
            {"index", unit->index},
            {"text",  shown      },
        };
    }
    return units;
}

void print(const QString& file, bool written, const QJsonArray& units,
    const QList<OXA::Problem>& problems, Io& io)
{
    sayProblems(file, problems, io.err);
    if (!written)
        return;
    TextOut& out = OXA_FILES::isStream(file) ? io.err : io.out;
    for (const QJsonValue& unit : units)
        out << "core " << unit["core"].toInt() << ", M" << unit["index"].toInt() << ": "
            << unit["text"].toString() << '\n';
    out << file << ": written\n";
}

void printJson(TextOut& out, const QString& file, bool written, const QJsonArray& units,
    const QList<OXA::Problem>& problems)
{
    QJsonArray array;
    for (const OXA::Problem& problem : problems)
        array += problemJson(problem);
    out.setResult({
        {"file",     file   },
        {"written",  written},
        {"units",    units  },
        {"problems", array  },
    });
}

int run(const Options& options, Io& io)
{
    QString output = options.output.isEmpty() ? options.file : options.output;
    if (output == "-")
        output = "/dev/stdout";
    if (!options.enums.isEmpty() && OXA_FILES::isStream(output)) {
        io.err.error("--enum: the names are kept beside a file, which the output is not");
        return kUnusable;
    }
    ConfigurationChange change;
    if (!change.read(options.file, io.err))
        return kUnusable;
    OXA::StateNames states;
    if (!readEnums(
            options.enums, options.design, options.file, change.configuration, states, io.err))
        return kUnusable;
    CoreChanges changes = options.changes;
    changes.valueNames = namedValues(options.design, options.file, states, io.err);
    OXA_CAPTURE::Messages messages;
    changeCores(changes, change.configuration, messages);
    if (!report(messages, io.err))
        return kUnusable;

    const QList<OXA::Problem> problems = change.newProblems();
    QString error;
    const bool written
        = change.write(output, problems, &error) && OXA::addKnownStates(output, states, &error);
    const QJsonArray units
        = changedUnits(options.changes.units, change.configuration, knownStates(output, io.err));
    if (options.json)
        printJson(io.out, output, written, units, problems);
    else
        print(output, written, units, problems, io);
    if (!written)
        io.err.error(error, output);
    return written ? kDone : kJobFailed;
}

}

void addSet(CLI::App& app, Io& io, int& status)
{
    Command command(app, "set", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.configuration(options->file);
    addCoreChanges(command, options->changes, Changed::All);
    addEnumOption(command, options->enums);
    addDesignOptions(command, options->design);
    command
        .text(
            "-o,--output", options->output, "Write this file instead of FILE; - is standard output")
        .typeName("OUT");
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
