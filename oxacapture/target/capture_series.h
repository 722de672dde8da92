// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_CAPTURE_SERIES_H
#define OXACAPTURE_TARGET_CAPTURE_SERIES_H

#include "oxacapture/target/capture_run.h"

namespace OXA_CAPTURE {

/// How a series of captures went.
struct SeriesStatistics {
    qint64 captures = 0; ///< complete ones
    double seconds = 0; ///< from the first arming to the end of the last capture's reading
    /// In which no core was armed: from the first status that shows a complete capture to the next
    /// arming.
    double deadSeconds = 0;

    /// Complete captures a minute, in `seconds`.
    double perMinute() const { return seconds > 0 ? double(captures) * 60 / seconds : 0; }
};

/// Captures again and again with the same settings.
struct CaptureSeries {
    RunOptions options; ///< of each run; the timeout, too
    qint64 count = 0; ///< captures; 0: until `goesOn` of the run returns false during a wait

    /// Called with what each complete capture has, and its number, from 0. The series ends when it
    /// returns false.
    std::function<bool(qint64 number, std::vector<CoreOutcome>& outcomes)> captured;

    /// Captures with `run`, which has a plan, and calls its hooks. It ends after `count` captures,
    /// or with a run that is not complete, whose `last` outcomes are those of its cores; none when
    /// all are. False, with `error`, when the target fails.
    OXACAPTURE_EXPORT bool capture(CaptureRun& run, SeriesStatistics& statistics,
        std::vector<CoreOutcome>& last, QString* error);
};

}

#endif
