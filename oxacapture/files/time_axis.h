// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_TIME_AXIS_H
#define OXACAPTURE_FILES_TIME_AXIS_H

#include "oxacapture/files/window_placement.h"
#include "oxacapture/waveform/time_text.h"

namespace OXA_CAPTURE {

/// The times of all samples of a capture on one axis.
///
/// `WindowPlacement` tells where the windows of a target are on it.
class OXACAPTURE_EXPORT TimeAxis {
public:
    explicit TimeAxis(const Capture& capture); ///< which has to outlive this

    TimeKind kind() const { return m_kind; }
    int exponent() const { return m_exponent; } ///< of the unit
    /// Whether it is that of one run: of a target, with the true distances of all windows.
    bool isOfRun() const { return m_placement && m_placement->isWhole(); }
    /// How the windows of a core stand to those of the core that forced them.
    CoreAlignment alignment(size_t core) const;
    /// The group of a target's window: the distances of those in one group are known. Nothing when
    /// it is alone in it.
    std::optional<size_t> group(size_t core, size_t window) const;

    /// The time of a stored sample; past the last one, the end of the window.
    quint64 at(size_t core, size_t window, qint64 sample) const;

    /// The time of the sample behind a stored one, which need not be stored.
    quint64 after(size_t core, size_t window, qint64 sample) const;

    /// What the times are, with the clocks of the cores, for people and for `readTimeText`.
    QString text() const;

private:
    quint64 atNumber(size_t core, size_t window, qint64 number) const;
    qint64 length(const CapturedCore& core, double samples) const;
    QString placesText() const;

    const Capture& m_capture;
    TimeKind m_kind = TimeKind::Waveform;
    int m_exponent = 0;
    std::optional<WindowPlacement> m_placement; // without times of a waveform
};

}

#endif
