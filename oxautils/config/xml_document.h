#ifndef OXAUTILS_CONFIG_XML_DOCUMENT_H
#define OXAUTILS_CONFIG_XML_DOCUMENT_H

#include <QByteArray>
#include <QDomDocument>
#include <QString>

namespace OXA {

/// What to do about most files that are no XML.
constexpr char kMalformedHint[] = "Repair the place by hand, or go back to the last good copy.";

/// Where and why a document is none; lines and columns from 1.
struct XmlError {
    QString message;
    int line = 0;
    int column = 0;
    bool bareAmpersand
        = false; ///< the text in front of the place begins a reference without an end

    QString text() const; ///< "message at line:column"
    QString hint() const; ///< what to do about it
};

/// The whole of the file `path`, line ends as "\n". False, with the system's reason, when it cannot
/// be opened.
bool readFile(const QString& path, QByteArray& content, QString* error = nullptr);

/// Parses `content`. Refuses, beside what is malformed, what no configuration file holds and the
/// parser does not survive: elements nested deeper than 64 levels, and declarations inside the
/// document type, whose entities can nest elements out of sight.
bool parseXml(const QByteArray& content, QDomDocument& document, XmlError* error = nullptr);

/// Both of the above, for callers to whom the reason is all one.
bool loadXml(const QString& path, QDomDocument& document);

}

#endif
