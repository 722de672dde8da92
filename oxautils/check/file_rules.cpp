// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/file_rules.h"

#include "oxautils/config/checksum.h"
#include "oxautils/config/config_reader.h"
#include "oxautils/config/xml_names.h"

#include <QSet>

#include <functional>

namespace OXA {

namespace {

using Visit = std::function<void(const XmlElement&)>;

/// Visits `element` and everything below it; the depth of a file is limited.
void visitAll(const XmlElement& element, const Visit& visit)
{
    visit(element);
    for (XmlElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement())
        visitAll(child, visit);
}

void visitCores(const ConfigFile& file, const Visit& visit)
{
    for (const XmlElement& core : file.coreElements())
        visitAll(core, visit);
}

/// Visits the elements `tag` in the lists `listTag` of all cores.
template <typename VisitCore>
void visitLists(
    const ConfigFile& file, const char* listTag, const char* tag, const VisitCore& visitCore)
{
    for (const XmlElement& core : file.coreElements())
        visitCore(childElements(core.firstChildElement(listTag), tag));
}

bool isNumbered(const XmlElement& element)
{
    bool ok = false;
    const int number = element.attribute(ATTR_INDEX).toInt(&ok);
    return !ok || (number >= 0 && number < kUnits); // another rule reports what is not a number
}

void findNumbers(const ConfigFile& file, const char* listTag, const char* tag, Findings& findings)
{
    visitLists(file, listTag, tag, [&](const QList<XmlElement>& elements) {
        for (const XmlElement& element : elements) {
            if (!isNumbered(element))
                findings.add(file.placeOf(element),
                    QString("<%1> has index %2, there are 0 to 15")
                        .arg(tag, element.attribute(ATTR_INDEX)));
        }
    });
}

void findRepeated(const ConfigFile& file, const char* listTag, const char* tag, Findings& findings)
{
    visitLists(file, listTag, tag, [&](const QList<XmlElement>& elements) {
        QSet<int> seen;
        for (const XmlElement& element : elements) {
            const int number = intAttribute(element, ATTR_INDEX);
            if (seen.contains(number) && element.hasAttribute(ATTR_INDEX) && isNumbered(element))
                findings.add(file.placeOf(element),
                    QString("<%1> has index %2 as one before it")
                        .arg(tag, QString::number(number)));
            seen << number;
        }
    });
}

}

void findUnreadable(const ConfigFile& file, Findings& findings)
{
    if (!file.openError.isEmpty())
        findings.add({}, file.openError);
}

void findMalformed(const ConfigFile& file, Findings& findings)
{
    if (!file.openError.isEmpty() || file.parsed)
        return;
    Place place;
    place.line = file.xmlError.line;
    place.column = file.xmlError.column;
    const char* more = file.xmlError.bareAmpersand ? ": a & that begins no reference" : "";
    findings.add(place, file.xmlError.message + more, file.xmlError.hint());
}

void findVersion(const ConfigFile& file, Findings& findings)
{
    const XmlElement version = file.root.firstChildElement(NODE_VERSION);
    if (!file.versionError.isEmpty())
        findings.add(file.placeOf(version.isNull() ? file.root : version), file.versionError);
}

void findMode(const ConfigFile& file, Findings& findings)
{
    if (!file.modeError.isEmpty())
        findings.add(file.placeOf(file.root.firstChildElement(NODE_MODE)), file.modeError);
}

void findPortNumbers(const ConfigFile& file, Findings& findings)
{
    findNumbers(file, NODE_TRIGGER_LIST, NODE_TRIGGER, findings);
}

void findRepeatedPorts(const ConfigFile& file, Findings& findings)
{
    findRepeated(file, NODE_TRIGGER_LIST, NODE_TRIGGER, findings);
}

void findUnitNumbers(const ConfigFile& file, Findings& findings)
{
    findNumbers(file, NODE_MATCH_UNITS, NODE_MATCH_UNIT, findings);
}

void findRepeatedUnits(const ConfigFile& file, Findings& findings)
{
    findRepeated(file, NODE_MATCH_UNITS, NODE_MATCH_UNIT, findings);
}

void findUnknownPorts(const ConfigFile& file, Findings& findings)
{
    visitLists(file, NODE_MATCH_UNITS, NODE_MATCH_UNIT, [&](const QList<XmlElement>& units) {
        for (const XmlElement& unit : units) {
            bool ok = false;
            const int port = unit.attribute(ATTR_MU_TRIGGER).toInt(&ok);
            if (ok && (port < 0 || port >= kPorts))
                findings.add(file.placeOf(unit),
                    QString("M%1 is bound to port %2, there are 0 to 15")
                        .arg(unit.attribute(ATTR_INDEX), QString::number(port)));
        }
    });
}

void findEmptyBuses(const ConfigFile& file, Findings& findings)
{
    visitCores(file, [&](const XmlElement& element) {
        if (element.tagName() == NODE_BUS && element.firstChildElement(NODE_SIGNAL).isNull())
            findings.add(file.placeOf(element),
                QString("bus \"%1\" has no bits, and counts as a single signal")
                    .arg(element.attribute(
                        ATTR_BUS_RESTORE_NAME, element.attribute(ATTR_BUS_NAME))));
    });
}

void findChecksum(const ConfigFile& file, Findings& findings)
{
    if (!file.readable())
        return;
    const XmlElement id = file.root.firstChildElement(NODE_OXA_ID);
    QString computed;
    if (file.lite) {
        const QList<AOCore_Lite*> cores = readCoresLite(file.root);
        computed = checksumOf(cores);
        qDeleteAll(cores);
    } else {
        const QList<AoCore*> cores = readCores(file.root, ExpressionText::AsWritten);
        computed = checksumOf(cores);
        qDeleteAll(cores);
    }
    if (!id.isNull() && id.text() != computed)
        findings.add(file.placeOf(id),
            QString("the checksum is \"%1\", expected is \"%2\"").arg(id.text(), computed));
    else if (id.isNull() && !file.coreElements().isEmpty())
        findings.add(file.placeOf(file.root),
            QString("there is no checksum, expected is \"%1\"").arg(computed));
}

}
