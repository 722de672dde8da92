// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_RULER_H
#define APPS_OXA_EDITOR_WAVE_WAVE_RULER_H

#include "wave_scale.h"
#include "wave_times.h"

struct RulerTick {
    int x; ///< pixels
    QString text;
};

/// Ticks with round numbers on `width` pixels, at least `room` pixels apart: of times, or without
/// `times` (or when they are not known) of samples.
std::vector<RulerTick> rulerTicks(
    const WaveScale& scale, qint64 samples, const WaveTimes* times, int room, int width);

#endif
