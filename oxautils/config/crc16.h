#ifndef OXAUTILS_CONFIG_CRC16_H
#define OXAUTILS_CONFIG_CRC16_H

#include "oxautils/oxautils_export.h"

#include <array>
#include <vector>

namespace OXA {

/// The checksum that configuration files carry: a left-built table with a right-shifting register.
/// No standard CRC gives these numbers, and stored checksums depend on them.
class OXAUTILS_EXPORT CRC16 {
public:
    /// A calculator for the generator `polynomial`, whose table is all zero as yet.
    explicit CRC16(unsigned short polynomial);

    /// Fills the table; the checksums mean nothing before.
    void initTableCRC16();

    /// The checksum of `data`; 0 for no data.
    unsigned short getCRC16_Byte(const std::vector<unsigned char>& data) const;

    /// The checksum of the bytes that `bits` packs, one bit (0 or 1) an entry, the first of eight
    /// as the most significant; 0 for no bits and for a number of them that is no multiple of 8.
    unsigned short getCRC16_bit(const std::vector<unsigned char>& bits) const;

    /// The lowest `width` bits of `value` in reverse order, 0 for a width below 1. No checksum
    /// uses it.
    static unsigned int reflect(unsigned int value, short width);

private:
    unsigned short m_polynomial;
    std::array<unsigned short, 256> m_table {};
};

}

#endif
