// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_CRC32_H
#define OXAUTILS_ENCODING_CRC32_H

#include <QString>

#include <array>

namespace OXA {

constexpr quint32 kCrcPolynomial = 0xedb88320;

/// What eight zeros make of a sum that is a byte.
constexpr std::array<quint32, 256> crcsOfBytes()
{
    std::array<quint32, 256> table {};
    for (quint32 byte = 0; byte < table.size(); ++byte) {
        quint32 sum = byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ (sum & 1 ? kCrcPolynomial : 0);
        table[byte] = sum;
    }
    return table;
}

/// CRC-32 as in zip files and Ethernet, of any number of bits.
class Crc32 {
public:
    explicit Crc32(quint32 begin = ~quint32(0))
        : m_sum(begin)
    {
    }

    void add(bool bit)
    {
        m_sum = (m_sum >> 1) ^ (((m_sum ^ quint32(bit)) & 1) ? kCrcPolynomial : 0);
    }

    /// The `width` lowest bits of `value`, the lowest first.
    void add(quint64 value, int width)
    {
        static constexpr std::array<quint32, 256> kBytes = crcsOfBytes();
        for (; width >= 8; width -= 8, value >>= 8)
            m_sum = (m_sum >> 8) ^ kBytes[(m_sum ^ value) & 0xff];
        for (int bit = 0; bit < width; ++bit)
            add(bool(value >> bit & 1));
    }

    quint32 sum() const { return ~m_sum; }

private:
    quint32 m_sum;
};

/// A checksum as it is shown: eight hexadecimal digits.
inline QString hexText(quint32 sum) { return QString("%1").arg(sum, 8, 16, QChar('0')); }

}

#endif
