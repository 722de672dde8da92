// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/config_file.h"

#include "oxautils/config/config_writer.h"
#include "oxautils/config/version.h"
#include "oxautils/config/xml_names.h"
#include "oxautils/model/limits.h"

namespace OXA {

namespace {

constexpr int kAbove = 4; // of compareVersion

QString versionErrorOf(const XmlElement& root)
{
    const XmlElement version = root.firstChildElement(NODE_VERSION);
    if (version.isNull())
        return "it has no version";
    try {
        if (compareVersion(version.text(), LATEST_VERSION) != kAbove)
            return {};
    } catch (const CompareException&) {
        return QString("its version \"%1\" is not of the form 3.0").arg(version.text());
    }
    return QString("its version is %1, the newest known is %2").arg(version.text(), LATEST_VERSION);
}

/// The parser's position of the end of the element's start tag, unique for each element.
QPair<int, int> tagEnd(const XmlElement& element)
{
    return {element.lineNumber(), element.columnNumber()};
}

/// The index of a port or unit; -1 when it is missing or invalid.
int numberOf(const XmlElement& element)
{
    bool ok = false;
    const int number = element.attribute(ATTR_INDEX).toInt(&ok);
    return ok && number >= 0 && number < kUnits ? number : -1;
}

/// The children `tag` of a core's list by their index; the last one with an index counts.
QHash<int, XmlElement> indexed(const XmlElement& core, const char* listTag, const char* tag)
{
    QHash<int, XmlElement> elements;
    for (const XmlElement& element : childElements(core.firstChildElement(listTag), tag))
        elements.insert(numberOf(element), element);
    return elements;
}

}

ConfigFile::ConfigFile(const QString& path)
{
    QByteArray content;
    if (!readFile(path, content, &openError))
        return;
    parsed = parseXml(content, document, &xmlError);
    m_lines = QString::fromUtf8(content).split('\n');
    if (!parsed)
        return;
    root = document.documentElement();
    versionError = versionErrorOf(root);
    const XmlElement mode = root.firstChildElement(NODE_MODE);
    lite = mode.text() == kModeLite;
    if (!mode.isNull() && !lite && mode.text() != kModeStandard)
        modeError = QString("its mode \"%1\" is neither \"%2\" nor \"%3\"")
                        .arg(mode.text(), kModeStandard, kModeLite);
    if (readable())
        indexCores();
}

void ConfigFile::indexCores()
{
    for (const XmlElement& core : childElements(root, lite ? NODE_AOCORE_LITE : NODE_AOCORE)) {
        m_positions.insert(tagEnd(core), m_cores.size());
        m_cores.append({core, indexed(core, NODE_TRIGGER_LIST, NODE_TRIGGER),
            indexed(core, NODE_MATCH_UNITS, NODE_MATCH_UNIT),
            childElements(core.firstChildElement(NODE_EXPRESSIONS), NODE_EXPRESSION)});
    }
}

QList<XmlElement> ConfigFile::coreElements() const
{
    QList<XmlElement> elements;
    for (const CoreElements& core : m_cores)
        elements += core.core;
    return elements;
}

void ConfigFile::setStart(const XmlElement& element, Place& place) const
{
    place.line = element.lineNumber();
    place.column = element.columnNumber();
    // The parser reports the tag's end; there is no "<" between it and the tag's start.
    int end = place.column - 1;
    for (int line = place.line; line >= 1 && line <= m_lines.size(); --line, end = -1) {
        const int start = m_lines.at(line - 1).lastIndexOf('<', end);
        if (start < 0)
            continue;
        place.line = line;
        place.column = start + 1;
        return;
    }
}

Place ConfigFile::placeOf(const XmlElement& element) const
{
    Place place;
    for (XmlElement at = element; !at.isNull(); at = at.parent()) {
        if (at.tagName() == NODE_TRIGGER && place.port < 0)
            place.port = numberOf(at);
        else if (at.tagName() == NODE_MATCH_UNIT && place.unit < 0)
            place.unit = numberOf(at);
        else if (at.tagName() == NODE_EVENTS)
            place.events = true;
        else if (at.tagName() == NODE_STORAGE)
            place.storage = true;
        else if (m_positions.contains(tagEnd(at)))
            place.core = m_positions.value(tagEnd(at));
    }
    setStart(element, place);
    return place;
}

// Adds the signals below `element`, each once.
static void addSignals(const XmlElement& element, QHash<QString, XmlElement>& signalElements)
{
    for (XmlElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString name = child.tagName() == NODE_SIGNAL ? child.text() : QString();
        if (!name.isEmpty() && !signalElements.contains(name))
            signalElements.insert(name, child);
        addSignals(child, signalElements);
    }
}

XmlElement ConfigFile::signalIn(const XmlElement& element, const QString& name) const
{
    const auto key = tagEnd(element);
    if (!m_signals.contains(key))
        addSignals(element, m_signals[key]);
    return m_signals[key].value(name, element);
}

Place ConfigFile::placeOfSignal(const QString& name) const
{
    for (const CoreElements& core : m_cores) {
        const XmlElement element = signalIn(core.core, name);
        if (element.tagName() == NODE_SIGNAL || element.attribute(ATTR_AO_SAMPLE_CLK) == name)
            return placeOf(element);
    }
    return {};
}

void ConfigFile::locate(Place& place) const
{
    const CoreElements elements = m_cores.value(place.core);
    XmlElement element = elements.core.isNull() ? root : elements.core;
    if (place.port >= 0)
        element = elements.ports.value(place.port, element);
    else if (place.unit >= 0)
        element = elements.units.value(place.unit, element);
    else if (place.expression >= 0)
        element = elements.expressions.value(place.expression, element);
    else if (place.events && !element.firstChildElement(NODE_EVENTS).isNull())
        element = element.firstChildElement(NODE_EVENTS);
    else if (place.storage && !element.firstChildElement(NODE_STORAGE).isNull())
        element = element.firstChildElement(NODE_STORAGE);
    if (!place.signal.isEmpty())
        element = signalIn(element, place.signal);
    setStart(element, place);
}

QList<XmlElement> childElements(const XmlElement& parent, const char* tag)
{
    QList<XmlElement> children;
    for (XmlElement child = parent.firstChildElement(tag); !child.isNull();
         child = child.nextSiblingElement(tag))
        children += child;
    return children;
}

}
