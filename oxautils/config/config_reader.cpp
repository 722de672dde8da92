// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/config_reader.h"

#include "oxautils/config/signal_xml.h"
#include "oxautils/config/xml_names.h"
#include "oxautils/model/limits.h"

namespace OXA {

namespace {

template <typename Visit>
void forEachChild(const XmlElement& parent, const char* tag, const Visit& visit)
{
    for (XmlElement child = parent.firstChildElement(tag); !child.isNull();
         child = child.nextSiblingElement(tag))
        visit(child);
}

void readSettings(const XmlElement& element, AoCore& core)
{
    core.index = intAttribute(element, ATTR_INDEX);
    core.sampleClock = element.attribute(ATTR_AO_SAMPLE_CLK);
    core.trigType = intAttribute(element, ATTR_AO_TRIG_TYPE);
    core.storageDepth = intAttribute(element, ATTR_AO_STORAGE_DEPTH);
    core.captureAmount = intAttribute(element, ATTR_AO_CAPTURE_AMOUNT);
    core.triggerPos = intAttribute(element, ATTR_AO_TRIGGER_POS);
    core.windowNum = intAttribute(element, ATTR_AO_WINDOW_NUM);
    core.implementation = intAttribute(element, ATTR_AO_IMPLEMENTATION);
    core.forceTriggerByFallingEdge = element.attribute(ATTR_FORCE_TRIGGER_FALLING) == "true";
    core.captureInitDataEnabled = element.attribute(ATTR_AO_CAPTURE_INIT_DATA_ENABLED) == "true";
    core.moduleName = element.attribute(ATTR_AO_MODULE_NAME, core.moduleName);
}

void readDataSignals(const XmlElement& element, AoCore& core)
{
    core.signalList = readSignalList(element.firstChildElement(NODE_SIGNAL_LIST));
    for (const SignalItem& item : core.signalList) {
        if (item.captureEnable)
            core.captureSignals += item;
    }
}

void readTrigger(const XmlElement& element, AoCore& core)
{
    TriggerPort* port = core.getTrigger(intAttribute(element, ATTR_INDEX));
    if (!port)
        return;
    const XmlElement list = element.firstChildElement(NODE_SIGNAL_LIST);
    const QList<SignalItem> items = readSignalList(list);
    port->signalList += items;
    if (intAttribute(list, ATTR_AO_CAPTURE_FROM_TR) == 1)
        core.captureSignals += items;
}

void readMatchUnit(const XmlElement& element, AoCore& core)
{
    MatchUnit* unit = core.matchUnit(intAttribute(element, ATTR_INDEX));
    if (!unit)
        return;
    unit->enabled = intAttribute(element, ATTR_MU_ENABLED) != 0;
    unit->matchType = MatchType(intAttribute(element, ATTR_MU_MATCH_TYPE));
    unit->counterEnable = intAttribute(element, ATTR_MU_COUNTER_ENABLE) != 0;
    unit->counterWidth = intAttribute(element, ATTR_MU_COUNTER_WIDTH);
    unit->counter = intAttribute(element, ATTR_MU_COUNTER);
    unit->continuous = intAttribute(element, ATTR_MU_CONTINUOUS) != 0;
    unit->matchFunc = MatchFunc(intAttribute(element, ATTR_MU_FUNC));
    unit->value0 = element.attribute(ATTR_MU_VALUE0);
    unit->value1 = element.attribute(ATTR_MU_VALUE1);
    const bool bound = !element.attribute(ATTR_MU_TRIGGER).isEmpty();
    unit->trigger = bound ? core.getTrigger(intAttribute(element, ATTR_MU_TRIGGER)) : nullptr;
}

QString normalised(QString expression) { return expression.remove("atch[").remove(']').toUpper(); }

QString expressionOf(const QString& text, ExpressionText expressions)
{
    return expressions == ExpressionText::AsWritten ? text : normalised(text);
}

void readExpressions(const XmlElement& element, AoCore& core, ExpressionText expressions)
{
    core.expressionType
        = element.attribute(ATTR_EXP_TYPE) == "Dynamic" ? DynamicExpressions : StaticExpressions;
    core.exImplementation = intAttribute(element, ATTR_EXP_IMPLEMENTATION);
    forEachChild(element, NODE_EXPRESSION, [&](const XmlElement& child) {
        core.expressions += expressionOf(child.text(), expressions);
    });
}

void readEvents(const XmlElement& element, CoreEvents& events)
{
    events.forcedBy = indexesFromText(element.attribute(ATTR_EVENTS_FORCED_BY));
    events.triggerOut = element.attribute(ATTR_EVENTS_TRIGGER_OUT) == "true";
    events.stamps = element.attribute(ATTR_EVENTS_STAMPS) == "true";
}

// Attributes that the kind of storage does not use are skipped.
void readStorage(const XmlElement& element, CoreStorage& storage, ExpressionText expressions)
{
    const QString keep = element.attribute(ATTR_STORAGE_KEEP);
    if (keep == kKeepWords[CoreStorage::Changes]) {
        storage.keep = CoreStorage::Changes;
        storage.watch = watchFromText(element.attribute(ATTR_STORAGE_WATCH));
    } else if (keep == kKeepWords[CoreStorage::When]) {
        storage.keep = CoreStorage::When;
        storage.when = expressionOf(element.attribute(ATTR_STORAGE_WHEN), expressions);
    } else {
        return;
    }
    if (!element.attribute(ATTR_STORAGE_GAP_BITS).isEmpty())
        storage.gapBits = intAttribute(element, ATTR_STORAGE_GAP_BITS);
    storage.limit = element.attribute(ATTR_STORAGE_LIMIT).toLongLong();
}

}

QList<AoCore*> readCores(const XmlElement& root, ExpressionText expressions)
{
    QList<AoCore*> cores;
    forEachChild(root, NODE_AOCORE, [&](const XmlElement& element) {
        auto* core = new AoCore(0);
        cores += core;
        readSettings(element, *core);
        readDataSignals(element, *core);
        forEachChild(element.firstChildElement(NODE_TRIGGER_LIST), NODE_TRIGGER,
            [core](const XmlElement& trigger) { readTrigger(trigger, *core); });
        forEachChild(element.firstChildElement(NODE_MATCH_UNITS), NODE_MATCH_UNIT,
            [core](const XmlElement& unit) { readMatchUnit(unit, *core); });
        readExpressions(element.firstChildElement(NODE_EXPRESSIONS), *core, expressions);
        readEvents(element.firstChildElement(NODE_EVENTS), core->events);
        readStorage(element.firstChildElement(NODE_STORAGE), core->storage, expressions);
    });
    return cores;
}

QList<AOCore_Lite*> readCoresLite(const XmlElement& root)
{
    QList<AOCore_Lite*> cores;
    forEachChild(root, NODE_AOCORE_LITE, [&](const XmlElement& element) {
        auto* core = new AOCore_Lite;
        cores += core;
        core->index = intAttribute(element, ATTR_INDEX);
        core->sampleClock = element.attribute(ATTR_AO_SAMPLE_CLK);
        core->trigType = intAttribute(element, ATTR_AO_TRIG_TYPE);
        core->captureAmount = intAttribute(element, ATTR_AO_CAPTURE_AMOUNT);
        core->implementation = intAttribute(element, ATTR_AO_LITE_IMPLEMENTATION);
        core->inputRegisterEnabled = intAttribute(element, ATTR_AO_INPUT_REGISTER_ENABLED) != 0;
        core->captureInitDataEnabled
            = intAttribute(element, ATTR_AO_CAPTURE_INIT_DATA_ENABLED) != 0;
        core->moduleName = element.attribute(ATTR_AO_MODULE_NAME, core->moduleName);
        core->signalList = readSignalList(element.firstChildElement(NODE_SIGNAL_LIST));
    });
    return cores;
}

int intAttribute(const XmlElement& element, const char* name)
{
    return element.attribute(name).toInt();
}

void report(bool* ok, bool success, QString* error, const QString& message)
{
    if (ok)
        *ok = success;
    if (error && !success)
        *error = message;
}

}
