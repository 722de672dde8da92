// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_EVENTS_H
#define APPS_OXA_EDITOR_WAVE_WAVE_EVENTS_H

#include "waveform.h"

/// Rows with the trigger's events at consecutive samples: units, expressions, level of the sequence
/// and triggers.
WaveRows eventRows(const OXA::AoCore& core, const OXA_CAPTURE::TriggerSetup& setup,
    const std::vector<OXA_CAPTURE::SampleEvents>& events);

/// The same for captured samples: `data`, whose windows are `windows`. Only units and expressions
/// that use captured signals alone, without counters, are known, because samples outside of the
/// windows are not.
WaveRows capturedEventRows(const OXA::AoCore& core, const OXA_CAPTURE::CapturedCore& captured,
    const OXA_CAPTURE::SampleTable& data, const std::vector<WaveWindow>& windows);

#endif
