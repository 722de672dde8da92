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
    = R"(Each signal with its range, what it is, the clock of a register, and where it is
declared; for an enumeration also its values. Names are paths from the top module,
as the other commands take them: soc/cpu/pc. A GLOB selects: `*` is any text,
scopes included, `?` one character; the end of a path is enough.

  oxa signals '*state*' --design soc.sv uart.v --top soc
  oxa signals -f soc.f --top soc > names.txt
  oxa signals --wave soc.vcd 'cpu/*'

The names are those before any optimization. A memory cannot be watched, but the
signals at its ports can. Yosys reads the design: .sv as SystemVerilog, and then
.v too; .vhd through GHDL; .json as Yosys wrote it. The files of -f are as for
Icarus and Verilator, with --top and -P for a top module and its parameters.

--design takes all words up to the next option: a GLOB stands before it.
Exit status 1 says that a GLOB matches nothing.)";

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
    out.json(object);
}

/// The signals that the globs mean, each once; those without any on `err`.
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
            err << "error: " << glob << ": " << index.whyMissing(glob) << '\n';
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
    CLI::App* command = addCommand(app, "signals", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    addTexts(*command, "GLOB", options->globs, "Signals to list; all without it")
        ->expected(0, CLI::detail::expected_max_vector_size);
    addDesignOptions(*command, options->design);
    addWaveOption(*command, options->design);
    command->add_flag("--json", options->json, "For programs: one JSON object");
    command->callback([&io, &status, options] { status = run(*options, io); });
}
