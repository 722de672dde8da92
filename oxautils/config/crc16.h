// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_CRC16_H
#define OXAUTILS_CONFIG_CRC16_H

#include "oxautils/oxautils_export.h"

#include <array>
#include <vector>

namespace OXA {

/// The checksum of configuration files: the table is for shifts to the left, the register shifts to
/// the right. It is no standard CRC, but stored checksums depend on it.
class OXAUTILS_EXPORT CRC16 {
public:
    /// A calculator for the generator `polynomial`. Call `initTableCRC16` before use.
    explicit CRC16(unsigned short polynomial);

    /// Fills the table.
    void initTableCRC16();

    /// The checksum of `data`; 0 for no data.
    unsigned short getCRC16_Byte(const std::vector<unsigned char>& data) const;

    /// The checksum of the bytes packed from `bits`: one bit (0 or 1) for each entry, the most
    /// significant first; 0 when their number is 0 or not a multiple of 8.
    unsigned short getCRC16_bit(const std::vector<unsigned char>& bits) const;

    /// The lowest `width` bits of `value` in reverse order; 0 for a width below 1. Not used by
    /// checksums.
    static unsigned int reflect(unsigned int value, short width);

private:
    unsigned short m_polynomial;
    std::array<unsigned short, 256> m_table {};
};

}

#endif
