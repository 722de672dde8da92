// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/oxa_mode.h"

#include "oxautils/config/config_writer.h"
#include "oxautils/config/xml_document.h"
#include "oxautils/config/xml_names.h"
#include "oxautils/model/log_categories.h"

namespace OXA {

OxaMode oxaModeFromOxaConfigFile(const QString& path)
{
    XmlDocument document;
    if (!loadXml(path, document))
        return Invalid;
    const XmlElement mode = document.documentElement().firstChildElement(NODE_MODE);
    if (mode.isNull() || mode.text() == kModeStandard)
        return Standard;
    return mode.text() == kModeLite ? Lite : Invalid;
}

QString versionFromOxaConfigFile(const QString& path)
{
    XmlDocument document;
    loadXml(path, document);
    return document.documentElement().firstChildElement(NODE_VERSION).text();
}

void fillInfoForEmptyOxaConfig(const QString& path, OxaMode mode)
{
    const char* text = mode == Standard ? kModeStandard : mode == Lite ? kModeLite : nullptr;
    if (QString error; !writeConfig(
            path, text, [](QXmlStreamWriter&) {}, &error))
        qCCritical(logConfig).noquote() << error;
}

}
