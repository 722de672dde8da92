// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_BIT_STRING_H
#define OXACAPTURE_TARGET_BIT_STRING_H

#include "oxacapture/oxacapture_export.h"

#include <QtGlobal>

#include <vector>

namespace OXA_CAPTURE {

/// Bits in the order in which a scan shifts them: bit 0 is first.
class OXACAPTURE_EXPORT BitString {
public:
    BitString() = default;
    /// The `width` lowest bits of `value`, the lowest first; up to 64.
    BitString(quint64 value, int width) { append(value, width); }

    int size() const { return m_size; } ///< bits
    bool at(int i) const { return m_words[size_t(i / 64)] >> (i % 64) & 1; } ///< `i` below `size`

    void append(bool bit); ///< adds it at the end, as all do
    void append(quint64 value, int width); ///< its lowest bits, the lowest first
    void append(const BitString& bits); ///< all of them, bit 0 first

    /// The number made of bits `from` to `from + width - 1`, the first of them its lowest; up
    /// to 64.
    quint64 number(int from, int width) const;

    /// The number of consecutive zeros from bit `from` on.
    int zerosFrom(int from) const;

private:
    std::vector<quint64> m_words;
    int m_size = 0;
};

}

#endif
