// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "configuration_change.h"
#include "core_changes.h"
#include "design_options.h"
#include "options.h"
#include "problems.h"
#include "simulation_inputs.h"

#include "files/replace_file.h"
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
a unit and keep its settings. A value is a digit for each signal of the port, 0, 1,
X (any), R (rises), F (falls), B (changes) or N (does not change); or a decimal number;
or a number that begins with 0b or 0x. docs/settings.md has the details. For a port of
one enumerated signal, a value can be a name when --design, -f or FILE.design, which
`oxa add` writes, names the design:

  oxa set soc.oxa --unit M0='T0 == STOP'

NAMES are signals, buses or bits that the core already captures or watches, separated
by commas, the most significant first; "none" removes all signals of the port.

LEVEL is the position of an expression, from 0; the first unused position adds an
expression, and "none" removes one.

Without options, the file is written again with a correct checksum. When `oxa check`
would find a new error, nothing is written and the exit status is 1; when an option
cannot be read, it is 2.)";

struct Options {
    QString file;
    QString output;
    CoreChanges changes {{}, {}, {}, std::vector<QStringList>(coreSettings().size()), {}};
    DesignOptions design;
    bool json = false;
};

/// Each unit that `--unit` names, with its text.
QJsonArray changedUnits(const QStringList& texts, const OXA::Configuration& configuration)
{
    QJsonArray units;
    for (const QString& text : texts) {
        int core = 0;
        const OXA::MatchUnit* unit = changedUnit(text, configuration, &core);
        units += QJsonObject {
            {"core",  core                },
            {"index", unit->index         },
            {"text",  OXA::unitText(*unit)},
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
    ConfigurationChange change;
    if (!change.read(options.file, io.err))
        return kUnusable;
    CoreChanges changes = options.changes;
    changes.valueNames = namedValues(options.design, options.file, io.err);
    OXA_CAPTURE::Messages messages;
    changeCores(changes, change.configuration, messages);
    if (!report(messages, io.err))
        return kUnusable;

    const QString output = options.output.isEmpty() ? options.file : options.output;
    const QList<OXA::Problem> problems = change.newOnes(change.problems());
    QString error;
    const bool written = change.write(output, problems, &error);
    const QJsonArray units = changedUnits(options.changes.units, change.configuration);
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
    command.text("FILE", options->file, "The configuration").required();
    command.texts("--port", options->changes.ports, "The signals of a trigger port")
        .typeName("[CORE.]PORT=NAMES");
    command.texts("--unit", options->changes.units, "What a match unit compares")
        .typeName("[CORE.]UNIT=TEXT");
    command.texts("--expression", options->changes.expressions, "A trigger expression")
        .typeName("[CORE.]LEVEL=TEXT");
    for (size_t i = 0; i < coreSettings().size(); ++i) {
        const CoreSetting& setting = coreSettings()[i];
        command.texts(setting.option, options->changes.settings[i], setting.help)
            .typeName(std::string("[CORE=]") + setting.value);
    }
    addDesignOptions(command, options->design);
    command.text("-o,--output", options->output, "Write this file instead of FILE").typeName("OUT");
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
