// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/crc16.h"

namespace OXA {

CRC16::CRC16(unsigned short polynomial)
    : m_polynomial(polynomial)
{
}

void CRC16::initTableCRC16()
{
    for (unsigned i = 0; i < m_table.size(); ++i) {
        unsigned entry = i << 8;
        for (int bit = 0; bit < 8; ++bit)
            entry = entry & 0x8000u ? (entry << 1) ^ m_polynomial : entry << 1;
        m_table[i] = static_cast<unsigned short>(entry);
    }
}

unsigned short CRC16::getCRC16_Byte(const std::vector<unsigned char>& data) const
{
    unsigned crc = 0;
    for (const unsigned char byte : data)
        crc = ((unsigned(byte) << 8) | (crc >> 8)) ^ m_table[crc & 0xFF];
    for (int round = 0; round < 2; ++round)
        crc = (crc >> 8) ^ m_table[crc & 0xFF];
    return static_cast<unsigned short>(crc);
}

unsigned short CRC16::getCRC16_bit(const std::vector<unsigned char>& bits) const
{
    if (bits.size() % 8 != 0)
        return 0;
    std::vector<unsigned char> bytes(bits.size() / 8);
    for (size_t i = 0; i < bytes.size(); ++i) {
        unsigned byte = 0;
        for (size_t bit = 0; bit < 8; ++bit)
            byte += unsigned(bits[8 * i + bit]) << (7 - bit);
        bytes[i] = static_cast<unsigned char>(byte);
    }
    return getCRC16_Byte(bytes);
}

unsigned int CRC16::reflect(unsigned int value, short width)
{
    unsigned int reflected = 0;
    for (int from = 0; from < 32 && from < width; ++from) {
        const int to = width - 1 - from;
        if (to < 32)
            reflected |= ((value >> from) & 1u) << to;
    }
    return reflected;
}

}
