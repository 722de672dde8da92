// SPDX-License-Identifier: Apache-2.0
#include "capture_report.h"

#include "files/replace_file.h"

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
            out << "trigger at sample " << window.triggerSample << ", ";
        else if (core.windows[i].untriggered)
            out << "no trigger, ";
        out << window.samples << " samples from " << window.firstSample << " on\n";
    }
}

}

bool deliver(const QString& output, bool json, const Capture& capture, Io& io)
{
    // An empty capture does not replace the file of an earlier one.
    const bool writes = !output.isEmpty()
        && std::any_of(capture.begin(), capture.end(),
            [](const CapturedCore& core) { return !core.windows.empty(); });
    QString error;
    if (writes && !writeCapture(output, capture, &error)) {
        io.err.error(error, output);
        return false;
    }
    if (!writes && !output.isEmpty())
        io.err << output << (QFileInfo::exists(output) ? ": not changed" : ": not written")
               << ", because nothing was captured\n";
    if (json) {
        io.out.setResult(captureObject(capture));
        return true;
    }
    TextOut& out = writes && OXA_FILES::isStream(output)
        ? io.err
        : io.out; // keep samples and messages apart
    for (const CapturedCore& core : capture)
        print(core, out);
    if (writes)
        out << output << ": written\n";
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
