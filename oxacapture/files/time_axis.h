// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_TIME_AXIS_H
#define OXACAPTURE_FILES_TIME_AXIS_H

#include "oxacapture/files/capture_result.h"
#include "oxacapture/waveform/time_text.h"

namespace OXA_CAPTURE {

/// The times of all samples of a capture on one axis.
///
/// The distance between the windows of a target is not known: on the axis, they are apart by a
/// sixteenth of the earlier one, and each core begins at 0.
class TimeAxis {
public:
    explicit TimeAxis(const Capture& capture); ///< which has to outlive this

    TimeKind kind() const { return m_kind; }
    int exponent() const { return m_exponent; } ///< of the unit

    /// The time of a stored sample; past the last one, the end of the window.
    quint64 at(size_t core, size_t window, qint64 sample) const;

    /// The time of the sample behind a stored one, which need not be stored.
    quint64 after(size_t core, size_t window, qint64 sample) const;

    /// What the times are, with the clocks of the cores, for people and for `readTimeText`.
    QString text() const;

private:
    quint64 atNumber(size_t core, size_t window, qint64 number) const;
    quint64 since(const CapturedCore& core, qint64 sample) const;

    const Capture& m_capture;
    TimeKind m_kind = TimeKind::Waveform;
    int m_exponent = 0;
    std::vector<std::vector<quint64>> m_starts; // of the windows, by core
};

}

#endif
