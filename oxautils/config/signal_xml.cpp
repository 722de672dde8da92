// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/signal_xml.h"

#include "oxautils/config/xml_element.h"
#include "oxautils/config/xml_names.h"

#include <QXmlStreamWriter>

namespace OXA {

namespace {

void writeCaptureEnable(QXmlStreamWriter& xml, const SignalItem& item)
{
    xml.writeAttribute(ATTR_SIGNAL_CAPTURE_ENABLE, item.captureEnable ? "true" : "false");
}

/// The rest of an opened "Signal" element.
void writeSignalContent(QXmlStreamWriter& xml, const SignalItem& item)
{
    if (!item.text.isEmpty())
        xml.writeAttribute(ATTR_SIGNAL_TEXT, item.text);
    xml.writeCharacters(item.name);
    xml.writeEndElement();
}

// A port's list always has the name under "restorename"; a core's list only when there is a text.
void writeBusNames(QXmlStreamWriter& xml, const SignalItem& bus, SignalOwner owner)
{
    if (!bus.text.isEmpty())
        xml.writeAttribute(ATTR_BUS_NAME, bus.text);
    else if (owner == SignalOwner::Core)
        xml.writeAttribute(ATTR_BUS_NAME, bus.name);
    if (!bus.text.isEmpty() || owner == SignalOwner::Port)
        xml.writeAttribute(ATTR_BUS_RESTORE_NAME, bus.name);
}

void writeBus(QXmlStreamWriter& xml, const SignalItem& bus, SignalOwner owner)
{
    xml.writeStartElement(NODE_BUS);
    writeCaptureEnable(xml, bus);
    writeBusNames(xml, bus, owner);
    for (const SignalItem& bit : bus.subItems) {
        xml.writeStartElement(NODE_SIGNAL);
        writeSignalContent(xml, bit);
    }
    xml.writeEndElement();
}

SignalItem readSingle(const XmlElement& element)
{
    SignalItem item;
    item.name = element.text();
    item.text = element.attribute(ATTR_SIGNAL_TEXT);
    return item;
}

SignalItem readBus(const XmlElement& element)
{
    SignalItem bus;
    bus.name = element.attribute(ATTR_BUS_NAME);
    const QString restoreName = element.attribute(ATTR_BUS_RESTORE_NAME);
    if (!restoreName.isEmpty()) {
        bus.text = bus.name;
        bus.name = restoreName;
    }
    for (XmlElement bit = element.firstChildElement(NODE_SIGNAL); !bit.isNull();
         bit = bit.nextSiblingElement(NODE_SIGNAL))
        bus.subItems += readSingle(bit);
    return bus;
}

}

void writeSignalList(QXmlStreamWriter& xml, const QList<SignalItem>& items, SignalOwner owner)
{
    xml.writeStartElement(NODE_SIGNAL_LIST);
    for (const SignalItem& item : items) {
        if (item.isBus()) {
            writeBus(xml, item, owner);
            continue;
        }
        xml.writeStartElement(NODE_SIGNAL);
        writeCaptureEnable(xml, item);
        writeSignalContent(xml, item);
    }
    xml.writeEndElement();
}

QList<SignalItem> readSignalList(const XmlElement& list)
{
    QList<SignalItem> items;
    for (XmlElement element = list.firstChildElement(); !element.isNull();
         element = element.nextSiblingElement()) {
        const bool bus = element.tagName() == NODE_BUS;
        if (!bus && element.tagName() != NODE_SIGNAL)
            continue;
        SignalItem item = bus ? readBus(element) : readSingle(element);
        const QString capture = element.attribute(ATTR_SIGNAL_CAPTURE_ENABLE);
        item.captureEnable = capture.isEmpty() || capture == "true";
        items += item;
    }
    return items;
}

}
