// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_CAPTURE_REPEAT_H
#define APPS_OXA_CAPTURE_REPEAT_H

#include "capture_outcomes.h"

#include "oxacapture/target/capture_series.h"

/// Whether the file of `output` can be that of a series. False, with the reason in `error`.
bool mayRepeat(const CaptureOutput& output, QString* error);

/// Captures `series` with `chip`, which has a plan. Writes each capture to the file of `output`
/// with its number, shows the progress and prints the statistics. Returns the exit status.
int captureRepeatedly(OXA_CAPTURE::CaptureRun& chip, OXA_CAPTURE::CaptureSeries& series,
    const ClockFrequencies& clocks, const CaptureOutput& output, Io& io);

#endif
