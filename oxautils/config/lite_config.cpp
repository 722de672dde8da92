// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/lite_config.h"

#include "oxautils/config/checksum.h"
#include "oxautils/config/config_reader.h"
#include "oxautils/config/config_writer.h"
#include "oxautils/config/signal_xml.h"
#include "oxautils/config/version.h"
#include "oxautils/config/xml_document.h"
#include "oxautils/config/xml_names.h"
#include "oxautils/model/log_categories.h"

#include <QXmlStreamWriter>

namespace OXA {

namespace {

constexpr int kAtMost = 3; // the bits of compareVersion for "below" and "equal"

constexpr const char* kCoreAttributes[] = {ATTR_INDEX, ATTR_AO_SAMPLE_CLK, ATTR_AO_TRIG_TYPE,
    ATTR_AO_CAPTURE_AMOUNT, ATTR_AO_LITE_IMPLEMENTATION, ATTR_AO_INPUT_REGISTER_ENABLED,
    ATTR_AO_CAPTURE_INIT_DATA_ENABLED};

// This form writes every flag as a digit.
void writeCore(QXmlStreamWriter& xml, const AOCore_Lite& core)
{
    xml.writeStartElement(NODE_AOCORE_LITE);
    xml.writeAttribute(ATTR_INDEX, QString::number(core.index));
    xml.writeAttribute(ATTR_AO_SAMPLE_CLK, core.sampleClock);
    xml.writeAttribute(ATTR_AO_TRIG_TYPE, QString::number(core.trigType));
    xml.writeAttribute(ATTR_AO_CAPTURE_AMOUNT, QString::number(core.captureAmount));
    xml.writeAttribute(ATTR_AO_LITE_IMPLEMENTATION, QString::number(core.implementation));
    xml.writeAttribute(
        ATTR_AO_INPUT_REGISTER_ENABLED, QString::number(int(core.inputRegisterEnabled)));
    xml.writeAttribute(
        ATTR_AO_CAPTURE_INIT_DATA_ENABLED, QString::number(int(core.captureInitDataEnabled)));
    xml.writeAttribute(ATTR_AO_MODULE_NAME, core.moduleName);
    writeSignalList(xml, core.signalList, SignalOwner::Core);
    xml.writeEndElement();
}

/// The error in the document's version; empty when the reader understands it.
QString versionProblem(const XmlElement& root)
{
    const XmlElement version = root.firstChildElement(NODE_VERSION);
    if (version.isNull())
        return "Unknown Oxa version.";
    if (!(compareVersion(version.text(), LATEST_VERSION) & kAtMost))
        return "The version of Oxa config file is too high.";
    return {};
}

}

bool writeCores(const QList<AOCore_Lite*>& cores, const QString& path, QString* error)
{
    const auto writeBody = [&cores](QXmlStreamWriter& xml) {
        for (const AOCore_Lite* core : cores)
            writeCore(xml, *core);
        xml.writeTextElement(NODE_OXA_ID, checksumOf(cores));
    };
    return writeConfig(path, kModeLite, writeBody, error);
}

void writeOXAConfigToXml_Lite(const QList<AOCore_Lite*>& cores, const QString& path)
{
    if (QString error; !writeCores(cores, path, &error))
        qCCritical(logConfig).noquote() << error;
}

QList<AOCore_Lite*> readOXAConfigFromXml_Lite(const QString& path, bool* ok, QString* error)
{
    QByteArray content;
    if (!readFile(path, content)) {
        report(ok, false, error, "Open file failed");
        return {};
    }
    if (content.isEmpty()) {
        report(ok, true);
        return {};
    }
    XmlDocument document;
    XmlError xmlError;
    if (!parseXml(content, document, &xmlError)) {
        report(ok, false, error, xmlError.text());
        return {};
    }
    const QString problem = versionProblem(document.documentElement());
    report(ok, problem.isEmpty(), error, problem);
    return problem.isEmpty() ? readCoresLite(document.documentElement()) : QList<AOCore_Lite*>();
}

bool checkOXALiteFile(const QString& path)
{
    XmlDocument document;
    if (!loadXml(path, document))
        return false;
    for (XmlElement core = document.documentElement().firstChildElement(NODE_AOCORE_LITE);
         !core.isNull(); core = core.nextSiblingElement(NODE_AOCORE_LITE)) {
        if (!hasAttributes(core, kCoreAttributes))
            return false;
    }
    return true;
}

}
