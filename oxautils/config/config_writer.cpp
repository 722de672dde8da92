// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/config_writer.h"

#include "files/fail.h"
#include "files/replace_file.h"
#include "oxautils/config/xml_names.h"

#include <QBuffer>
#include <QXmlStreamWriter>

namespace OXA {

namespace {

constexpr int kIndent = 4;
constexpr char kDeclaredVersion[] = "1"; // as in the format, instead of XML's "1.0"

/// The document's bytes; null when a text contains a character that XML cannot.
QByteArray documentText(const char* mode, const std::function<void(QXmlStreamWriter&)>& writeBody)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QXmlStreamWriter xml(&buffer);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(kIndent);
    xml.writeStartDocument(kDeclaredVersion);
    xml.writeStartElement(NODE_OXA_CONFIG);
    xml.writeTextElement(NODE_VERSION, LATEST_VERSION);
    if (mode)
        xml.writeTextElement(NODE_MODE, mode);
    writeBody(xml);
    xml.writeEndElement();
    xml.writeEndDocument();
    return xml.hasError() ? QByteArray() : buffer.data();
}

}

bool writeConfig(const QString& path, const char* mode,
    const std::function<void(QXmlStreamWriter&)>& writeBody, QString* error)
{
    const QByteArray text = documentText(mode, writeBody);
    if (!text.isNull())
        return OXA_FILES::replaceFile(path, text, error);
    return fail(error,
        path
            + ": cannot be written: a text contains a control character or half of a surrogate "
              "pair");
}

}
