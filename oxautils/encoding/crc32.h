// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_CRC32_H
#define OXAUTILS_ENCODING_CRC32_H

#include <QString>

namespace OXA {

/// CRC-32 as in zip files and Ethernet, one bit at a time.
class Crc32 {
public:
    void add(bool bit) { m_sum = (m_sum >> 1) ^ (((m_sum ^ quint32(bit)) & 1) ? kPolynomial : 0); }

    /// The `width` lowest bits of `value`, the lowest first.
    void add(quint64 value, int width)
    {
        for (int bit = 0; bit < width; ++bit)
            add(bool(value >> bit & 1));
    }

    quint32 sum() const { return ~m_sum; }

private:
    static constexpr quint32 kPolynomial = 0xedb88320;

    quint32 m_sum = ~quint32(0);
};

/// A checksum as it is shown: eight hexadecimal digits.
inline QString hexText(quint32 sum) { return QString("%1").arg(sum, 8, 16, QChar('0')); }

}

#endif
