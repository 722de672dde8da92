// SPDX-License-Identifier: Apache-2.0
#include "capture_report.h"

#include "state_options.h"

#include "files/fail.h"
#include "files/replace_file.h"
#include "oxacapture/files/gtkw_writer.h"

#include <QFileInfo>

#include <algorithm>

using namespace OXA_CAPTURE;

namespace {

void print(const CapturedCore& core, TextOut& out)
{
    for (size_t i = 0; i < core.windows.size(); ++i) {
        const Window& window = core.windows[i].place;
        out << "core " << core.index << ", window " << i << ": ";
        if (window.triggerSample != kNoSample)
            out << (window.forced ? "forced" : "trigger") << " at sample " << window.triggerSample
                << ", ";
        else if (core.windows[i].untriggered)
            out << "no trigger, ";
        out << window.samples << " samples from " << window.firstSample << " on";
        if (!core.storage.isDefault() && core.knowsGaps())
            out << ", which span " << window.span();
        out << '\n';
    }
}

}

std::vector<Option> addTableFlags(Command& command, CaptureFileOptions& options)
{
    return {command.flag("--bits", options.bits,
                "In a .csv file, a column for each bit instead of one for each bus"),
        command.flag("--every", options.every,
            "In a .csv file, also the samples between those that a core stored")};
}

void addCaptureFile(Command& command, CaptureOutput& output)
{
    const Option file
        = command
              .text("-o,--output", output.file,
                  "File for the samples: .vcd, .fst, .csv or .sr (sigrok session), or -, standard"
                  " output")
              .typeName("OUT");
    for (Option& flag : addTableFlags(command, output.options))
        flag.needs(file);
    command
        .flag("--gtkw", output.gtkw,
            "Beside a .vcd or .fst file, a .gtkw file for GTKWave, which shows names of values")
        .needs(file);
}

void addStates(const QString& file, CaptureOutput& output, TextOut& err)
{
    output.options.states = knownStates(file, err);
}

bool mayWriteSamples(const CaptureOutput& output, const QString& path, QString* error)
{
    const bool isDump = path.endsWith(".vcd") || path.endsWith(".fst");
    if (output.gtkw && (!isDump || OXA_FILES::isStream(path)))
        return OXA::fail(error, "--gtkw needs a .vcd or .fst file");
    return path.isEmpty() || mayWriteCapture(path, error);
}

bool writeSamples(
    const CaptureOutput& output, const QString& path, const Capture& capture, QString* error)
{
    return writeCapture(path, capture, output.options, error)
        && (!output.gtkw || writeGtkw(path, capture, output.options.states, error));
}

bool deliver(const CaptureOutput& output, const Capture& capture, Io& io)
{
    // An empty capture does not replace the file of an earlier one.
    const bool writes = !output.file.isEmpty()
        && std::any_of(capture.begin(), capture.end(),
            [](const CapturedCore& core) { return !core.windows.empty(); });
    QString error;
    if (writes && !writeSamples(output, output.file, capture, &error)) {
        io.err.error(error, output.file);
        return false;
    }
    if (!writes && !output.file.isEmpty())
        io.err << output.file
               << (QFileInfo::exists(output.file) ? ": not changed" : ": not written")
               << ", because nothing was captured\n";
    if (output.json) {
        io.out.setResult(captureObject(capture));
        return true;
    }
    TextOut& out = writes && isCaptureStream(output.file)
        ? io.err
        : io.out; // keep samples and messages apart
    for (const CapturedCore& core : capture)
        print(core, out);
    if (writes)
        out << output.file << ": written\n";
    if (writes && output.gtkw)
        out << gtkwPath(output.file) << ": written; gtkwave " << gtkwPath(output.file) << '\n';
    return true;
}

bool reportIdleCores(const Capture& capture, TextOut& err)
{
    bool allTriggered = true;
    for (const CapturedCore& core : capture) {
        if (core.triggered())
            continue;
        allTriggered = false;
        err.failure(
            QString("core %1 did not trigger: %2").arg(QString::number(core.index), core.progress));
    }
    return allTriggered;
}
