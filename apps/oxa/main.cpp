// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "log.h"

#include "oxautils/model/shown_text.h"
#include "oxautils/oxautils_version.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>

#include <iostream>

namespace {

constexpr char kHelp[] = R"(Embedded logic analyzers for FPGA designs.

A configuration file lists the signals to watch and the trigger condition. oxa
writes the Verilog of an analyzer for it, synthesizes a netlist, and reports the
resources that it needs and whether it fits.
)";

constexpr char kFooter[] = R"(A first run:
  oxa devices QX1N-9
  oxa show examples/uart/uart.oxa
  oxa generate examples/uart/uart.oxa --part QX1N-9LV-QFN88-C6 --work-dir /tmp/uart

`oxa COMMAND --help` describes a command. Exit status: 0 done, 1 the job failed,
2 the options or an input file cannot be used.
)";

std::string failureMessage(const CLI::App* command, const CLI::Error& error)
{
    const CLI::App* called = command;
    while (!called->get_subcommands().empty())
        called = called->get_subcommands().front();
    const std::string name = called == command ? "oxa" : "oxa " + called->get_name();
    const QString what = OXA::shownText(QString::fromLocal8Bit(error.what()));
    return "error: " + what.toLocal8Bit().toStdString() + "; `" + name
        + " --help` lists the options\n";
}

int parse(CLI::App& app, int argc, char** argv, TextOut& err, int& status)
{
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const std::vector<std::string> unknown = app.remaining();
        if (error.get_exit_code() != 0 && app.get_subcommands().empty() && !unknown.empty()
            && unknown.front()[0] != '-') {
            err << "error: no command \"" << QString::fromLocal8Bit(unknown.front().c_str())
                << "\"; `oxa --help` lists them\n";
            return kUnusable;
        }
        return app.exit(error, std::cout, std::cerr) == 0 ? kDone : kUnusable;
    }
    return status;
}

}

static int run(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    installLog();
    TextOut out(stdout);
    TextOut err(stderr);
    Io io {out, err};

    CLI::App app(kHelp, "oxa");
    app.footer(kFooter);
    app.set_version_flag("--version", "oxa " OXAUTILS_VERSION_STR);
    app.failure_message(failureMessage);
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
    addDevices(app, io, status);
    addVoltage(app, io, status);

    status = parse(app, argc, argv, err, status);
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
