// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/file_rules.h"

#include "oxautils/config/xml_names.h"
#include "oxautils/model/core_events.h"
#include "oxautils/model/core_storage.h"

#include <algorithm>
#include <functional>

namespace OXA {

namespace {

enum class Times { Once, Many };

struct Child {
    const char* parent; // null: the root
    const char* tag;
    Times times; // Once: further ones are not read
};

// Elements that readers read.
constexpr Child kChildren[] = {
    {nullptr,           NODE_VERSION,      Times::Once},
    {nullptr,           NODE_MODE,         Times::Once},
    {nullptr,           NODE_OXA_ID,       Times::Once},
    {NODE_AOCORE,       NODE_SIGNAL_LIST,  Times::Once},
    {NODE_AOCORE,       NODE_TRIGGER_LIST, Times::Once},
    {NODE_AOCORE,       NODE_MATCH_UNITS,  Times::Once},
    {NODE_AOCORE,       NODE_EXPRESSIONS,  Times::Once},
    {NODE_AOCORE,       NODE_EVENTS,       Times::Once},
    {NODE_AOCORE,       NODE_STORAGE,      Times::Once},
    {NODE_AOCORE_LITE,  NODE_SIGNAL_LIST,  Times::Once},
    {NODE_SIGNAL_LIST,  NODE_SIGNAL,       Times::Many},
    {NODE_SIGNAL_LIST,  NODE_BUS,          Times::Many},
    {NODE_BUS,          NODE_SIGNAL,       Times::Many},
    {NODE_TRIGGER_LIST, NODE_TRIGGER,      Times::Many},
    {NODE_TRIGGER,      NODE_SIGNAL_LIST,  Times::Once},
    {NODE_MATCH_UNITS,  NODE_MATCH_UNIT,   Times::Many},
    {NODE_EXPRESSIONS,  NODE_EXPRESSION,   Times::Many},
};

enum class Holds {
    Text,
    Number,
    LongNumber,
    Indexes,
    TrueOrFalse,
    ExpressionType,
};

struct Attribute {
    const char* element;
    const char* name;
    Holds holds;
    bool required;
};

constexpr Attribute kAttributes[] = {
    {NODE_AOCORE,      ATTR_INDEX,                        Holds::Number,         true },
    {NODE_AOCORE,      ATTR_AO_SAMPLE_CLK,                Holds::Text,           true },
    {NODE_AOCORE,      ATTR_AO_TRIG_TYPE,                 Holds::Number,         true },
    {NODE_AOCORE,      ATTR_AO_STORAGE_DEPTH,             Holds::Number,         true },
    {NODE_AOCORE,      ATTR_AO_CAPTURE_AMOUNT,            Holds::Number,         true },
    {NODE_AOCORE,      ATTR_AO_TRIGGER_POS,               Holds::Number,         true },
    {NODE_AOCORE,      ATTR_AO_WINDOW_NUM,                Holds::Number,         true },
    {NODE_AOCORE,      ATTR_AO_IMPLEMENTATION,            Holds::Number,         false},
    {NODE_AOCORE,      ATTR_FORCE_TRIGGER_FALLING,        Holds::TrueOrFalse,    false},
    {NODE_AOCORE,      ATTR_AO_CAPTURE_INIT_DATA_ENABLED, Holds::TrueOrFalse,    false},
    {NODE_AOCORE_LITE, ATTR_INDEX,                        Holds::Number,         true },
    {NODE_AOCORE_LITE, ATTR_AO_SAMPLE_CLK,                Holds::Text,           true },
    {NODE_AOCORE_LITE, ATTR_AO_TRIG_TYPE,                 Holds::Number,         true },
    {NODE_AOCORE_LITE, ATTR_AO_CAPTURE_AMOUNT,            Holds::Number,         true },
    {NODE_AOCORE_LITE, ATTR_AO_LITE_IMPLEMENTATION,       Holds::Number,         true },
    {NODE_AOCORE_LITE, ATTR_AO_INPUT_REGISTER_ENABLED,    Holds::Number,         true },
    {NODE_AOCORE_LITE, ATTR_AO_CAPTURE_INIT_DATA_ENABLED, Holds::Number,         true },
    {NODE_TRIGGER,     ATTR_INDEX,                        Holds::Number,         true },
    {NODE_MATCH_UNIT,  ATTR_INDEX,                        Holds::Number,         true },
    {NODE_MATCH_UNIT,  ATTR_MU_ENABLED,                   Holds::Number,         true },
    {NODE_MATCH_UNIT,  ATTR_MU_MATCH_TYPE,                Holds::Number,         true },
    {NODE_MATCH_UNIT,  ATTR_MU_COUNTER_ENABLE,            Holds::Number,         true },
    {NODE_MATCH_UNIT,  ATTR_MU_COUNTER_WIDTH,             Holds::Number,         true },
    {NODE_MATCH_UNIT,  ATTR_MU_COUNTER,                   Holds::Number,         true },
    {NODE_MATCH_UNIT,  ATTR_MU_CONTINUOUS,                Holds::Number,         true },
    {NODE_MATCH_UNIT,  ATTR_MU_FUNC,                      Holds::Number,         true },
    {NODE_MATCH_UNIT,  ATTR_MU_VALUE0,                    Holds::Text,           true },
    {NODE_MATCH_UNIT,  ATTR_MU_VALUE1,                    Holds::Text,           true },
    {NODE_MATCH_UNIT,  ATTR_MU_TRIGGER,                   Holds::Number,         false},
    {NODE_EXPRESSIONS, ATTR_EXP_TYPE,                     Holds::ExpressionType, false},
    {NODE_EXPRESSIONS, ATTR_EXP_IMPLEMENTATION,           Holds::Number,         false},
    {NODE_EVENTS,      ATTR_EVENTS_FORCED_BY,             Holds::Indexes,        false},
    {NODE_EVENTS,      ATTR_EVENTS_TRIGGER_OUT,           Holds::TrueOrFalse,    false},
    {NODE_EVENTS,      ATTR_EVENTS_STAMPS,                Holds::TrueOrFalse,    false},
    {NODE_STORAGE,     ATTR_STORAGE_KEEP,                 Holds::Text,           true },
    {NODE_STORAGE,     ATTR_STORAGE_GAP_BITS,             Holds::Number,         false},
    {NODE_STORAGE,     ATTR_STORAGE_LIMIT,                Holds::LongNumber,     false},
    {NODE_SIGNAL_LIST, ATTR_AO_CAPTURE_FROM_TR,           Holds::Number,         false},
    {NODE_SIGNAL,      ATTR_SIGNAL_CAPTURE_ENABLE,        Holds::TrueOrFalse,    false},
    {NODE_BUS,         ATTR_SIGNAL_CAPTURE_ENABLE,        Holds::TrueOrFalse,    false},
};

using Visit = std::function<void(const XmlElement&, const Attribute&)>;

/// Visits every attribute that an element in a core has or should have; the depth of a file is
/// limited.
void visitAttributes(const XmlElement& element, const Visit& visit)
{
    const QString tag = element.tagName();
    for (const Attribute& attribute : kAttributes) {
        if (tag == attribute.element)
            visit(element, attribute);
    }
    for (XmlElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement())
        visitAttributes(child, visit);
}

void visitAttributes(const ConfigFile& file, const Visit& visit)
{
    for (const XmlElement& core : file.coreElements())
        visitAttributes(core, visit);
}

/// Visits the element of each core that says which samples are stored, with its "keep".
template <typename VisitStorage>
void visitStorages(const ConfigFile& file, const VisitStorage& visitStorage)
{
    for (const XmlElement& core : file.coreElements()) {
        const XmlElement storage = core.firstChildElement(NODE_STORAGE);
        if (!file.lite && !storage.isNull())
            visitStorage(storage, storage.attribute(ATTR_STORAGE_KEEP));
    }
}

/// How often readers read `tag` below `parent`; null when they do not.
const Times* timesRead(const QString& parent, const QString& tag)
{
    for (const Child& child : kChildren) {
        const bool here = child.parent ? parent == child.parent : parent.isNull();
        if (here && tag == child.tag)
            return &child.times;
    }
    return nullptr;
}

/// `parentTag` is null for the root, whose name is not checked.
void findUnreadBelow(
    const ConfigFile& file, const XmlElement& parent, const QString& parentTag, Findings& findings)
{
    static constexpr Times kMany = Times::Many;
    const char* core = file.lite ? NODE_AOCORE_LITE : NODE_AOCORE;
    QStringList seen;
    for (XmlElement child = parent.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString tag = child.tagName();
        const Times* times = parentTag.isNull() && tag == core ? &kMany : timesRead(parentTag, tag);
        if (!times) {
            findings.add(file.placeOf(child), QString("nothing reads <%1> here").arg(tag));
        } else if (*times == Times::Once && seen.contains(tag)) {
            findings.add(file.placeOf(child), QString("only the first <%1> is read").arg(tag));
        } else {
            if (*times == Times::Once)
                seen += tag;
            findUnreadBelow(file, child, tag, findings);
        }
    }
}

/// Bits of the numbers of such an attribute; 0 for other kinds.
int numberBits(Holds holds)
{
    return holds == Holds::Number ? 32 : holds == Holds::LongNumber ? 64 : 0;
}

bool isNumber(const QString& text, int bits)
{
    bool ok = false;
    const qint64 number = text.toLongLong(&ok);
    return ok && (bits == 64 || number == qint32(number));
}

/// What is wrong with the numbers that such an attribute should have; empty when nothing is.
QString numberComplaint(const QString& name, const QString& value, Holds holds)
{
    const int bits = numberBits(holds);
    if (bits > 0 && !isNumber(value, bits))
        return QString("\"%1\" is \"%2\", which is not an integer of %3 bits and reads as 0")
            .arg(name, value, QString::number(bits));
    QStringList unreadable;
    if (holds == Holds::Indexes)
        indexesFromText(value, &unreadable);
    return unreadable.isEmpty()
        ? QString()
        : QString("\"%1\" is \"%2\"; \"%3\" is not an integer of 32 bits and is left out")
              .arg(name, value, unreadable.first());
}

/// The allowed words of such an attribute; empty for other kinds.
QStringList wordsOf(Holds holds)
{
    if (holds == Holds::TrueOrFalse)
        return {"true", "false"};
    if (holds == Holds::ExpressionType)
        return {"Static", "Dynamic"};
    return {};
}

}

void findUnreadElements(const ConfigFile& file, Findings& findings)
{
    if (file.readable())
        findUnreadBelow(file, file.root, {}, findings);
}

void findMissingAttributes(const ConfigFile& file, Findings& findings)
{
    visitAttributes(file, [&](const XmlElement& element, const Attribute& attribute) {
        if (attribute.required && !element.hasAttribute(attribute.name))
            findings.add(file.placeOf(element),
                QString("<%1> has no attribute \"%2\"").arg(attribute.element, attribute.name));
    });
}

void findBadNumbers(const ConfigFile& file, Findings& findings)
{
    visitAttributes(file, [&](const XmlElement& element, const Attribute& attribute) {
        const QString value = element.attribute(attribute.name);
        const bool absent
            = value.isEmpty() && (!attribute.required || !element.hasAttribute(attribute.name));
        const QString complaint = numberComplaint(attribute.name, value, attribute.holds);
        if (!absent && !complaint.isEmpty())
            findings.add(file.placeOf(element), complaint);
    });
}

void findStorageKinds(const ConfigFile& file, Findings& findings)
{
    visitStorages(file, [&](const XmlElement& storage, const QString& keep) {
        const auto* end = std::end(kKeepWords);
        if (storage.hasAttribute(ATTR_STORAGE_KEEP) && std::find(kKeepWords, end, keep) == end)
            findings.add(file.placeOf(storage),
                QString("\"%1\" is \"%2\", neither \"%3\" nor \"%4\", so all samples are stored")
                    .arg(ATTR_STORAGE_KEEP, keep, kKeepWords[CoreStorage::Changes],
                        kKeepWords[CoreStorage::When]));
    });
}

void findIdleStorage(const ConfigFile& file, Findings& findings)
{
    struct Part {
        const char* name;
        CoreStorage::Keep keep; // that has it
    };
    static constexpr Part kParts[] = {
        {ATTR_STORAGE_WATCH, CoreStorage::Changes},
        {ATTR_STORAGE_WHEN,  CoreStorage::When   },
    };
    visitStorages(file, [&](const XmlElement& storage, const QString& keep) {
        for (const Part& part : kParts) {
            if (keep != kKeepWords[part.keep] && !storage.attribute(part.name).isEmpty())
                findings.add(file.placeOf(storage),
                    QString("\"%1\" is ignored, because \"%2\" is \"%3\"")
                        .arg(part.name, ATTR_STORAGE_KEEP, keep));
        }
    });
}

void findBadWords(const ConfigFile& file, Findings& findings)
{
    visitAttributes(file, [&](const XmlElement& element, const Attribute& attribute) {
        const QStringList words = wordsOf(attribute.holds);
        const QString value = element.attribute(attribute.name);
        if (!words.isEmpty() && !value.isEmpty() && !words.contains(value))
            findings.add(file.placeOf(element),
                QString("\"%1\" is \"%2\", neither \"%3\" nor \"%4\"")
                    .arg(attribute.name, value, words.first(), words.last()));
    });
}

}
