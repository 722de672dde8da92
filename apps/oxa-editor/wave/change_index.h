// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_CHANGE_INDEX_H
#define APPS_OXA_EDITOR_WAVE_CHANGE_INDEX_H

#include <QtGlobal>

#include <vector>

/// The samples at which something changes: a set that is fast to search for any number of samples
/// and changes.
class ChangeIndex {
public:
    explicit ChangeIndex(qint64 samples = 0);

    void insert(qint64 sample);

    /// Adds the changes of `other`, which has the same number of samples.
    void unite(const ChangeIndex& other);

    /// The first change at or after `sample`; the number of samples when there is none.
    qint64 next(qint64 sample) const;

    /// The last change at or before `sample`; -1 when there is none.
    qint64 previous(qint64 sample) const;

private:
    qint64 m_samples;
    // Level 0 has one bit for each sample. A level above has one bit for each word of the level
    // below, set when that word is not 0.
    std::vector<std::vector<quint64>> m_levels;
};

#endif
