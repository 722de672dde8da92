// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_SAMPLE_TABLE_H
#define OXACAPTURE_WAVEFORM_SAMPLE_TABLE_H

#include "oxacapture/oxacapture_export.h"

#include <QtGlobal>

#include <vector>

namespace OXA_CAPTURE {

/// The shape of a sample: fields of any width, each in 64-bit words of its own.
///
/// A row holds every field's value, then every field's unknown bits. Word 0 of a field holds its
/// least significant bits; an unknown bit's value is 0.
class OXACAPTURE_EXPORT SampleLayout {
public:
    SampleLayout() = default;
    explicit SampleLayout(std::vector<int> widths); ///< bits of each field

    int fieldCount() const { return int(m_widths.size()); } ///< 0 for a default layout
    int width(int field) const { return m_widths[size_t(field)]; } ///< bits
    int words(int field) const { return (width(field) + 63) / 64; } ///< of its value

    /// The word of a row at which the value of `field` begins.
    int valueAt(int field) const { return m_offsets[size_t(field)]; }
    /// The word of a row at which the unknown bits of `field` begin.
    int unknownAt(int field) const { return m_planeWords + m_offsets[size_t(field)]; }

    /// Words of a whole row.
    int rowWords() const { return 2 * m_planeWords; }

private:
    std::vector<int> m_widths;
    std::vector<int> m_offsets;
    int m_planeWords = 0;
};

/// One sampled bit.
enum class Logic : quint8 { Zero, One, Unknown };

/// That of a character of a dump: 0, 1, or anything else, which is unknown.
inline Logic logicOf(char c)
{
    return c == '1' ? Logic::One : c == '0' ? Logic::Zero : Logic::Unknown;
}

/// Consecutive samples of one core, packed.
///
/// Bits of a field are counted as its signals are listed: bit 0 is the most significant.
class OXACAPTURE_EXPORT SampleTable {
public:
    SampleTable() = default;
    /// A table without samples.
    explicit SampleTable(SampleLayout layout)
        : m_layout(std::move(layout))
    {
    }

    const SampleLayout& layout() const { return m_layout; } ///< of each row
    qint64 size() const { return m_size; } ///< samples

    /// Adds one sample; `row` has the layout's `rowWords()`.
    void append(const quint64* row);
    /// Adds samples `first` to `first + count - 1` of `field` of `from` to a table of that one
    /// field.
    void appendField(const SampleTable& from, int field, qint64 first, qint64 count);

    /// The row of a sample, from 0; `rowWords()` words, valid until samples are added.
    const quint64* row(qint64 sample) const
    {
        return m_words.data() + size_t(sample) * size_t(m_layout.rowWords());
    }
    /// The value of a field in that row.
    const quint64* value(qint64 sample, int field) const
    {
        return row(sample) + m_layout.valueAt(field);
    }
    Logic bit(qint64 sample, int field, int bit) const; ///< 0 is the most significant

private:
    SampleLayout m_layout;
    std::vector<quint64> m_words;
    qint64 m_size = 0;
};

/// Sets the bit `bit` (0 is the most significant) of `field` in a row of `layout`.
OXACAPTURE_EXPORT void setBit(
    const SampleLayout& layout, std::vector<quint64>& row, int field, int bit, Logic value);

/// A row of `layout` with all bits unknown.
OXACAPTURE_EXPORT std::vector<quint64> unknownRow(const SampleLayout& layout);

}

#endif
