#ifndef OXACAPTURE_TARGET_CRC32_H
#define OXACAPTURE_TARGET_CRC32_H

#include "oxacapture/target/bit_string.h"

namespace OXA_CAPTURE {

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

    void add(const BitString& bits)
    {
        for (int bit = 0; bit < bits.size(); ++bit)
            add(bits.at(bit));
    }

    quint32 sum() const { return ~m_sum; }

private:
    static constexpr quint32 kPolynomial = 0xedb88320;

    quint32 m_sum = ~quint32(0);
};

}

#endif
