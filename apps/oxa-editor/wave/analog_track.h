// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_ANALOG_TRACK_H
#define APPS_OXA_EDITOR_WAVE_ANALOG_TRACK_H

#include "waveform.h"

/// The values of a row as numbers, and the least and greatest of any samples, fast for any number
/// of samples.
class AnalogTrack {
public:
    struct Range {
        double least = 0;
        double greatest = 0;
        bool isEmpty() const { return !(least <= greatest); } ///< no known value
    };

    AnalogTrack(const WaveRow& row, bool isSigned);

    bool isSigned() const { return m_isSigned; }

    /// Of samples `first` to `end` - 1, at least one.
    Range range(qint64 first, qint64 end) const;

    const Range& all() const { return m_all; }

private:
    bool m_isSigned;
    std::vector<double> m_values; // not a number when a bit is unknown
    std::vector<std::vector<Range>> m_levels; // of blocks of samples, then of blocks of blocks
    Range m_all;
};

#endif
