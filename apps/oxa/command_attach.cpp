// SPDX-License-Identifier: Apache-2.0
#include "build_report.h"
#include "command.h"
#include "design_options.h"
#include "log.h"
#include "request.h"
#include "work_dir.h"

#include "oxautils/config/parse_once.h"
#include "oxautils/design/attach.h"
#include "oxautils/generate/inputs.h"

#include <QJsonArray>
#include <QTemporaryDir>

#include <algorithm>

namespace {

constexpr char kSummary[] = "Connect an analyzer to a design by signal names";

constexpr char kHelp[]
    = R"(The sources are not changed. The design and the analyzer are instances in a wrapper
with the ports of the top module and the four JTAG pads (tms_pad_i, tck_pad_i,
tdi_pad_i, tdo_pad_o). All output goes to the work directory, which is emptied first.
With --for FAMILY and a link without pads, the wrapper has none: see `oxa devices
--families`. W/board then contains the files for a board of this family.
With --no-pads the pads are plain ports, for a wrapper inside of another module.

--as yosys         a script, W/attach.ys, to run in Yosys after the design is read
                   and before synthesis. The wrapper has the top's name, so
                   constraints still apply:
                     yosys -p 'read_verilog top.v; script W/attach.ys; synth_ice40'
--as verilog       one Verilog file with design, analyzer, memories and their
                   contents (-o OUT), for any tool. --simulation OUT writes the
                   same file with each register without initial value set to 0:
                   for simulation only, because synthesis would rely on the 0
--as hierarchical  a wrapper, TOP_with_analyzer, that refers to nets by path, and
                   a command file with all sources for Icarus and Verilator;
                   with --models also the simulation models of pads and JTAG

--prove uses Yosys to prove by induction that every output and register of the
design is the same with and without the analyzer. --prove WRAPPER checks an existing
file, a wrapper or the output of --as verilog, and writes nothing. Exit status 1:
not proven; the outputs and registers that may differ are printed.

The sources are given by --design or -f, or taken from FILE.design. The build is
remembered on this computer (docs/captures.md), unless OXA_REMEMBER is 0.)";

constexpr int kMostOpen = 20; // of what may differ, on the terminal

struct Options {
    QString file;
    RequestOptions request;
    DesignOptions design;
    QString clock; ///< of a UART link
    QString workDir;
    QString form = "yosys";
    QString output;
    QString simulation;
    QString wrapper; // the existing file to prove
    bool noPads = false;
    bool prove = false;
    bool models = false;
    bool force = false;
    bool json = false;
};

/// IBUF and OBUF as plain wires, unless `boardSources` has them.
void addWires(const QString& ipDir, QStringList& boardSources)
{
    for (const char* file : {"/IBUF.v", "/OBUF.v"}) {
        if (!std::any_of(boardSources.begin(), boardSources.end(),
                [&](const QString& source) { return source.endsWith(file); }))
            boardSources += ipDir + "/boards/pins" + file;
    }
}

OXA::AttachForm formOf(const QString& name)
{
    if (name == "verilog")
        return OXA::AttachForm::Verilog;
    return name == "hierarchical" ? OXA::AttachForm::Hierarchical : OXA::AttachForm::Yosys;
}

QString defaultOutput(const Options& options)
{
    return options.output.isEmpty() ? options.workDir + "/attached.v" : options.output;
}

bool mayWriteAll(
    const Options& options, const OXA::OxaArg& arg, const OXA::DesignSources& sources, TextOut& err)
{
    OXA_FILES::Inputs inputs = OXA::inputsOf(arg, {options.request.part.deviceDb});
    inputs.paths += sources.files;
    inputs.paths += OXA::designListOf(options.file);
    return mayEmpty(arg.workDir, options.force, inputs, err)
        && mayWrite(options.output, inputs, err) && mayWrite(options.simulation, inputs, err);
}

/// Generates the analyzer into the work directory of `arg`; the exit status.
int generate(const Options& options, const OXA::OxaArg& arg, const DEV::FamilyLink* link,
    OXA::BuildResult& built, TextOut& err)
{
    OXA::BuildRun build(arg, false);
    build.link = link;
    build.uart = options.request.uart;
    build.loggedErrors = loggedErrors;
    if (options.wrapper.isEmpty()) // a proof of an existing file builds nothing
        build.remembered = rememberedAs(options.request, arg);
    if (const int status
        = checkBuild(build, options.file, "generate", OtherProblems::Warnings, err);
        status != kDone)
        return status;
    built = build.run();
    sayErrors(built.messages, err);
    return statusOf(built.end);
}

void addProof(const OXA::Attachment::Proof& proof, TextOut& out)
{
    QJsonObject result = out.result();
    result["proof"] = QJsonObject {
        {"proven",  proof.proven                          },
        {"seconds", proof.seconds                         },
        {"open",    QJsonArray::fromStringList(proof.open)}
    };
    out.setResult(result);
}

int sayProof(const OXA::Attachment::Proof& proof, Io& io)
{
    const QString seconds = QString::number(proof.seconds, 'f', 1);
    if (proof.proven) {
        io.err << "the design behaves the same with and without the analyzer: proven in " << seconds
               << " s\n";
        return kDone;
    }
    QStringList lines("not proven in " + seconds + " s; what may differ:");
    lines += proof.open.mid(0, kMostOpen);
    if (proof.open.size() > kMostOpen)
        lines += QString("and %1 more").arg(proof.open.size() - kMostOpen);
    io.err.error(lines.join('\n'));
    return kJobFailed;
}

void print(const Options& options, const OXA::AttachRequest& request, const OXA::BuildResult& built,
    Io& io)
{
    const QString wrapper = options.workDir + '/' + OXA::ATTACH_WRAPPER_FILE_NAME;
    if (formOf(options.form) == OXA::AttachForm::Hierarchical) {
        const QStringList models = options.models ? simulationModels() : built.boardSources;
        printSources({models + request.sources.files + built.files + QStringList(wrapper),
                         request.sources.includeDirs + built.includePaths, request.sources.defines,
                         built.boardFiles},
            options.json, io);
        return;
    }
    const QString result = formOf(options.form) == OXA::AttachForm::Yosys
        ? options.workDir + '/' + OXA::ATTACH_SCRIPT_FILE_NAME
        : defaultOutput(options);
    if (options.json)
        return printSources({{result}, {}, {}, built.boardFiles}, true, io);
    io.out.listed(result);
    sayBoardFiles(built.boardFiles, io.err);
}

int attach(const Options& options, const OXA::AttachRequest& request, const OXA::BuildResult& built,
    Io& io)
{
    DesignWork work(io.err);
    OXA::Attachment attachment(request, work.hooks());
    const OXA::AttachForm form = formOf(options.form);
    OXA::Attachment::Proof proof;
    QString error;
    bool ok = attachment.read(&error);
    if (ok && options.wrapper.isEmpty())
        ok = attachment.write(form, &error);
    if (ok && options.wrapper.isEmpty() && form == OXA::AttachForm::Verilog)
        ok = attachment.writeVerilog(defaultOutput(options), options.simulation, &error);
    if (ok && options.prove) {
        const QString written = form == OXA::AttachForm::Verilog ? defaultOutput(options) : "";
        ok = attachment.prove(options.wrapper.isEmpty() ? written : options.wrapper, proof, &error);
    }
    work.clear();
    for (const QString& warning : attachment.warnings())
        io.err.warning(warning);
    if (!ok) {
        work.sayError(error);
        return kJobFailed;
    }
    if (options.wrapper.isEmpty())
        print(options, request, built, io);
    if (!attachment.missingModules().isEmpty())
        io.err << "the tool that reads " << defaultOutput(options)
               << " needs these modules, whose content is not in it: "
               << attachment.missingModules().join(", ") << '\n';
    if (options.prove && options.json)
        addProof(proof, io.out);
    return options.prove ? sayProof(proof, io) : int(kDone);
}

int run(Options options, Io& io)
{
    const OXA::ParseOnce once;
    QTemporaryDir temporary;
    if (options.prove && options.wrapper.isEmpty()
        && formOf(options.form) == OXA::AttachForm::Hierarchical) {
        io.err.error("--prove needs --as yosys or verilog: Yosys does not follow references by"
                     " path");
        return kUnusable;
    }
    if (!options.wrapper.isEmpty())
        options.workDir = temporary.path(); // the proof still needs the analyzer's sources
    else if (options.workDir.isEmpty()) {
        io.err.error("--work-dir is required; see `oxa attach --help`");
        return kUnusable;
    }
    OXA::AttachRequest request;
    const DEV::FamilyLink* link = nullptr;
    if (!findLink(options.request, link, io.err))
        return kUnusable;
    if (!findSources(options.design, options.file, request.sources, io.err))
        return kUnusable;
    if (request.sources.isEmpty()) {
        io.err.error("no design; name its sources by --design or -f");
        return kUnusable;
    }
    OXA::Configuration configuration;
    OXA::OxaArg arg;
    if (!readConfiguration(options.file, configuration, io.err)
        || !fillRequest(options.request, options.file, arg, io.err))
        return kUnusable;
    arg.workDir = options.workDir;
    if (!mayWriteAll(options, arg, request.sources, io.err) || !hasInstalledCores(arg, io.err)
        || (options.models && !hasSimulationModels(io.err)))
        return kUnusable;
    OXA::BuildResult built;
    if (const int status = generate(options, arg, link, built, io.err); status != kDone)
        return status;
    if (options.noPads)
        addWires(arg.ipDir, built.boardSources);
    request.names = OXA::watchedNames(configuration);
    request.outputs = OXA::triggerOutputs(configuration.cores);
    request.analyzerFiles = built.files + built.boardSources;
    if (link && !options.models)
        request.pads = DEV::padPorts(*link);
    request.sharesClock = !options.clock.isEmpty();
    if (request.sharesClock)
        request.pads[1] = options.clock;
    request.includePaths = built.includePaths;
    for (const char* cell : {"IBUF", "OBUF", "QX_JTAG"})
        request.primitives += OXA::installed(QString("share/oxautils/cells/%1.v").arg(cell));
    request.workDir = options.workDir;
    return attach(options, request, built, io);
}

}

void addAttach(CLI::App& app, Io& io, int& status)
{
    Command command(app, "attach", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.text("FILE", options->file, "The configuration").required();
    addTargetOptions(command, options->request);
    addDesignOptions(command, options->design);
    command.text("--work-dir", options->workDir, "Directory for the generated files")
        .typeName("DIR");
    addIpDir(command, options->request);
    command
        .text("--clock", options->clock,
            "The top's input that --link uart runs from (default: a new input uart_clk_i)")
        .typeName("PORT")
        .needs("--clock-hz");
    command.text("--as", options->form, "yosys (default), verilog or hierarchical")
        .typeName("FORM")
        .oneOf({"yosys", "verilog", "hierarchical"});
    command
        .text("-o,--output", options->output,
            "Design and analyzer in one file (default: attached.v in the work directory)")
        .typeName("OUT");
    command
        .text("--simulation", options->simulation,
            "The same for simulation, where registers start at 0, not X")
        .typeName("OUT");
    command.flag("--no-pads", options->noPads, "Plain ports, without the buffers of pads");
    command.flag(
        "--models", options->models, "Also list simulation models of the pads and the JTAG port");
    command
        .flagOrText("--prove", options->prove, options->wrapper,
            "Prove that the design behaves the same; WRAPPER: check that file")
        .typeName("[WRAPPER]");
    command.flag(
        "--force", options->force, "Empty the work directory even when oxa did not make its files");
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
