// SPDX-License-Identifier: Apache-2.0
#include "capture_outcomes.h"

using namespace OXA_CAPTURE;

namespace {

QString cutText(const CoreOutcome& outcome)
{
    const CapturedCore& core = outcome.captured;
    const qint64 windows = outcome.run.setup.windowNum;
    const QString name = QString("core %1 was stopped ").arg(core.index);
    return windows == 0 // of a Lite core
        ? name + QString("after %1 samples").arg(core.windows.front().samples.size())
        : name
            + QString("with %1 of %2 windows complete")
                  .arg(QString::number(core.window), QString::number(windows));
}

}

Capture captureOf(std::vector<CoreOutcome>& outcomes, const ClockFrequencies& clocks)
{
    Capture capture;
    for (CoreOutcome& outcome : outcomes) {
        outcome.captured.clockHz = clocks.value(outcome.captured.index);
        if (outcome.error.isEmpty())
            capture.push_back(std::move(outcome.captured));
    }
    return capture;
}

int deliverOutcomes(std::vector<CoreOutcome>& outcomes, const ClockFrequencies& clocks,
    const CaptureOutput& output, Io& io)
{
    QStringList errors;
    QStringList cuts; // runs that ended early
    for (const CoreOutcome& outcome : outcomes) {
        if (!outcome.error.isEmpty())
            errors += outcome.error;
        else if (!outcome.finished && outcome.captured.triggered())
            cuts += cutText(outcome);
    }
    const Capture capture = captureOf(outcomes, clocks);
    const bool delivered = capture.empty() || deliver(output, capture, io);
    for (const QString& text : errors)
        io.err.error(text);
    for (const QString& text : cuts)
        io.err.failure(text);
    const bool triggered = reportIdleCores(capture, io.err);
    return delivered && triggered && errors.isEmpty() && cuts.isEmpty() ? kDone : kJobFailed;
}
