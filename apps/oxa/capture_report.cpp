#include "capture_report.h"

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
    QString error;
    if (!output.isEmpty() && !writeCapture(output, capture, &error)) {
        io.err << "error: " << error << '\n';
        return false;
    }
    if (json) {
        io.out.lines(QString::fromUtf8(captureJson(capture)));
        return true;
    }
    for (const CapturedCore& core : capture)
        print(core, io.out);
    if (!output.isEmpty())
        io.out << output << ": written\n";
    return true;
}

bool reportIdleCores(const Capture& capture, TextOut& err)
{
    bool allTriggered = true;
    for (const CapturedCore& core : capture) {
        if (core.triggered())
            continue;
        allTriggered = false;
        err << "core " << core.index << " did not trigger: " << core.progress << '\n';
    }
    return allTriggered;
}
