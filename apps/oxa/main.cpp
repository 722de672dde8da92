// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "completion.h"
#include "log.h"

#include "oxautils/oxautils_version.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QJsonDocument>

#include <algorithm>
#include <cstring>
#include <iostream>

namespace {

constexpr char kHelp[] = R"(Embedded logic analyzers for FPGA designs.

A configuration file lists the signals to watch and the trigger condition. oxa
writes the Verilog of an analyzer for it, synthesizes a netlist, and reports the
resources that it needs and whether it fits.
)";

constexpr int kJsonFormat
    = 1; // grows when a field of --json changes its meaning or goes (docs/json.md)

constexpr char kFooter[] = R"(A first run:
  oxa devices QX1N-9
  oxa show examples/uart/uart.oxa
  oxa generate examples/uart/uart.oxa --part QX1N-9LV-QFN88-C6 --work-dir /tmp/uart

`oxa COMMAND --help` describes a command. Exit status: 0 done, 1 the job failed,
2 the options or an input file cannot be used.
)";

QString failureText(const CLI::App& app, const CLI::Error& error)
{
    const std::vector<std::string> unknown = app.remaining();
    if (app.get_subcommands().empty() && !unknown.empty() && unknown.front()[0] != '-')
        return "no command \"" + QString::fromLocal8Bit(unknown.front().c_str())
            + "\"; `oxa --help` lists them";
    std::string name = "oxa";
    for (const CLI::App* called : app.get_subcommands())
        name += ' ' + called->get_name();
    return QString::fromLocal8Bit(error.what()) + "; `" + QString::fromStdString(name)
        + " --help` lists the options";
}

/// Does what the arguments say; false when they ask for help only.
bool call(CLI::App& app, int argc, char** argv, TextOut& err, int& status)
{
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            app.exit(error, std::cout, std::cerr);
            return false;
        }
        err.error(failureText(app, error));
        status = kUnusable;
    } catch (const std::exception& exception) { // usually out of memory
        err.error(exception.what());
        status = kJobFailed;
    }
    return true;
}

/// Prints the result for programs, with what went wrong.
void printJson(Io& io)
{
    QJsonObject object = io.out.result();
    object.insert("format", kJsonFormat);
    object.insert("errors", io.err.errors());
    object.insert("warnings", io.err.warnings());
    io.out.lines(QString::fromUtf8(QJsonDocument(object).toJson()));
}

}

static int run(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    TextOut out(stdout);
    TextOut err(stderr);
    const LogTo log(err);
    Io io {out, err};

    CLI::App app(kHelp, "oxa");
    app.footer(kFooter);
    app.set_version_flag("--version", "oxa " OXAUTILS_VERSION_STR);
    app.require_subcommand(1);
    int status = kDone;
    addNew(app, io, status);
    addSignals(app, io, status);
    addAdd(app, io, status);
    addShow(app, io, status);
    addSet(app, io, status);
    addCheck(app, io, status);
    addEstimate(app, io, status);
    addGenerate(app, io, status);
    addAttach(app, io, status);
    addSimulate(app, io, status);
    addTarget(app, io, status);
    addProbe(app, io, status);
    addCapture(app, io, status);
    addConvert(app, io, status);
    addDevices(app, io, status);
    addVoltage(app, io, status);

    if (argc > 2 && std::strcmp(argv[1], kCompleteWord) == 0) {
        complete(app, application.arguments().mid(2), out);
        return kDone;
    }
    const bool json = std::any_of(
        argv, argv + argc, [](const char* word) { return std::strcmp(word, "--json") == 0; });
    if (call(app, argc, argv, err, status) && (json || !out.result().isEmpty()))
        printJson(io);
    out.flush();
    if (status == kDone && (out.failed() || std::ferror(stdout))) {
        err << "error: cannot write the result to standard output\n";
        return kJobFailed;
    }
    return status;
}

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& exception) { // usually out of memory
        std::fprintf(stderr, "error: %s\n", exception.what());
        return kJobFailed;
    }
}
