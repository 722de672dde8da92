// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_MARKERS_H
#define APPS_OXA_EDITOR_WAVE_WAVE_MARKERS_H

#include <QString>

#include <vector>

/// Named samples: the cursors A and B, and as many more as wanted.
class WaveMarkers {
public:
    static QString name(int marker); ///< "A" to "Z", then "A1"

    int count() const { return int(m_samples.size()); } ///< names in use, at least 2
    qint64 at(int marker) const { return m_samples[size_t(marker)]; } ///< -1: not set

    void set(int marker, qint64 sample) { m_samples[size_t(marker)] = sample; }
    void add(qint64 sample); ///< behind A and B, with the first free name
    void removeMore(); ///< all but A and B

    /// Unsets those that are at `samples` or later.
    void limit(qint64 samples);

    /// The first and last samples from A to B, C to D and so on, where both are set.
    std::vector<std::pair<qint64, qint64>> spans() const;

private:
    std::vector<qint64> m_samples {-1, -1};
};

#endif
