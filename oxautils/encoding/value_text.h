// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_VALUE_TEXT_H
#define OXAUTILS_ENCODING_VALUE_TEXT_H

#include <QStringList>

#include <functional>

namespace OXA {

// The values of match units as text, in the forms that `unitFromText` describes.

/// The bits of a named value, most significant first; empty when there is no such value. `known`
/// then lists the names that there are.
using NameToBits = std::function<QString(const QString& name, QStringList& known)>;

/// `value` of a port of `width` signals, as text that can be read back.
QString valueText(const QString& value, int width);

/// Reads `word`, without quotation marks, for a port of `width` signals, at least one. False, with
/// what is accepted in `expected`, when it is not such a value.
bool valueFromText(
    const QString& word, int width, const NameToBits& names, QString& value, QString& expected);

/// Whether a digit of `value` needs hardware that detects edges.
bool valueHasEdges(const QString& value);

}

#endif
