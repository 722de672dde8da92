#include "oxautils/editor/digits.h"

#include "oxautils/editor/oxautils_common.h"

#include <QVector>

namespace OXA {

namespace {

constexpr int kMaxNumberBits = 64; // what changeRadix takes

int digitValue(QChar digit)
{
    const int value = digit.isDigit() ? digit.digitValue() : digit.toLower().unicode() - 'a' + 10;
    return value < 0 ? 36 : value;
}

// number = number * base + digit, where number holds digits of `toBase`, the lowest first.
void append(QVector<int>& number, int toBase, int base, int digit)
{
    int carry = digit;
    for (int& place : number) {
        carry += place * base;
        place = carry % toBase;
        carry /= toBase;
    }
    for (; carry > 0; carry /= toBase)
        number += carry % toBase;
}

QString changeWideRadix(const QString& value, int fromBase, int toBase)
{
    QVector<int> number;
    for (const QChar digit : value) {
        if (digitValue(digit) >= fromBase)
            return {};
        append(number, toBase, fromBase, digitValue(digit));
    }
    QString text;
    for (auto place = number.crbegin(); place != number.crend(); ++place)
        text += QString::number(*place, toBase);
    return text;
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
