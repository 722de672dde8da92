// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/checksum.h"

#include "oxautils/config/config_reader.h"
#include "oxautils/config/config_writer.h"
#include "oxautils/config/crc16.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/xml_document.h"
#include "oxautils/config/xml_names.h"
#include "oxautils/model/limits.h"

namespace OXA {

namespace {

constexpr unsigned short kPolynomial = 0x8005;
constexpr int kDigits = 16;

QByteArray latin1(const QString& text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar c : text)
        bytes += c.unicode() < 0x100 ? char(c.unicode()) : '?';
    return bytes;
}

/// Collects the input of a checksum.
class ChecksumText {
public:
    void add(int number) { m_text += QByteArray::number(unsigned(number), 16); }

    // The format's rule: a text counts as one hexadecimal number when that fits a signed 32-bit
    // integer, and as 0 otherwise.
    void add(const QString& text)
    {
        constexpr int kMostCharacters = 4;
        const bool fits = text.size() <= kMostCharacters;
        add(fits ? latin1(text).toHex().toInt(nullptr, 16) : 0);
    }

    enum class BusName { Counts, DoesNot };

    void add(const QList<SignalItem>& items, BusName busName)
    {
        for (const SignalItem& item : items) {
            if (!item.isBus() || busName == BusName::Counts)
                add(item.name);
            for (const SignalItem& bit : item.subItems)
                add(bit.name);
        }
    }

    QString checksum() const
    {
        CRC16 crc(kPolynomial);
        crc.initTableCRC16();
        const unsigned value
            = crc.getCRC16_Byte(std::vector<unsigned char>(m_text.begin(), m_text.end()));
        return QString::number(value, 2).rightJustified(kDigits, '0');
    }

private:
    QByteArray m_text;
};

void addUnit(ChecksumText& text, const MatchUnit& unit)
{
    if (!unit.enabled || !unit.trigger)
        return;
    text.add(unit.index);
    text.add(unit.trigger->index);
    text.add(unit.matchType);
    text.add(int(unit.counterEnable));
    text.add(unit.counterWidth);
}

void addExpressions(ChecksumText& text, const AoCore& core)
{
    if (core.expressionType == DynamicExpressions) {
        text.add(QString("Dynamic"));
        text.add(core.expressions.size());
        return;
    }
    text.add(QString("Static"));
    for (const QString& expression : core.expressions)
        text.add(expression);
}

void addEvents(ChecksumText& text, const CoreEvents& events)
{
    if (events.isDefault())
        return;
    for (const int index : events.forcedBy)
        text.add(index);
    text.add(int(events.triggerOut));
    text.add(int(events.stamps));
}

void addStorage(ChecksumText& text, const AoCore& core)
{
    const CoreStorage& storage = core.storage;
    if (storage.isDefault())
        return;
    text.add(storage.keep);
    text.add(storage.gapBits);
    text.add(int(storage.limit));
    if (storage.keep == CoreStorage::Changes) {
        for (const QString& name : storage.watch)
            text.add(name);
    } else if (core.expressionType != DynamicExpressions) {
        text.add(storage.when);
    }
}

void addCore(ChecksumText& text, const AoCore& core)
{
    text.add(core.index);
    text.add(core.sampleClock);
    text.add(core.trigType);
    text.add(core.storageDepth);
    text.add(core.signalList, ChecksumText::BusName::DoesNot);
    for (const TriggerPort* port : core.availableTriggers()) {
        text.add(port->index);
        text.add(port->signalList, ChecksumText::BusName::Counts);
    }
    for (const MatchUnit* unit : core.matchUnits)
        addUnit(text, *unit);
    addExpressions(text, core);
    addEvents(text, core.events);
    addStorage(text, core);
}

void addCore(ChecksumText& text, const AOCore_Lite& core)
{
    text.add(core.index);
    text.add(core.sampleClock);
    text.add(core.trigType);
    text.add(core.captureAmount);
    text.add(core.implementation);
    text.add(int(core.inputRegisterEnabled));
    text.add(int(core.captureInitDataEnabled));
    text.add(core.moduleName);
    text.add(core.signalList, ChecksumText::BusName::DoesNot);
}

template <typename Core> QString checksumOfCores(const char* mode, const QList<Core*>& cores)
{
    ChecksumText text;
    text.add(QString(mode));
    for (const Core* core : cores)
        addCore(text, *core);
    return text.checksum();
}

template <typename Core> QString checksumAndDelete(const QList<Core*>& cores)
{
    QString checksum = checksumOf(cores);
    qDeleteAll(cores);
    return checksum;
}

}

QString checksumOf(const QList<AoCore*>& cores) { return checksumOfCores(kModeStandard, cores); }

QString checksumOf(const QList<AOCore_Lite*>& cores) { return checksumOfCores(kModeLite, cores); }

QString computeOXACRCForXml(const QString& path)
{
    XmlDocument document;
    if (!loadXml(path, document))
        return {};
    const XmlElement root = document.documentElement();
    if (root.firstChildElement(NODE_MODE).text() == kModeLite)
        return checksumAndDelete(readCoresLite(root));
    return checksumAndDelete(readCores(root, ExpressionText::AsWritten));
}

}
