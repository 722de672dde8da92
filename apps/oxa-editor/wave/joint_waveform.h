// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_JOINT_WAVEFORM_H
#define APPS_OXA_EDITOR_WAVE_JOINT_WAVEFORM_H

#include "waveform.h"

constexpr int kJointCores = -1; ///< index of the core that a joint waveform is of

/// All cores of a capture on one axis of time, where their windows are in files, too (docs:
/// captures). Windows of several cores that overlap are one; its trigger is the first of a core's
/// own. Null when fewer than two cores have samples, times are not known, or it would take longer
/// than about a second.
///
/// `text` then has the reason, else what the times are and which cores are aligned.
WaveformPtr jointWaveform(
    const std::shared_ptr<const OXA_CAPTURE::Capture>& capture, QString& text);

#endif
