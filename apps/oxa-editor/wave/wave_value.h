// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_VALUE_H
#define APPS_OXA_EDITOR_WAVE_WAVE_VALUE_H

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

/// Bits that are 0, 1 or unknown. Word 0 contains the least significant bits; an unknown bit has
/// the value 0.
struct WaveValue {
    int width = 0; ///< bits
    std::vector<quint64> value;
    std::vector<quint64> unknown;

    bool isKnown() const;
};

/// How a value is written.
enum class Radix { Binary, Octal, Decimal, Signed, Hexadecimal, Text, Names };

constexpr int kRadixes = 7;

/// The radix as shown to users, such as "Hexadecimal".
QString radixName(Radix radix);

/// The same for files: "hexadecimal".
QString radixKey(Radix radix);
std::optional<Radix> radixOf(const QString& key); ///< none for a key that is not known

/// The digits of the value: binary, octal and hexadecimal with leading zeros and "x" for a digit
/// with unknown bits, also for values without a name; decimal without leading zeros, "x" when any
/// bit is unknown; text with one character for each byte.
QString valueText(const WaveValue& value, Radix radix);

/// The same, with the name in `states`, by binary digits, for `Radix::Names`.
QString namedText(const WaveValue& value, Radix radix, const QHash<QString, QString>& states);

/// The value as a number, rounded when it is wider than 53 bits; not a number when a bit is
/// unknown.
double numberOf(const WaveValue& value, bool isSigned);

/// A set of values to search for.
struct WavePattern {
    std::vector<quint64> value;
    std::vector<quint64> care; ///< bits that are compared

    bool matches(const WaveValue& candidate) const;
};

/// Reads a value to search for: digits of `radix`, with `x` or `?` for any digit; leading zeros may
/// be omitted. False when it is not a value of `width` bits.
bool readPattern(const QString& text, Radix radix, int width, WavePattern& pattern);

#endif
