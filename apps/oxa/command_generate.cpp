// SPDX-License-Identifier: Apache-2.0
#include "build_report.h"
#include "command.h"
#include "interrupt.h"
#include "log.h"
#include "part.h"
#include "progress_line.h"
#include "request.h"
#include "work_dir.h"

#include "files/replace_file.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/generate/build_run.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/inputs.h"

#include <QElapsedTimer>
#include <QJsonObject>

namespace {

constexpr char kSummary[] = "Write the Verilog of an analyzer, then synthesize it to a netlist";

constexpr char kHelp[]
    = R"(The configuration is checked first. An error that `oxa check` finds stops the command
with exit status 1 before anything is written; docs/checks.md lists the exceptions.

The work directory is created, or emptied when an earlier run created it. Only one
run at a time can use it. It must not contain any input file, not even with --force.

--no-synthesis prints a list for another tool: the source files in order, then
+incdir+DIR for each include directory. The pads IBUF and OBUF and the JTAG port
QX_JTAG are primitives of the device. --simulation adds models of them, so that
Icarus and Verilator can read the list:

  oxa generate uart.oxa --part PN --work-dir W --no-synthesis --simulation > uart.f
  iverilog -c uart.f bench.v      verilator --cc -f uart.f

The model of QX_JTAG is a complete test access port at the four pads, which a
testbench drives; docs/simulated-target.md lists its instructions.

The netlist is a module qx_oxa with every watched signal and the four JTAG pads
as ports, made of the cells in share/oxautils/cells.

--template writes two more files into the work directory, for instantiating the
analyzer by hand: qx_oxa_template.v, a module oxa_analyzer around qx_oxa whose
ports are vectors with readable names, and qx_oxa_template.vhd, the same as a VHDL
component. Both begin with an instance to copy. The list of sources then ends with
this module.

For devices that are not in the catalogue, --for FAMILY writes the Verilog, like
--no-synthesis, with the family's own QX_JTAG, IBUF and OBUF. W/board contains these
and the files for a board: OpenOCD's configuration, constraints and an example of pins.
The resources that the analyzer needs are known after synthesis.

  oxa generate uart.oxa --for ice40 --work-dir W

The build is remembered on this computer (docs/captures.md), unless OXA_REMEMBER is 0.

Exit status 1 also means that the analyzer does not fit the part. The netlist exists
then, unless the estimate already exceeds the part by far.)";

struct Options {
    QString file;
    RequestOptions request;
    QString workDir;
    QString netlist;
    bool noSynthesis = false;
    bool noTop = false;
    bool templates = false;
    bool simulation = false;
    bool force = false;
    bool strict = false;
    bool json = false;
};

/// Makes the request from the options; prints to `err` what is wrong.
bool fillRequest(const Options& options, OXA::OxaArg& arg, TextOut& err)
{
    if (!fillRequest(options.request, options.file, arg, err))
        return false;
    const OXA_FILES::Inputs inputs = OXA::inputsOf(arg, {namedCatalogue(options.request.part)});
    if (!mayEmpty(options.workDir, options.force, inputs, err)
        || !mayWrite(options.netlist, inputs, err))
        return false;
    arg.outputFile = options.netlist.isEmpty() ? options.workDir + "/" + OXA::NETLIST_FILE_NAME
                                               : options.netlist;
    arg.workDir = options.workDir;
    arg.customTop = options.noTop ? "none" : "";
    if (options.simulation && !hasSimulationModels(err))
        return false;
    return hasInstalledCores(arg, err);
}

void printNetlist(const Options& options, const OXA::OxaArg& arg,
    const QMap<QString, int>& netlistCells, double seconds, Io& io)
{
    // A netlist written to a stream cannot be counted, nor mixed with messages.
    const bool isStream = OXA_FILES::isStream(arg.outputFile);
    TextOut& out = isStream && !options.json ? io.err : io.out;
    const QMap<QString, int> cells = isStream ? QMap<QString, int>() : netlistCells;
    if (options.json) {
        QJsonObject counts;
        for (auto it = cells.begin(); it != cells.end(); ++it)
            counts.insert(it.key(), it.value());
        const QJsonObject object {
            {"netlist", arg.outputFile},
            {"cells",   counts        },
            {"seconds", seconds       }
        };
        out.setResult(object);
        return;
    }
    out << arg.outputFile << ": netlist of " << options.file << " for " << arg.device << " ("
        << arg.package << "), " << QString::number(seconds, 'f', 1) << " s\n";
    if (options.templates)
        out << arg.workDir << "/qx_oxa_template.v, .vhd: module and component to instantiate\n";
    for (auto it = cells.begin(); it != cells.end(); ++it)
        out << "  " << QString::number(it.value()).rightJustified(6) << "  " << it.key() << '\n';
}

int generate(const Options& options, OXA::BuildRun& build, Io& io)
{
    const OXA::BuildResult built = build.run();
    sayErrors(built.messages, io.err);
    if (built.end != OXA::BuildEnd::Done)
        return statusOf(built.end);
    // Verilator's waivers come first.
    const QStringList files
        = options.simulation ? simulationModels() + built.files : built.files + built.boardSources;
    printSources({files, built.includePaths, {}, built.boardFiles}, options.json, io);
    return kDone;
}

int synthesize(const Options& options, const OXA::OxaArg& arg, OXA::BuildRun& build, Io& io)
{
    const Interrupt interrupt([&build] { build.stop(); });
    ProgressLine line(io.err);
    build.progress = [&line](const QString& stage, int percent) { line.show(stage, percent); };
    QElapsedTimer timer;
    timer.start();
    const OXA::BuildResult built = build.run();
    line.clear();
    if (built.end == OXA::BuildEnd::Failed || built.end == OXA::BuildEnd::Stopped) {
        for (const QString& message : built.messages) // in the engine's words
            io.err.failure(message);
        if (built.end == OXA::BuildEnd::Failed)
            io.err.error("synthesis failed; the engine's input and log are in " + arg.workDir);
        return kJobFailed;
    }
    if (built.end != OXA::BuildEnd::Refused)
        printNetlist(options, arg, built.cells, double(timer.elapsed()) / 1000, io);
    sayErrors(built.messages, io.err);
    return statusOf(built.end);
}

int run(const Options& options, Io& io)
{
    const OXA::ParseOnce once;
    OXA::OxaArg arg;
    const DEV::FamilyLink* link = nullptr;
    if (!findLink(options.request, link, io.err) || !fillRequest(options, arg, io.err))
        return kUnusable;
    OXA::BuildRun build(arg, !options.noSynthesis);
    build.link = link;
    build.uart = options.request.uart;
    build.loggedErrors = loggedErrors;
    build.templates = options.templates;
    build.remembered = rememberedAs(options.request, arg);
    const OtherProblems others = options.strict ? OtherProblems::Stop : OtherProblems::Warnings;
    if (const int status = checkBuild(build, options.file, "generate", others, io.err);
        status != kDone)
        return status;
    return options.noSynthesis ? generate(options, build, io) : synthesize(options, arg, build, io);
}

}

void addGenerate(CLI::App& app, Io& io, int& status)
{
    Command command(app, "generate", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.text("FILE", options->file, "The configuration").required();
    addTargetOptions(command, options->request);
    command.text("--work-dir", options->workDir, "Directory for the generated files")
        .typeName("DIR")
        .required();
    addIpDir(command, options->request);
    const Option netlist = command
                               .text("-o,--output", options->netlist,
                                   std::string("The netlist (default: ") + OXA::NETLIST_FILE_NAME
                                       + " in the work directory)")
                               .typeName("NETLIST");
    const Option noSynthesis = command.flag("--no-synthesis", options->noSynthesis,
        "Only write the Verilog, and print its files and include directories");
    noSynthesis.excludes(netlist);
    command.option("--for").excludes(netlist);
    const Option noTop
        = command.flag("--no-top", options->noTop, "Neither write nor list the top wrapper");
    noTop.needs(noSynthesis);
    command
        .flag("--template", options->templates,
            "Also write a module and a VHDL component with readable ports")
        .excludes(noTop);
    command
        .flag("--simulation", options->simulation,
            "Also list simulation models of the pads and the JTAG port")
        .needs(noSynthesis);
    command.flag(
        "--force", options->force, "Empty the work directory even when oxa did not make its files");
    command.flag("--strict", options->strict, "Stop at warnings of `oxa check`, too");
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] {
        options->noSynthesis |= !options->request.family.isEmpty();
        status = run(*options, io);
    });
}
