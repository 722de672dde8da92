#include "oxautils/config/config_writer.h"

#include "oxautils/config/xml_names.h"

#include <QBuffer>
#include <QDebug>
#include <QSaveFile>
#include <QXmlStreamWriter>

namespace OXA {

namespace {

constexpr int kIndent = 4;
constexpr char kDeclaredVersion[] = "1"; // the format's own; "1.0" would be XML's

/// The document's bytes; null when a text holds a character that XML cannot.
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

void writeConfig(
    const QString& path, const char* mode, const std::function<void(QXmlStreamWriter&)>& writeBody)
{
    const QByteArray text = documentText(mode, writeBody);
    if (text.isNull()) {
        qCritical().noquote() << "failed to write"
                              << path
                + ": a text holds a control character or half of a surrogate pair";
        return;
    }
    QSaveFile file(path);
    // In a directory that takes no new file, writing over the old one is all that is left.
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        return;
    file.write(text);
    // A commit would not notice that what it flushes is lost.
    if (!file.flush() || !file.commit())
        qCritical().noquote() << "failed to write" << path + ":" << file.errorString();
}

}
