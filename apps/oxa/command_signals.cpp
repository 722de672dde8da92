// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "design_options.h"
#include "options.h"
#include "table.h"

#include "oxautils/design/design_index.h"

#include <QDir>
#include <QJsonArray>
#include <QSet>

namespace {

constexpr char kSummary[] = "List the signals of a design or a waveform";

constexpr char kHelp[]
    = R"(Each signal with its range, its kind, the clock of a register, and where it is
declared; for an enumeration also its values. Names are paths from the top module,
such as soc/cpu/pc; other commands take them unchanged. A GLOB selects signals: `*`
is any text, scopes included, `?` one character; it may omit the start of the path.

  oxa signals '*state*' --design soc.sv uart.v --top soc
  oxa signals -f soc.f --top soc > names.txt
  oxa signals --wave soc.vcd 'cpu/*'

The names are those before any optimization. A memory cannot be watched, but the
signals at its ports can. Yosys reads the design: .v as Verilog or, when there is a .sv
file, as SystemVerilog; .vhd through GHDL; .json as written by Yosys. -f reads command
files of Icarus and Verilator, including --top and -P, the top module and its
parameters.

--design takes all words up to the next option: write a GLOB before it.
Exit status 1: a GLOB matches nothing.)";

struct Options {
    QStringList globs;
    DesignOptions design;
    bool json = false;
};

QString placeOf(const OXA::DesignSignal& signal)
{
    if (signal.file.isEmpty())
        return {};
    const QString below = QDir::current().relativeFilePath(signal.file);
    const QString file = below.startsWith("..") ? signal.file : below;
    return signal.line > 0 ? file + ':' + QString::number(signal.line) : file;
}

QString statesText(const OXA::DesignSignal& signal)
{
    QStringList states;
    for (const auto& state : signal.states)
        states += state.second + '=' + state.first;
    return states.join(' ');
}

void print(TextOut& out, const OXA::Design& design, const QVector<int>& chosen)
{
    static constexpr Table::Column kColumns[] = {
        {"signal", Table::Left },
        {"bits",   Table::Right},
        {"kind",   Table::Left },
        {"clock",  Table::Left },
        {"place",  Table::Left },
        {"values", Table::Left }
    };
    Table table(kColumns);
    for (const int i : chosen) {
        const OXA::DesignSignal& signal = design.items.at(i);
        const QString clock = signal.isRegister()
            ? (signal.fallingEdge ? "falling " : "") + design.clocks.at(signal.clock)
            : QString();
        const QString bits = signal.isMemory() ? QString("%1x%2").arg(
                                 QString::number(signal.memoryWords), QString::number(signal.width))
                                               : QString::number(signal.width);
        table.addRow({signal.path + signal.rangeText(), bits,
            design.isWaveform ? QString() : signal.kindText(), clock, placeOf(signal),
            statesText(signal)});
    }
    table.print(out);
}

QJsonObject jsonOf(const OXA::Design& design, const OXA::DesignSignal& signal)
{
    QJsonObject object {
        {"path",  signal.path        },
        {"width", signal.width       },
        {"first", signal.firstIndex()},
        {"last",  signal.lastIndex() }
    };
    if (!design.isWaveform)
        object["kind"] = signal.kindText();
    if (signal.isMemory())
        object["words"] = signal.memoryWords;
    if (signal.isRegister()) {
        object["clock"] = design.clocks.at(signal.clock);
        object["edge"] = signal.fallingEdge ? "falling" : "rising";
    }
    if (!signal.states.isEmpty()) {
        QJsonArray states;
        for (const auto& state : signal.states)
            states += QJsonObject {
                {"value", state.first },
                {"name",  state.second}
            };
        object["values"] = states;
    }
    if (!signal.file.isEmpty()) {
        object["file"] = signal.file;
        object["line"] = signal.line;
    }
    return object;
}

void printJson(TextOut& out, const OXA::Design& design, const QVector<int>& chosen)
{
    QJsonArray array;
    for (const int i : chosen)
        array += jsonOf(design, design.items.at(i));
    QJsonObject object {
        {"signals", array}
    };
    if (!design.isWaveform)
        object["top"] = design.top;
    out.setResult(object);
}

/// The signals that the globs match, each once; globs that match none are reported on `err`.
QVector<int> choose(
    const QStringList& globs, const OXA::Design& design, bool& complete, TextOut& err)
{
    QVector<int> chosen;
    if (globs.isEmpty()) {
        for (int i = 0; i < design.items.size(); ++i)
            chosen += i;
        return chosen;
    }
    const OXA::DesignIndex index(design);
    QSet<int> taken;
    for (const QString& glob : globs) {
        const QVector<int> found = index.matching(glob);
        if (found.isEmpty()) {
            complete = false;
            err.error(glob + ": " + index.whyMissing(glob));
        }
        for (const int i : found)
            taken.insert(i);
    }
    chosen = QVector<int>(taken.begin(), taken.end());
    std::sort(chosen.begin(), chosen.end());
    return chosen;
}

int run(const Options& options, Io& io)
{
    OXA::Design design;
    int status = kDone;
    if (!readSignals(options.design, QString(), design, status, io.err))
        return status;
    bool complete = true;
    const QVector<int> chosen = choose(options.globs, design, complete, io.err);
    if (options.json)
        printJson(io.out, design, chosen);
    else if (!chosen.isEmpty())
        print(io.out, design, chosen);
    return complete ? kDone : kJobFailed;
}

}

void addSignals(CLI::App& app, Io& io, int& status)
{
    Command command(app, "signals", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.texts("GLOB", options->globs, "Signals to list (default: all)").atLeast(0);
    addDesignOptions(command, options->design);
    addWaveOption(command, options->design);
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
