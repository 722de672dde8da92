// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_SAMPLE_GRID_H
#define OXACAPTURE_FILES_SAMPLE_GRID_H

#include "oxacapture/files/time_axis.h"

namespace OXA_CAPTURE {

/// The samples of all cores at one sample rate, for a format that has only one.
///
/// With times of a waveform, the rate is the slowest one at which every sample has a place of its
/// own. Otherwise it is the clocks' common multiple, and windows follow one another without a gap,
/// unless all their distances are known and the samples at these are few enough.
class SampleGrid {
public:
    explicit SampleGrid(const Capture& capture); ///< which has to outlive this

    /// False, with a reason, when the samples have no common rate that is low enough.
    bool isUsable(QString* error) const;

    double hz() const { return m_hz; } ///< the rate; 0: unknown
    qint64 size() const { return m_size; } ///< samples of the grid

    /// The number in the grid of a stored sample; past the last one, of the end of the window.
    qint64 at(size_t core, size_t window, qint64 sample) const;
    /// The same of the sample behind it, which need not be stored.
    qint64 after(size_t core, size_t window, qint64 sample) const;

private:
    qint64 ofTime(quint64 time) const;
    qint64 ofNumber(size_t core, size_t window, qint64 number) const;
    void placeTimes();
    void placeNumbers();
    bool placeRun();
    qint64 lastEnd() const;

    const Capture& m_capture;
    TimeAxis m_axis;
    double m_hz = 0;
    bool m_hasRate = true; // that all cores have in common
    qint64 m_size = 0;
    quint64 m_first = 0; // time of the first sample
    quint64 m_period = 0; // in the axis's units; 0: the windows follow one another
    std::vector<qint64> m_steps; // in the grid of a sample, by core
    std::vector<std::vector<qint64>> m_starts; // of the windows in the grid, by core
};

}

#endif
