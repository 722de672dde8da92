#ifndef APPS_OXA_EDITOR_WAVE_WAVE_VALUE_H
#define APPS_OXA_EDITOR_WAVE_WAVE_VALUE_H

#include <QString>

#include <vector>

/// Some bits, each 0, 1 or unknown. Word 0 holds the least significant ones; an unknown bit's value
/// is 0.
struct WaveValue {
    int width = 0; ///< bits
    std::vector<quint64> value;
    std::vector<quint64> unknown;

    bool isKnown() const;
};

/// How a value is written.
enum class Radix { Binary, Octal, Decimal, Signed, Hexadecimal, Text };

constexpr int kRadixes = 6;

/// The radix as its user knows it, "Hexadecimal".
QString radixName(Radix radix);

/// The value's digits: all of them in radixes of whole bits, with "x" for one that is unknown;
/// without leading zeros in the decimal ones, "x" when any bit is unknown. As text a character a
/// byte.
QString valueText(const WaveValue& value, Radix radix);

/// Values that are looked for.
struct WavePattern {
    std::vector<quint64> value;
    std::vector<quint64> care; ///< bits that count

    bool matches(const WaveValue& candidate) const;
};

/// Reads what a user looks for: digits of `radix`, `x` or `?` for any digit, fewer digits than the
/// value has for a small one. False for anything that is no value of `width` bits.
bool readPattern(const QString& text, Radix radix, int width, WavePattern& pattern);

#endif
