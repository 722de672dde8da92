// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/value_text.h"

#include "oxautils/model/edit_distance.h"

#include <algorithm>

namespace OXA {

namespace {

constexpr char kDigits[] = "01XRFBN";
constexpr char kEdges[] = "RFBN";
constexpr int kWidestBinary = 8; // digits of a number shown in binary
constexpr int kShownNames = 3;

bool isMadeOf(const QString& text, const char* characters)
{
    const QLatin1String allowed(characters);
    return std::all_of(text.begin(), text.end(), [&](QChar c) { return allowed.contains(c); });
}

/// The digits of `number` in base 2 as digits in base 16, padded with 0 on the left.
QString hexDigits(const QString& number)
{
    const QString padded = number.rightJustified((number.size() + 3) / 4 * 4, '0');
    QString digits;
    for (int at = 0; at < padded.size(); at += 4)
        digits += QString::number(padded.mid(at, 4).toInt(nullptr, 2), 16);
    return digits;
}

/// The bits of hexadecimal `digits`, an X as four of them.
QString bitsOfHex(const QString& digits)
{
    QString bits;
    for (const QChar c : digits)
        bits += c == 'X' ? QString("XXXX")
                         : QString::number(QString(c).toInt(nullptr, 16), 2).rightJustified(4, '0');
    return bits;
}

/// The bits of `word`, any number of them.
bool bitsOf(
    const QString& word, int width, const NameToBits& names, QString& bits, QStringList& known)
{
    bits = word;
    if (word.size() == width && isMadeOf(word, kDigits))
        return true;
    bits = names ? names(word, known) : QString();
    if (!bits.isEmpty())
        return true;
    const QString capitals = word.toUpper();
    bits = capitals.mid(2);
    if (word.startsWith("0b"))
        return !bits.isEmpty() && isMadeOf(bits, kDigits);
    if (word.startsWith("0x")) {
        const bool isHex = !bits.isEmpty() && isMadeOf(bits, "0123456789ABCDEFX");
        bits = isHex ? bitsOfHex(bits) : QString();
        return isHex;
    }
    bits = capitals;
    if (word.size() == width && isMadeOf(capitals, kDigits))
        return true;
    bool ok = isMadeOf(word, "0123456789") && (word.size() == 1 || !word.startsWith('0'));
    if (ok)
        bits = QString::number(word.toULongLong(&ok), 2);
    return ok;
}

/// "; or a name" for a message, with those of `known` that look most like `word`.
QString orName(const QString& word, const QStringList& known)
{
    return known.isEmpty() ? QString()
                           : "; or a name, of which the nearest are "
            + nearestNames(word, known, kShownNames).join(", ");
}

}

QString valueText(const QString& value, int width)
{
    if (width == 0 || value.size() != width || !isMadeOf(value, kDigits))
        return '"' + value + '"';
    return width > kWidestBinary && isMadeOf(value, "01") ? "0x" + hexDigits(value) : value;
}

bool valueFromText(
    const QString& word, int width, const NameToBits& names, QString& value, QString& expected)
{
    QString bits;
    QStringList known;
    if (!bitsOf(word, width, names, bits, known)) {
        expected = QString("write %1 digits 0, 1, X, R, F, B or N, one for each signal, most "
                           "significant first; or a number: decimal, or beginning with 0b or 0x")
                       .arg(width)
            + orName(word, known);
        return false;
    }
    // Leading bits that are 0 or X beyond the port's width can be dropped.
    int spare = 0;
    while (bits.size() - spare > width && (bits.at(spare) == '0' || bits.at(spare) == 'X'))
        ++spare;
    bits = bits.mid(spare);
    value = bits.rightJustified(width, '0');
    expected = QString("it has %1 bits, the port has %2 signals")
                   .arg(QString::number(bits.size()), QString::number(width));
    return bits.size() <= width;
}

bool valueHasEdges(const QString& value)
{
    const QLatin1String edges(kEdges);
    return std::any_of(value.begin(), value.end(), [&](QChar c) { return edges.contains(c); });
}

}
