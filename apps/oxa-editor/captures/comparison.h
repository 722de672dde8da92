// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CAPTURES_COMPARISON_H
#define APPS_OXA_EDITOR_CAPTURES_COMPARISON_H

#include "oxa-editor/wave/waveform.h"

/// The samples of two captures of a core, A and B, and where they differ.
///
/// Window by window, so that the triggers are at the same sample; where one has no trigger, so that
/// the windows begin at the same sample. Samples that were not stored are between the others, as
/// `addPassedOver` adds them. What only one of the two has is not a difference.
struct Comparison {
    /// First a row that is 1 where any signal differs. A signal that differs has three rows: A, B,
    /// and 1 where they differ.
    WaveformPtr waveform = std::make_shared<Waveform>();
    ChangeIndex changes; ///< samples at which other signals differ than at the one before
    qint64 samples = 0; ///< at which any signal differs
    QStringList differing; ///< the signals
    QStringList onlyInOne; ///< signals that cannot be compared

    bool differsAt(qint64 sample) const;

    /// The next (`step` 1) or previous (-1) sample from `sample` on at which differences begin or
    /// become others; -1 when there is none.
    qint64 find(qint64 sample, int step) const;
};

/// Compares them; false when they have too many samples to do it at once.
bool compareCores(
    const OXA_CAPTURE::CapturedCore& a, const OXA_CAPTURE::CapturedCore& b, Comparison& comparison);

#endif
