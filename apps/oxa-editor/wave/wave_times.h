// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_TIMES_H
#define APPS_OXA_EDITOR_WAVE_WAVE_TIMES_H

#include "waveform.h"

/// When the samples of a waveform were taken, as far as that is known.
class WaveTimes {
public:
    /// `clockHz` is used when the waveform has no times; 0: unknown.
    WaveTimes(WaveformPtr waveform, double clockHz);

    bool isKnown() const { return m_waveform->times || (m_waveform->isEven && m_clockHz > 0); }

    /// Seconds: since the beginning of the stimulus; of captured samples since the trigger of their
    /// window, or since its first sample when it has none.
    double at(qint64 sample) const;

    /// Where the time `seconds` is among the samples of the section of `sample`, with a fraction.
    double sampleAt(double seconds, qint64 sample) const;

    /// Seconds from `a` to `b`. None when unknown, also when samples between them were not taken.
    std::optional<double> between(qint64 a, qint64 b) const;

    /// The samples around `sample` that follow each other: the first one, and the one behind them.
    std::pair<qint64, qint64> section(qint64 sample) const;

private:
    qint64 origin(qint64 sample) const;
    double unit() const;

    WaveformPtr m_waveform;
    double m_clockHz;
};

/// The clock's frequency in Hz by the times of samples in units of 10 to the power of `exponent`
/// in seconds: that of most of its periods. 0: unknown.
double clockOf(const std::vector<quint64>& times, int exponent);

#endif
