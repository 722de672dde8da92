// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/bit_string.h"

namespace OXA_CAPTURE {

void BitString::append(bool bit)
{
    if (m_size % 64 == 0)
        m_words.push_back(0);
    m_words.back() |= quint64(bit) << (m_size % 64);
    ++m_size;
}

void BitString::append(quint64 value, int width)
{
    for (int bit = 0; bit < width; ++bit)
        append(bool(value >> bit & 1));
}

void BitString::append(const BitString& bits)
{
    for (int bit = 0; bit < bits.size(); ++bit)
        append(bits.at(bit));
}

quint64 BitString::number(int from, int width) const
{
    quint64 value = 0;
    for (int bit = 0; bit < width; ++bit)
        value |= quint64(at(from + bit)) << bit;
    return value;
}

int BitString::zerosFrom(int from) const
{
    int end = from;
    while (end < m_size && !at(end))
        ++end;
    return end - from;
}

}
