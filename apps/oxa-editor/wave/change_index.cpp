// SPDX-License-Identifier: Apache-2.0
#include "change_index.h"

#include <QtAlgorithms>

namespace {

constexpr qint64 kBits = 64; // of a word

}

ChangeIndex::ChangeIndex(qint64 samples)
    : m_samples(samples)
{
    for (qint64 bits = samples; bits > 0;) {
        const qint64 words = (bits + kBits - 1) / kBits;
        m_levels.emplace_back(size_t(words));
        bits = words > 1 ? words : 0;
    }
}

void ChangeIndex::insert(qint64 sample)
{
    for (auto& level : m_levels) {
        level[size_t(sample / kBits)] |= quint64(1) << (sample % kBits);
        sample /= kBits;
    }
}

void ChangeIndex::unite(const ChangeIndex& other)
{
    Q_ASSERT(other.m_samples == m_samples);
    for (size_t level = 0; level < m_levels.size(); ++level) {
        for (size_t word = 0; word < m_levels[level].size(); ++word)
            m_levels[level][word] |= other.m_levels[level][word];
    }
}

qint64 ChangeIndex::next(qint64 sample) const
{
    for (size_t level = 0; level < m_levels.size(); ++level) {
        const size_t word = size_t(sample / kBits);
        if (word >= m_levels[level].size())
            break;
        const quint64 bits = m_levels[level][word] & (~quint64(0) << (sample % kBits));
        if (bits) {
            sample = qint64(word) * kBits + qCountTrailingZeroBits(bits);
            while (level-- > 0)
                sample = sample * kBits + qCountTrailingZeroBits(m_levels[level][size_t(sample)]);
            return sample;
        }
        sample = qint64(word) + 1;
    }
    return m_samples;
}

qint64 ChangeIndex::previous(qint64 sample) const
{
    for (size_t level = 0; level < m_levels.size() && sample >= 0; ++level) {
        const size_t word = size_t(sample / kBits);
        const quint64 bits = m_levels[level][word] & (~quint64(0) >> (kBits - 1 - sample % kBits));
        if (bits) {
            sample = qint64(word) * kBits + kBits - 1 - qCountLeadingZeroBits(bits);
            while (level-- > 0)
                sample = sample * kBits + kBits - 1
                    - qCountLeadingZeroBits(m_levels[level][size_t(sample)]);
            return sample;
        }
        sample = qint64(word) - 1;
    }
    return -1;
}
