// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_CONFIG_READER_H
#define OXAUTILS_CONFIG_CONFIG_READER_H

#include "oxautils/config/xml_element.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

namespace OXA {

/// Expressions with "M3" for "match[3]" and in upper case, or as in the file.
enum class ExpressionText { Normalised, AsWritten };

/// The cores below the root of a Standard file, of either layout; the caller owns them.
QList<AoCore*> readCores(const XmlElement& root, ExpressionText expressions);

/// The cores below the root of a Lite file; the caller owns them.
QList<AOCore_Lite*> readCoresLite(const XmlElement& root);

/// An attribute as a decimal integer; 0 when it is missing or not a number.
int intAttribute(const XmlElement& element, const char* name);

/// Whether `element` has all of `names`.
template <typename Names> bool hasAttributes(const XmlElement& element, const Names& names)
{
    for (const char* name : names) {
        if (!element.hasAttribute(name))
            return false;
    }
    return true;
}

/// Sets the results of a reader; null pointers are skipped.
void report(bool* ok, bool success, QString* error = nullptr, const QString& message = {});

}

#endif
