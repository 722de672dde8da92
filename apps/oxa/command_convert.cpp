// SPDX-License-Identifier: Apache-2.0
#include "capture_report.h"
#include "interrupt.h"
#include "progress_line.h"
#include "work_dir.h"

namespace {

using namespace OXA_CAPTURE;

constexpr char kSummary[] = "Convert a waveform or a capture into another format";

constexpr char kHelp[]
    = R"(IN is a value change dump (VCD), also compressed by gzip; an FST file; or a sigrok
session. Its first bytes tell which it is. It may also be a table that oxa wrote: a file
with the suffix .csv. The suffix of OUT is .vcd, .fst, .csv or .sr. - is the standard
input, or the standard output, to which a VCD is written.

Any waveform becomes a .vcd or .fst file. A .vcd or .fst file that oxa wrote becomes
the table or session that oxa would have written. From another waveform, these have a
sample whenever a signal changes, and all signals, so that a table gets large. A session
is a capture with the samples that differ from the one before, and the last one. A bus
of a table gets four bits for each of its digits.

  oxa convert soc.vcd soc.fst
  oxa convert captured.fst captured.csv
  oxa convert captured.csv captured.vcd
  zcat soc.vcd.gz | oxa convert - soc.fst
  oxa convert captured.fst -- -.csv | head

Exit status 1: OUT cannot be written.)";

struct Options {
    QString from;
    QString to;
    CaptureFileOptions file;
    bool json = false;
};

int run(const Options& options, Io& io)
{
    QString error;
    if (!mayWriteCapture(options.to, &error)) {
        io.err.error(error, options.to);
        return kUnusable;
    }
    if (!mayWrite(options.to, {{options.from}, {}}, io.err))
        return kUnusable;
    ProgressLine line(io.err);
    const Interrupt interrupt([] {});
    const auto show = [&](int percent) {
        line.show("converting", percent);
        return !interrupt.happened();
    };
    const bool ok = convertCapture(options.from, options.to, options.file, &error, show);
    line.clear();
    if (!ok) {
        io.err.error(interrupt.happened() ? "interrupted" : error, options.from);
        return kJobFailed;
    }
    if (options.json)
        io.out.setResult({
            {"input", options.from},
            {"file",  options.to  }
        });
    else
        (isCaptureStream(options.to) ? io.err : io.out) << options.to << ": written\n";
    return kDone;
}

}

void addConvert(CLI::App& app, Io& io, int& status)
{
    Command command(app, "convert", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.text("IN", options->from, "The waveform or capture").required();
    command.text("OUT", options->to, "The file to write").required();
    addTableFlags(command, options->file);
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
