// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/capture_series.h"

#include <QElapsedTimer>

#include <algorithm>
#include <utility>

namespace OXA_CAPTURE {

namespace {

constexpr double kNanoseconds = 1e9; // of a second

// The stop of a series does not stop the reading of a capture.
std::vector<CoreOutcome> readToTheEnd(CaptureRun& run)
{
    const auto goesOn = std::exchange(run.goesOn, [] { return true; });
    std::vector<CoreOutcome> outcomes = run.read();
    run.goesOn = goesOn;
    return outcomes;
}

}

bool CaptureSeries::capture(
    CaptureRun& run, SeriesStatistics& statistics, std::vector<CoreOutcome>& last, QString* error)
{
    QElapsedTimer begun;
    QElapsedTimer idle;
    qint64 dead = 0; // ns
    run.armed = [&] {
        dead += idle.isValid() ? idle.nsecsElapsed() : 0;
        if (!begun.isValid())
            begun.start();
    };
    statistics = {};
    RunOptions runOptions = options;
    bool goesOn = true;
    while (goesOn && (count == 0 || statistics.captures < count)) {
        runOptions.again = statistics.captures > 0;
        if (!run.capture(runOptions, error))
            return false;
        idle.start();
        last = readToTheEnd(run);
        if (!std::all_of(last.begin(), last.end(),
                [](const CoreOutcome& core) { return core.finished && core.error.isEmpty(); }))
            return true;
        statistics.seconds = double(begun.nsecsElapsed()) / kNanoseconds;
        statistics.deadSeconds = double(dead) / kNanoseconds;
        goesOn = captured(statistics.captures++, last);
        last.clear();
    }
    return true;
}

}
