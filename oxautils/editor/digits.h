// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_EDITOR_DIGITS_H
#define OXAUTILS_EDITOR_DIGITS_H

#include <QString>

namespace OXA {

/// The number of digits of base 2, 8, 10 or 16 in an editor for `width` bits; `width` in other
/// bases.
int digitCount(int width, int base);

/// The binary digits `bits` as the digits of `base`, as many as an editor shows, lower-case.
/// In base 2 they may be any letters; else text that is not binary counts as 0.
QString digitsFromBits(const QString& bits, int base);

/// The lowest `width` bits of the number `digits` of `base`, as `width` characters. What is not a
/// number counts as 0; so does, up to 64 bits of width, a number of more than 64 bits.
QString bitsFromDigits(const QString& digits, int base, int width);

}

#endif
