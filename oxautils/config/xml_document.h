// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_XML_DOCUMENT_H
#define OXAUTILS_CONFIG_XML_DOCUMENT_H

#include "oxautils/config/xml_element.h"

#include <QByteArray>
#include <QString>

namespace OXA {

/// What to do about most files that are not XML.
constexpr char kMalformedHint[] = "Correct the file at this place, or use the last good copy.";

/// Where and why a file is not XML; lines and columns from 1.
struct XmlError {
    QString message;
    int line = 0;
    int column = 0;
    bool bareAmpersand
        = false; ///< the text before the place has an & that does not begin a reference

    QString text() const; ///< "message at line:column"
    QString hint() const; ///< what to do about it
};

/// Reads the file `path`, with line ends as "\n". False, with the system's reason, when it cannot
/// be opened.
bool readFile(const QString& path, QByteArray& content, QString* error = nullptr);

/// Parses `content`. Beside malformed XML it rejects what would make the parser fail and is in no
/// configuration: elements nested deeper than 64 levels, and declarations in the document type,
/// whose entities can nest elements.
bool parseXml(const QByteArray& content, XmlDocument& document, XmlError* error = nullptr);

/// Both of the above, when the reason is not needed.
bool loadXml(const QString& path, XmlDocument& document);

}

#endif
