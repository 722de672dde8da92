// SPDX-License-Identifier: Apache-2.0
#include "oxautils/editor/digits.h"

#include "oxautils/editor/oxautils_common.h"

#include <QVector>

namespace OXA {

namespace {

constexpr int kMaxNumberBits = 64; // limit of changeRadix
constexpr quint64 kMaxLimb = 1u << 31; // limb times base plus carry fits a quint64

int digitValue(QChar digit)
{
    const int value = digit.isDigit() ? digit.digitValue() : digit.toLower().unicode() - 'a' + 10;
    return value < 0 ? 36 : value;
}

/// A number of any size: limbs of several digits of `base` each, the lowest first.
struct WideNumber {
    explicit WideNumber(int base)
        : base(base)
    {
        for (; limbEnd * unsigned(base) <= kMaxLimb; limbEnd *= unsigned(base))
            ++digitsPerLimb;
    }

    /// Appends a digit of `otherBase`.
    void append(int otherBase, int digit)
    {
        quint64 carry = quint64(digit);
        for (quint64& limb : limbs) {
            carry += limb * quint64(otherBase);
            limb = carry % limbEnd;
            carry /= limbEnd;
        }
        if (carry > 0)
            limbs += carry;
    }

    QString text() const
    {
        QString text;
        for (auto limb = limbs.crbegin(); limb != limbs.crend(); ++limb)
            text += QString::number(*limb, base).rightJustified(digitsPerLimb, '0');
        return text;
    }

    const int base;
    int digitsPerLimb = 0;
    quint64 limbEnd = 1;
    QVector<quint64> limbs;
};

QString changeWideRadix(const QString& value, int fromBase, int toBase)
{
    WideNumber number(toBase);
    for (const QChar digit : value) {
        if (digitValue(digit) >= fromBase)
            return {};
        number.append(fromBase, digitValue(digit));
    }
    return number.text();
}

QString convert(const QString& value, int fromBase, int toBase, int bits)
{
    return bits > kMaxNumberBits ? changeWideRadix(value, fromBase, toBase)
                                 : changeRadix(value, fromBase, toBase, bits);
}

}

int digitCount(int width, int base)
{
    switch (base) {
    case 8:
        return (width + 2) / 3;
    case 10:
        return int(width * 0.3010299956639812 + 1.0); // log10(2)
    case 16:
        return (width + 3) / 4;
    default:
        return width;
    }
}

QString digitsFromBits(const QString& bits, int base)
{
    if (base == 2)
        return bits;
    return BitWidthAdjust(convert(bits, 2, base, bits.size()), digitCount(bits.size(), base));
}

QString bitsFromDigits(const QString& digits, int base, int width)
{
    return BitWidthAdjust(base == 2 ? digits : convert(digits, base, 2, width), width);
}

}
