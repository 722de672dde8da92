// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/sample_table.h"

namespace OXA_CAPTURE {

namespace {

struct BitPlace {
    int word;
    quint64 mask;
};

BitPlace placeOf(const SampleLayout& layout, int field, int bit)
{
    const int fromLeast = layout.width(field) - 1 - bit;
    return {fromLeast / 64, quint64(1) << (fromLeast % 64)};
}

}

SampleLayout::SampleLayout(std::vector<int> widths)
    : m_widths(std::move(widths))
{
    for (int field = 0; field < fieldCount(); ++field) {
        m_offsets.push_back(m_planeWords);
        m_planeWords += words(field);
    }
}

void SampleTable::append(const quint64* row)
{
    m_words.insert(m_words.end(), row, row + m_layout.rowWords());
    ++m_size;
}

void SampleTable::appendField(const SampleTable& from, int field, qint64 first, qint64 count)
{
    const SampleLayout& shape = from.layout();
    const int words = shape.words(field);
    for (qint64 sample = first; sample < first + count; ++sample) {
        const quint64* row = from.row(sample);
        const quint64* value = row + shape.valueAt(field);
        const quint64* unknown = row + shape.unknownAt(field);
        m_words.insert(m_words.end(), value, value + words);
        m_words.insert(m_words.end(), unknown, unknown + words);
        ++m_size;
    }
}

Logic SampleTable::bit(qint64 sample, int field, int bit) const
{
    const quint64* words = row(sample);
    const BitPlace place = placeOf(m_layout, field, bit);
    if (words[m_layout.unknownAt(field) + place.word] & place.mask)
        return Logic::Unknown;
    return words[m_layout.valueAt(field) + place.word] & place.mask ? Logic::One : Logic::Zero;
}

void setBit(const SampleLayout& layout, std::vector<quint64>& row, int field, int bit, Logic value)
{
    const BitPlace place = placeOf(layout, field, bit);
    quint64& values = row[size_t(layout.valueAt(field)) + size_t(place.word)];
    quint64& unknowns = row[size_t(layout.unknownAt(field)) + size_t(place.word)];
    values = value == Logic::One ? values | place.mask : values & ~place.mask;
    unknowns = value == Logic::Unknown ? unknowns | place.mask : unknowns & ~place.mask;
}

std::vector<quint64> unknownRow(const SampleLayout& layout)
{
    std::vector<quint64> row(size_t(layout.rowWords()));
    for (int field = 0; field < layout.fieldCount(); ++field) {
        for (int bit = 0; bit < layout.width(field); ++bit)
            setBit(layout, row, field, bit, Logic::Unknown);
    }
    return row;
}

}
