// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_SCAN_SUM_H
#define OXACAPTURE_TARGET_SCAN_SUM_H

#include "oxautils/encoding/crc32.h"

namespace OXA_CAPTURE {

/// The CRC-32 of a data scan (docs/jtag-protocol.md): begins with the register's address, and
/// differs from that of zip files at its end.
class ScanSum {
public:
    /// `address`: the core in bits 7:4, the register in bits 3:0.
    explicit ScanSum(int address)
        : m_crc(begun(address))
    {
    }

    void add(bool bit) { m_crc.add(bit); }

    /// As the core sends it, the lowest bit first.
    quint32 sum() const { return ~m_crc.sum() ^ kEnd; }

private:
    static constexpr quint32 kEnd = 0xb6d0fdc0;

    static quint32 begun(int address)
    {
        quint32 sum = ~quint32(0);
        for (int bit = 0; bit < 8; ++bit)
            sum ^= address >> bit & 1 ? OXA::kCrcPolynomial >> bit : 0;
        return sum;
    }

    OXA::Crc32 m_crc;
};

}

#endif
