#ifndef APPS_OXA_EDITOR_WAVE_WAVE_EVENTS_H
#define APPS_OXA_EDITOR_WAVE_WAVE_EVENTS_H

#include "waveform.h"

/// Rows of what a core's trigger made of consecutive samples: its units, its expressions, the level
/// of its sequence and its triggers.
WaveRows eventRows(const OXA::AoCore& core, const OXA_CAPTURE::TriggerSetup& setup,
    const std::vector<OXA_CAPTURE::SampleEvents>& events);

/// The same of samples that were captured: `data`, whose windows are `windows`. Those units and
/// expressions are told that see nothing but captured signals and count nothing, since what went
/// on outside of the windows is not known.
WaveRows capturedEventRows(const OXA::AoCore& core, const OXA_CAPTURE::CapturedCore& captured,
    const OXA_CAPTURE::SampleTable& data, const std::vector<WaveWindow>& windows);

#endif
