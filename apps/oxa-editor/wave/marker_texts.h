// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_MARKER_TEXTS_H
#define APPS_OXA_EDITOR_WAVE_MARKER_TEXTS_H

#include "wave_markers.h"
#include "wave_times.h"

#include <QStringList>

/// Where the markers are, and how far B and the further ones are from A:
/// "A: sample 587, window 0, trigger + 12", "B − A: 8 samples (160 ns, 6.25 MHz)".
QStringList markerTexts(
    const Waveform& waveform, const WaveMarkers& markers, const WaveTimes& times);

#endif
