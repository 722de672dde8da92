#ifndef OXAUTILS_ENCODING_VALUE_TEXT_H
#define OXAUTILS_ENCODING_VALUE_TEXT_H

#include <QString>

#include <functional>

namespace OXA {

// The values of match units as text, in the forms that `unitFromText` describes.

/// The bits that a name stands for, most significant first; empty when it is none.
using NameToBits = std::function<QString(const QString& name)>;

/// `value` of a port of `width` signals, so that it reads back.
QString valueText(const QString& value, int width);

/// Reads `word`, without quotation marks, for a port of `width` signals, of which there are some.
/// False, with what is accepted in `expected`, when it is no such value.
bool valueFromText(
    const QString& word, int width, const NameToBits& names, QString& value, QString& expected);

/// Whether a digit of `value` takes hardware that detects edges.
bool valueHasEdges(const QString& value);

}

#endif
