// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/standard_config.h"

#include "oxautils/config/checksum.h"
#include "oxautils/config/config_reader.h"
#include "oxautils/config/config_writer.h"
#include "oxautils/config/signal_xml.h"
#include "oxautils/config/version.h"
#include "oxautils/config/xml_document.h"
#include "oxautils/config/xml_names.h"
#include "oxautils/model/limits.h"
#include "oxautils/model/log_categories.h"

#include <QXmlStreamWriter>

namespace OXA {

namespace {

constexpr char kOlderVersion[] = "2.0";
constexpr int kAtMost = 3; // the bits of compareVersion for "below" and "equal"

constexpr const char* kCoreAttributes[] = {ATTR_INDEX, ATTR_AO_SAMPLE_CLK, ATTR_AO_TRIG_TYPE,
    ATTR_AO_STORAGE_DEPTH, ATTR_AO_CAPTURE_AMOUNT, ATTR_AO_TRIGGER_POS, ATTR_AO_WINDOW_NUM};

constexpr const char* kTriggerAttributes[] = {ATTR_INDEX};

constexpr const char* kUnitAttributes[] = {ATTR_INDEX, ATTR_MU_ENABLED, ATTR_MU_MATCH_TYPE,
    ATTR_MU_COUNTER_ENABLE, ATTR_MU_COUNTER_WIDTH, ATTR_MU_COUNTER, ATTR_MU_CONTINUOUS,
    ATTR_MU_FUNC, ATTR_MU_VALUE0, ATTR_MU_VALUE1};

// The format writes a core's flags as words and a unit's as digits.
QString word(bool flag) { return flag ? "true" : "false"; }

QString digit(bool flag) { return flag ? "1" : "0"; }

void writeCoreAttributes(QXmlStreamWriter& xml, const AoCore& core)
{
    xml.writeAttribute(ATTR_INDEX, QString::number(core.index));
    xml.writeAttribute(ATTR_AO_SAMPLE_CLK, core.sampleClock);
    xml.writeAttribute(ATTR_AO_TRIG_TYPE, QString::number(core.trigType));
    xml.writeAttribute(ATTR_AO_STORAGE_DEPTH, QString::number(core.storageDepth));
    xml.writeAttribute(ATTR_AO_WINDOW_NUM, QString::number(core.windowNum));
    xml.writeAttribute(ATTR_AO_CAPTURE_AMOUNT, QString::number(core.captureAmount));
    xml.writeAttribute(ATTR_AO_IMPLEMENTATION, QString::number(core.implementation));
    xml.writeAttribute(ATTR_AO_TRIGGER_POS, QString::number(core.triggerPos));
    xml.writeAttribute(ATTR_AO_MODULE_NAME, core.moduleName);
    xml.writeAttribute(ATTR_FORCE_TRIGGER_FALLING, word(core.forceTriggerByFallingEdge));
    xml.writeAttribute(ATTR_AO_CAPTURE_INIT_DATA_ENABLED, word(core.captureInitDataEnabled));
}

void writeTriggers(QXmlStreamWriter& xml, const AoCore& core)
{
    xml.writeStartElement(NODE_TRIGGER_LIST);
    for (const TriggerPort* port : core.triggers) {
        xml.writeStartElement(NODE_TRIGGER);
        xml.writeAttribute(ATTR_INDEX, QString::number(port->index));
        if (!port->signalList.isEmpty())
            writeSignalList(xml, port->signalList, SignalOwner::Port);
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

void writeMatchUnit(QXmlStreamWriter& xml, const MatchUnit& unit)
{
    xml.writeStartElement(NODE_MATCH_UNIT);
    xml.writeAttribute(ATTR_INDEX, QString::number(unit.index));
    xml.writeAttribute(ATTR_MU_ENABLED, digit(unit.enabled));
    xml.writeAttribute(ATTR_MU_MATCH_TYPE, QString::number(unit.matchType));
    xml.writeAttribute(ATTR_MU_COUNTER_ENABLE, digit(unit.counterEnable));
    xml.writeAttribute(ATTR_MU_COUNTER_WIDTH, QString::number(unit.counterWidth));
    xml.writeAttribute(ATTR_MU_COUNTER, QString::number(unit.counter));
    xml.writeAttribute(ATTR_MU_CONTINUOUS, digit(unit.continuous));
    xml.writeAttribute(ATTR_MU_FUNC, QString::number(unit.matchFunc));
    xml.writeAttribute(ATTR_MU_VALUE0, unit.value0);
    xml.writeAttribute(ATTR_MU_VALUE1, unit.value1);
    if (unit.trigger)
        xml.writeAttribute(ATTR_MU_TRIGGER, QString::number(unit.trigger->index));
    xml.writeEndElement();
}

void writeExpressions(QXmlStreamWriter& xml, const AoCore& core)
{
    const bool dynamic = core.expressionType == DynamicExpressions;
    xml.writeStartElement(NODE_EXPRESSIONS);
    xml.writeAttribute(ATTR_EXP_TYPE, dynamic ? "Dynamic" : "Static");
    if (dynamic)
        xml.writeAttribute(ATTR_EXP_IMPLEMENTATION, QString::number(core.exImplementation));
    for (const QString& expression : core.expressions)
        xml.writeTextElement(NODE_EXPRESSION, expression);
    xml.writeEndElement();
}

// An attribute that is not there has its default.
void writeEvents(QXmlStreamWriter& xml, const CoreEvents& events)
{
    if (events.isDefault())
        return;
    xml.writeEmptyElement(NODE_EVENTS);
    if (!events.forcedBy.isEmpty())
        xml.writeAttribute(ATTR_EVENTS_FORCED_BY, indexesText(events.forcedBy));
    if (events.triggerOut)
        xml.writeAttribute(ATTR_EVENTS_TRIGGER_OUT, word(true));
    if (events.stamps)
        xml.writeAttribute(ATTR_EVENTS_STAMPS, word(true));
}

void writeStorage(QXmlStreamWriter& xml, const CoreStorage& storage)
{
    if (storage.isDefault())
        return;
    const bool when = storage.keep == CoreStorage::When;
    xml.writeEmptyElement(NODE_STORAGE);
    xml.writeAttribute(ATTR_STORAGE_KEEP, kKeepWords[storage.keep]);
    if (when)
        xml.writeAttribute(ATTR_STORAGE_WHEN, storage.when);
    xml.writeAttribute(ATTR_STORAGE_GAP_BITS, QString::number(storage.gapBits));
    if (!when && !storage.watch.isEmpty())
        xml.writeAttribute(ATTR_STORAGE_WATCH, watchText(storage.watch));
    xml.writeAttribute(ATTR_STORAGE_LIMIT, QString::number(storage.limit));
}

void writeCore(QXmlStreamWriter& xml, const AoCore& core)
{
    xml.writeStartElement(NODE_AOCORE);
    writeCoreAttributes(xml, core);
    writeSignalList(xml, core.signalList, SignalOwner::Core);
    writeTriggers(xml, core);
    xml.writeStartElement(NODE_MATCH_UNITS);
    for (const MatchUnit* unit : core.matchUnits)
        writeMatchUnit(xml, *unit);
    xml.writeEndElement();
    writeExpressions(xml, core);
    writeEvents(xml, core.events);
    writeStorage(xml, core.storage);
    xml.writeEndElement();
}

/// The error in the document's version; empty when the reader understands it.
QString versionProblem(const XmlElement& root)
{
    const XmlElement version = root.firstChildElement(NODE_VERSION);
    if (version.isNull())
        return "Unknown Oxa version.";
    try {
        if (compareVersion(version.text(), kOlderVersion) & kAtMost) {
            qCDebug(logConfig, "[ read Oxa Config version 2000 ]");
            return {};
        }
        if (!(compareVersion(version.text(), LATEST_VERSION) & kAtMost))
            return "The version of Oxa config file is too high.";
        qCDebug(logConfig, "[ read Oxa Config version 3000 ]");
    } catch (const CompareException& exception) {
        return exception.message();
    }
    return {};
}

template <typename Names>
bool childrenHaveAttributes(
    const XmlElement& core, const char* listTag, const char* tag, const Names& names)
{
    for (XmlElement child = core.firstChildElement(listTag).firstChildElement(tag); !child.isNull();
         child = child.nextSiblingElement(tag)) {
        if (!hasAttributes(child, names))
            return false;
    }
    return true;
}

}

bool writeCores(const QList<AoCore*>& cores, const QString& path, QString* error)
{
    const auto writeBody = [&cores](QXmlStreamWriter& xml) {
        for (const AoCore* core : cores)
            writeCore(xml, *core);
        xml.writeTextElement(NODE_OXA_ID, checksumOf(cores));
    };
    return writeConfig(path, kModeStandard, writeBody, error);
}

void writeOXAConfigToXml(const QList<AoCore*>& cores, const QString& path)
{
    if (QString error; !writeCores(cores, path, &error))
        qCCritical(logConfig).noquote() << error;
}

QList<AoCore*> readOXAConfigFromXml(const QString& path, bool* ok, QString* error)
{
    qCDebug(logConfig, "readOXAConfigFromXml");
    QByteArray content;
    if (!readFile(path, content)) {
        report(ok, false, error, QString("%1 open file failed.").arg(path));
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
    if (!problem.isEmpty())
        return {};
    return readCores(document.documentElement(), ExpressionText::Normalised);
}

bool checkOXAStandardFile(const QString& path)
{
    XmlDocument document;
    if (!loadXml(path, document))
        return false;
    for (XmlElement core = document.documentElement().firstChildElement(NODE_AOCORE);
         !core.isNull(); core = core.nextSiblingElement(NODE_AOCORE)) {
        if (!hasAttributes(core, kCoreAttributes)
            || !childrenHaveAttributes(core, NODE_TRIGGER_LIST, NODE_TRIGGER, kTriggerAttributes)
            || !childrenHaveAttributes(core, NODE_MATCH_UNITS, NODE_MATCH_UNIT, kUnitAttributes))
            return false;
    }
    return true;
}

QString readOXACRCForXml(const QString& path)
{
    XmlDocument document;
    if (!loadXml(path, document))
        return {};
    return document.documentElement().firstChildElement(NODE_OXA_ID).text();
}

}
