// SPDX-License-Identifier: Apache-2.0
#include "wave_value.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

struct RadixFacts {
    const char* key;
    const char* name;
    int digitBits; // 0: digits are not made of whole bits
};

// In the order of Radix.
constexpr RadixFacts kRadixFacts[] = {
    {"binary",      QT_TRANSLATE_NOOP("WaveView", "Binary"),          1},
    {"octal",       QT_TRANSLATE_NOOP("WaveView", "Octal"),           3},
    {"decimal",     QT_TRANSLATE_NOOP("WaveView", "Decimal"),         0},
    {"signed",      QT_TRANSLATE_NOOP("WaveView", "Decimal, signed"), 0},
    {"hexadecimal", QT_TRANSLATE_NOOP("WaveView", "Hexadecimal"),     4},
    {"text",        QT_TRANSLATE_NOOP("WaveView", "Text"),            8},
    {"names",       QT_TRANSLATE_NOOP("WaveView", "Names of values"), 4},
};

constexpr char kDigits[] = "0123456789ABCDEF";
constexpr quint64 kBillion = 1000000000;
constexpr int kBillionDigits = 9;

using Words = std::vector<quint64>;

int digitBits(Radix radix) { return kRadixFacts[int(radix)].digitBits; }

size_t wordsFor(int width) { return size_t(width + 63) / 64; }

unsigned bitsAt(const Words& words, int at, int count)
{
    unsigned bits = 0;
    for (int bit = 0; bit < count; ++bit) {
        const size_t word = size_t(at + bit) / 64;
        if (word < words.size())
            bits |= unsigned(words[word] >> (at + bit) % 64 & 1) << bit;
    }
    return bits;
}

void setBitsAt(Words& words, int at, int count, unsigned bits)
{
    for (int bit = 0; bit < count; ++bit) {
        const size_t word = size_t(at + bit) / 64;
        if (word < words.size() && (bits >> bit & 1))
            words[word] |= quint64(1) << (at + bit) % 64;
    }
}

bool isZero(const Words& words)
{
    return std::all_of(words.begin(), words.end(), [](quint64 word) { return word == 0; });
}

// Clears the bits from `width` on in the last word; whether they were clear.
bool trim(Words& words, int width)
{
    if (width % 64 == 0 || words.empty())
        return true;
    const quint64 mask = ~quint64(0) >> (64 - width % 64);
    const bool fitted = (words.back() & ~mask) == 0;
    words.back() &= mask;
    return fitted;
}

void negate(Words& words, int width)
{
    bool carry = true;
    for (quint64& word : words) {
        word = ~word + quint64(carry);
        carry = carry && word == 0;
    }
    trim(words, width);
}

quint64 divide(Words& words, quint64 divisor)
{
    quint64 rest = 0;
    for (size_t i = words.size(); i-- > 0;) {
        const quint64 high = rest << 32 | words[i] >> 32;
        const quint64 low = (high % divisor) << 32 | (words[i] & 0xffffffff);
        words[i] = (high / divisor) << 32 | low / divisor;
        rest = low % divisor;
    }
    return rest;
}

// words * 10 + digit; false on overflow.
bool append(Words& words, unsigned digit)
{
    quint64 carry = digit;
    for (quint64& word : words) {
        const quint64 low = (word & 0xffffffff) * 10 + carry;
        const quint64 high = (word >> 32) * 10 + (low >> 32);
        word = high << 32 | (low & 0xffffffff);
        carry = high >> 32;
    }
    return carry == 0;
}

QString decimalText(Words words)
{
    QString text;
    do {
        const QString digits = QString::number(divide(words, kBillion));
        text.prepend(isZero(words) ? digits : digits.rightJustified(kBillionDigits, '0'));
    } while (!isZero(words));
    return text;
}

QString signedText(const WaveValue& value)
{
    if (bitsAt(value.value, value.width - 1, 1) == 0)
        return decimalText(value.value);
    Words magnitude = value.value;
    negate(magnitude, value.width);
    // The most negative value is its own negative.
    return '-' + decimalText(magnitude);
}

QChar characterOf(unsigned byte) { return byte >= 0x20 && byte < 0x7f ? QChar(byte) : QChar('.'); }

bool isAny(QChar character) { return character == 'x' || character == 'X' || character == '?'; }

bool readDigits(QString text, int digit, int width, WavePattern& pattern)
{
    const bool bytes = digit == 8;
    if (digit == 4 && text.startsWith("0x", Qt::CaseInsensitive))
        text.remove(0, 2);
    int at = 0;
    for (int i = text.size() - 1; i >= 0; --i, at += digit) {
        const QChar character = text.at(i);
        if (!bytes && isAny(character)) {
            if (at >= width)
                return false;
            Words any(pattern.care.size());
            setBitsAt(any, at, digit, (1u << digit) - 1);
            for (size_t word = 0; word < any.size(); ++word)
                pattern.care[word] &= ~any[word];
            continue;
        }
        const int number = bytes ? character.unicode()
                                 : QByteArray(kDigits).indexOf(character.toUpper().toLatin1());
        if (number < 0 || number >= 1 << digit
            || (at < width ? number >> qMin(width - at, 16) : number))
            return false;
        setBitsAt(pattern.value, at, digit, unsigned(number));
    }
    return at > 0;
}

bool readDecimal(QString text, bool isSigned, int width, WavePattern& pattern)
{
    const bool negative = isSigned && text.startsWith('-');
    if (negative)
        text.remove(0, 1);
    for (const QChar character : qAsConst(text)) {
        const int digit = QByteArray(kDigits, 10).indexOf(character.toLatin1());
        if (digit < 0 || !append(pattern.value, unsigned(digit)))
            return false;
    }
    if (text.isEmpty() || !trim(pattern.value, width))
        return false;
    if (!isSigned)
        return true;
    const bool top = bitsAt(pattern.value, width - 1, 1) != 0;
    if (negative)
        negate(pattern.value, width);
    // -2^(width - 1) is the only magnitude with the top bit.
    return !top || (negative && bitsAt(pattern.value, width - 1, 1));
}

}

bool WaveValue::isKnown() const { return isZero(unknown); }

QString radixName(Radix radix)
{
    return QCoreApplication::translate("WaveView", kRadixFacts[int(radix)].name);
}

QString radixKey(Radix radix) { return kRadixFacts[int(radix)].key; }

std::optional<Radix> radixOf(const QString& key)
{
    for (int i = 0; i < kRadixes; ++i) {
        if (key == kRadixFacts[i].key)
            return Radix(i);
    }
    return {};
}

double numberOf(const WaveValue& value, bool isSigned)
{
    if (!value.isKnown())
        return std::numeric_limits<double>::quiet_NaN();
    const bool negative = isSigned && bitsAt(value.value, value.width - 1, 1) != 0;
    Words magnitude = value.value;
    if (negative)
        negate(magnitude, value.width);
    double number = 0;
    for (size_t word = magnitude.size(); word-- > 0;)
        number = std::ldexp(number, 64) + double(magnitude[word]);
    return negative ? -number : number;
}

QString valueText(const WaveValue& value, Radix radix)
{
    const int digit = digitBits(radix);
    if (digit == 0 && !value.isKnown())
        return "x";
    if (digit == 0)
        return radix == Radix::Signed ? signedText(value) : decimalText(value.value);
    QString text;
    for (int at = (value.width - 1) / digit * digit; at >= 0; at -= digit) {
        const unsigned bits = bitsAt(value.value, at, digit);
        text += bitsAt(value.unknown, at, digit) != 0 ? QChar('x')
            : radix == Radix::Text                    ? characterOf(bits)
                                                      : QChar(kDigits[bits]);
    }
    return text;
}

QString namedText(const WaveValue& value, Radix radix, const QHash<QString, QString>& states)
{
    const QString name
        = radix == Radix::Names ? states.value(valueText(value, Radix::Binary)) : QString();
    return name.isEmpty() ? valueText(value, radix) : name;
}

bool WavePattern::matches(const WaveValue& candidate) const
{
    for (size_t word = 0; word < care.size(); ++word) {
        if (((candidate.value[word] ^ value[word]) | candidate.unknown[word]) & care[word])
            return false;
    }
    return true;
}

bool readPattern(const QString& text, Radix radix, int width, WavePattern& pattern)
{
    pattern.value.assign(wordsFor(width), 0);
    pattern.care.assign(wordsFor(width), ~quint64(0));
    trim(pattern.care, width);
    const int digit = digitBits(radix);
    return digit ? readDigits(text, digit, width, pattern)
                 : readDecimal(text.trimmed(), radix == Radix::Signed, width, pattern);
}
