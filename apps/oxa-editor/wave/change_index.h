#ifndef APPS_OXA_EDITOR_WAVE_CHANGE_INDEX_H
#define APPS_OXA_EDITOR_WAVE_CHANGE_INDEX_H

#include <QtGlobal>

#include <vector>

/// The samples at which something changes: a set that is quick to search, however many samples lie
/// between two of them and however many changes there are.
class ChangeIndex {
public:
    explicit ChangeIndex(qint64 samples = 0);

    void insert(qint64 sample);

    /// Takes in the changes of `other`, which is about as many samples.
    void unite(const ChangeIndex& other);

    /// The first change at or behind `sample`; the number of samples when there is none.
    qint64 next(qint64 sample) const;

    /// The last change at or before `sample`; -1 when there is none.
    qint64 previous(qint64 sample) const;

private:
    qint64 m_samples;
    // Level 0 has a bit a sample, each level above a bit a word of the one below: set when it has
    // any.
    std::vector<std::vector<quint64>> m_levels;
};

#endif
