// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_SPAN_H
#define APPS_OXA_EDITOR_WAVE_WAVE_SPAN_H

#include "waveform.h"

/// First and last samples.
using WaveSpans = std::vector<std::pair<qint64, qint64>>;

/// The data signals in `spans` as the windows of a capture, in time and none twice, with their
/// times when those are known. Samples of two captured windows do not become one.
OXA_CAPTURE::CapturedCore cutSpans(const Waveform& waveform, WaveSpans spans);

#endif
