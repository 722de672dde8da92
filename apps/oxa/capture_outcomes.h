// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_CAPTURE_OUTCOMES_H
#define APPS_OXA_CAPTURE_OUTCOMES_H

#include "capture_report.h"
#include "sample_clocks.h"

#include "oxacapture/target/capture_run.h"

/// What the cores captured that could be read; takes it from `outcomes`.
OXA_CAPTURE::Capture captureOf(
    std::vector<OXA_CAPTURE::CoreOutcome>& outcomes, const ClockFrequencies& clocks);

/// Delivers that, and reports cores that did not capture everything. Returns the exit status.
int deliverOutcomes(std::vector<OXA_CAPTURE::CoreOutcome>& outcomes, const ClockFrequencies& clocks,
    const CaptureOutput& output, Io& io);

#endif
