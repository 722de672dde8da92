// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/ao_core.h"

#include "oxautils/model/limits.h"

#include <QDebug>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kLeastShiftWidth = 16;

template <typename T> T* withIndex(const QList<T*>& list, int index)
{
    const auto found = std::find_if(
        list.begin(), list.end(), [index](const T* item) { return item->index == index; });
    return found == list.end() ? nullptr : *found;
}

}

unsigned fixedWindowNum(unsigned n)
{
    if ((n & (n - 1)) == 0)
        return n;
    int significantBits = 0;
    for (unsigned rest = n; rest; rest >>= 1)
        ++significantBits;
    return unsigned(quint64(1) << significantBits);
}

AoCore::AoCore(int index)
    : index(index)
{
    for (int i = 0; i < kUnits; ++i) {
        auto* port = new TriggerPort;
        port->core = this;
        port->index = i;
        triggers += port;

        auto* unit = new MatchUnit;
        unit->core = this;
        unit->index = i;
        matchUnits += unit;
    }
}

AoCore::~AoCore()
{
    qDeleteAll(triggers);
    qDeleteAll(matchUnits);
}

TriggerPort* AoCore::getTrigger(int i) const { return withIndex(triggers, i); }

MatchUnit* AoCore::matchUnit(int i) const { return withIndex(matchUnits, i); }

QList<TriggerPort*> AoCore::availableTriggers() const
{
    QList<TriggerPort*> available;
    for (TriggerPort* port : triggers) {
        if (!port->signalList.isEmpty())
            available += port;
    }
    return available;
}

QList<MatchUnit*> AoCore::enabledMatchUnits() const
{
    QList<MatchUnit*> enabled;
    for (MatchUnit* unit : matchUnits) {
        if (unit->enabled)
            enabled += unit;
    }
    return enabled;
}

QList<QString> AoCore::dataSignals() const { return flattenedNames(captureSignals); }

SignalItem AoCore::signalItemAt(int i) const
{
    if (i < 0)
        return {};
    int before = 0;
    for (const SignalItem& item : captureSignals) {
        if (i < before + item.bitCount())
            return item.isBus() ? item.subItems.at(i - before) : item;
        before += item.bitCount();
    }
    return {};
}

int AoCore::dataOutShiftWidth() const
{
    int width = std::max(kLeastShiftWidth, int(dataSignals().size()) + 1);
    for (const MatchUnit* unit : matchUnits) {
        if (unit->enabled && unit->counterEnable)
            width = std::max(width, unit->counterWidth);
    }
    for (const TriggerPort* port : triggers)
        width = std::max(width, int(port->singleSignals().size()));
    return width;
}

QDebug operator<<(QDebug debug, const AoCore& core)
{
    const QDebugStateSaver saver(debug);
    const QString frame = QString(40, '=') + '\n';
    const QString line = QString(40, '-') + '\n';
    debug.noquote().nospace() << frame << "AO Core\n"
                              << "Sample Clock: " << core.sampleClock << '\n'
                              << "Trigger Clk Type: " << core.trigType << '\n'
                              << "Stroage Depth: " << core.storageDepth
                              << '\n' // the format's spelling
                              << "Window Num: " << core.windowNum << '\n'
                              << "Capture Amount: " << core.captureAmount << '\n'
                              << "Trigger Pos: " << core.triggerPos << '\n'
                              << "Data Signals: " << QStringList(core.dataSignals()).join(", ")
                              << '\n'
                              << "Trigger Expressions: " << core.expressions.join(", ") << '\n'
                              << "force trigger by falling edge: "
                              << (core.forceTriggerByFallingEdge ? "true" : "false") << '\n';
    debug << line;
    for (const TriggerPort* port : core.availableTriggers())
        debug << *port;
    debug << line;
    for (const MatchUnit* unit : core.enabledMatchUnits())
        debug << *unit;
    debug << line << frame;
    return debug;
}

}
