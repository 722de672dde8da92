// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "design_options.h"
#include "part.h"
#include "problems.h"

#include "oxautils/check/check.h"
#include "oxautils/design/design_rules.h"

#include <QJsonArray>

namespace {

constexpr char kSummary[] = "Find every problem of a configuration";

constexpr char kHelp[]
    = R"(Each problem is printed with its place in the file, its core (from 0), its trigger
port (T0), match unit (M3) or expression, and what to do. With --part, resources are
checked against the part. docs/checks.md lists the rules.

With a design, the names are checked too: unknown names, with the nearest known ones;
bits outside the declared range; sample clocks that clock no register; and registers
of another clock. With a waveform, only names and bits are checked. Without --design,
-f and --wave, FILE.design, which `oxa add` writes, names the design.

  oxa check soc.oxa --design soc.sv uart.v --top soc
  oxa check soc.oxa --wave soc.vcd

Exit status 1: there are errors, or, with --strict, warnings.)";

struct Options {
    QString file;
    PartOptions part;
    DesignOptions design;
    bool strict = false;
    bool json = false;
};

void print(TextOut& out, const QString& file, const QList<OXA::Problem>& problems)
{
    for (const OXA::Problem& problem : problems)
        out << problemLine(file, problem) << "\n    " << problem.hint << '\n';
    if (problems.isEmpty())
        out << file << ": no problems\n";
    else
        out << file << ": " << counted(countOf(problems, OXA::Severity::Error), "error") << ", "
            << counted(countOf(problems, OXA::Severity::Warning), "warning") << '\n';
}

void printJson(TextOut& out, const QString& file, const QList<OXA::Problem>& problems)
{
    QJsonArray array;
    for (const OXA::Problem& problem : problems)
        array += problemJson(problem);
    out.setResult({
        {"file",     file },
        {"problems", array}
    });
}

int statusOf(const QList<OXA::Problem>& problems, bool strict)
{
    if (!problems.isEmpty() && problems.first().rule == "unreadable")
        return kUnusable;
    const int errors = countOf(problems, OXA::Severity::Error);
    return errors > 0 || (strict && !problems.isEmpty()) ? kJobFailed : kDone;
}

int run(const Options& options, Io& io)
{
    std::optional<DEV::ChipInfo> part;
    if (!options.part.part.isEmpty() && !(part = findPart(options.part, io.err)))
        return kUnusable;
    QList<OXA::Problem> problems = OXA::checkConfigFile(options.file, part ? &*part : nullptr);
    OXA::Design design;
    bool known = false;
    const bool compared = readKnownSignals(options.design, options.file, design, known, io.err);
    if (compared && known)
        OXA::addDesignProblems(options.file, OXA::DesignIndex(design), problems);
    if (options.json)
        printJson(io.out, options.file, problems);
    else
        print(io.out, options.file, problems);
    return compared ? statusOf(problems, options.strict) : kUnusable;
}

}

void addCheck(CLI::App& app, Io& io, int& status)
{
    Command command(app, "check", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.configuration(options->file);
    addPartOptions(command, options->part);
    addDesignOptions(command, options->design);
    addWaveOption(command, options->design);
    command.flag("--strict", options->strict, "Exit with status 1 also for warnings");
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
