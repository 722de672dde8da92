// SPDX-License-Identifier: Apache-2.0
#include "random_configuration.h"

#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"
#include "support/signals.h"

#include <cmath>
#include <memory>
#include <random>
#include <vector>

namespace {

// Large enough for every configuration: with and without shadow SRAM, blocks of 18 and 9 kbit, and
// all variants of the control core.
constexpr const char* kParts[][2] = {
    {"QX2A-55LV-BGA324-C8",  "QX2A-55" },
    {"QX2A-18LV-LQFP144-C8", "QX2A-18" },
    {"QX3A-50ALV-BGA324-C8", "QX3A-50A"},
    {"QX5A-138LV-BGA484-C2", "QX5A-138"},
    {"QX5A-25LV-BGA256-C2",  "QX5A-25A"},
};

class Random {
public:
    Random(unsigned seed, int number)
        : m_engine(seed * 100003 + unsigned(number))
    {
    }

    /// A number from `low` to `high`.
    int between(int low, int high) { return low + int(m_engine() % unsigned(high - low + 1)); }
    bool oneIn(int count) { return between(1, count) == 1; }

    /// The same, preferring small numbers: the same probability for each factor of two.
    int size(int low, int high)
    {
        const double exponent = between(0, 1 << 20) / double(1 << 20);
        return int(low * std::pow(double(high + 1) / low, exponent));
    }

private:
    std::mt19937 m_engine;
};

/// Ports with their own signals, or with captured ones.
void addPorts(Random& random, OXA::AoCore& core)
{
    const int ports = random.oneIn(6) ? random.between(5, 16) : random.between(1, 4);
    for (int i = 0; i < ports; ++i) {
        const int width = random.size(1, 64);
        OXA::TriggerPort& port = *core.triggers[i];
        const int captured = core.captureSignals.size();
        if (random.oneIn(2) && width <= captured)
            port.signalList = core.captureSignals.mid(random.between(0, captured - width), width);
        else
            port.signalList = signalsOf(QString("t%1_%2").arg(core.index).arg(i), width);
    }
}

void addUnits(Random& random, OXA::AoCore& core)
{
    const QList<OXA::TriggerPort*> ports = core.availableTriggers();
    const int units = random.oneIn(5) ? random.between(7, 16) : random.between(1, 6);
    for (int i = 0; i < units; ++i) {
        OXA::MatchUnit& unit = *core.matchUnits[i];
        unit.enabled = true;
        unit.trigger = ports.at(random.between(0, ports.size() - 1));
        unit.matchType = OXA::MatchType(random.between(0, 5));
        unit.value0 = QString(unit.trigger->signalList.size(), '1');
        unit.counterEnable = random.oneIn(3);
        unit.counterWidth = random.between(1, 32);
    }
}

/// An expression that names each unit at most once, like those of users.
QString expressionOf(Random& random, int units, bool all)
{
    QString text;
    int open = 0;
    for (int unit = 0; unit < units; ++unit) {
        if (!all && random.oneIn(2) && !(text.isEmpty() && unit == units - 1))
            continue;
        if (!text.isEmpty())
            text += "&|^"[random.between(0, 2)];
        if (!random.between(0, 3)) {
            text += '(';
            ++open;
        }
        text += random.oneIn(4) ? QString("(!M%1)").arg(unit) : QString("M%1").arg(unit);
        if (open > 0 && random.oneIn(2)) {
            text += ')';
            --open;
        }
    }
    return text + QString(open, ')');
}

void addExpressions(Random& random, OXA::AoCore& core)
{
    const int units = core.enabledMatchUnits().size();
    const int levels = random.oneIn(4) ? random.between(4, 16) : random.between(0, 3);
    core.expressionType = units <= 10 && random.oneIn(2);
    core.exImplementation = random.between(0, 2);
    if (core.exImplementation != 0 && units > 7)
        core.exImplementation = 0;
    for (int level = 0; level < levels; ++level)
        core.expressions += expressionOf(random, units, core.expressionType == 1);
}

/// A third of the cores stores only some samples.
void setStorage(Random& random, OXA::AoCore& core)
{
    OXA::CoreStorage& storage = core.storage;
    if (!random.oneIn(3))
        return;
    const bool changes = random.oneIn(2);
    storage.keep = changes ? OXA::CoreStorage::Changes : OXA::CoreStorage::When;
    storage.gapBits = changes || random.oneIn(2) ? random.size(2, 32) : 0;
    storage.limit = random.oneIn(3) ? random.size(2, 100'000) : 0;
    const int units = core.enabledMatchUnits().size();
    if (!changes)
        storage.when = expressionOf(random, units, core.expressionType == 1);
}

/// One of ten cores has events of each kind.
void setEvents(Random& random, OXA::AoCore& core, int cores)
{
    core.events.triggerOut = random.oneIn(10);
    core.events.stamps = random.oneIn(10);
    for (int index = 0; index < cores && cores > 1; ++index) {
        if (index != core.index && random.oneIn(10))
            core.events.forcedBy += index;
    }
}

/// Capture memories of each kind, in sizes usual for the kind.
void setMemory(Random& random, OXA::AoCore& core)
{
    core.implementation = random.oneIn(2) ? 0 : random.between(1, 2);
    const int width = core.captureSignals.size() + 1 + core.storage.extraBits();
    int bits = 16 * 1024 * 8;
    if (core.implementation == 1)
        bits = 2048;
    else if (core.implementation == 2)
        bits = 8192;
    core.storageDepth = 16;
    int doublings = random.between(0, 12);
    while (doublings-- > 0 && core.storageDepth * 2 * width <= bits)
        core.storageDepth *= 2;
    core.windowNum = random.oneIn(2) ? 1 : 1 << random.between(1, 3);
    core.captureAmount = core.storageDepth / core.windowNum;
    if (core.captureAmount < 8) {
        core.windowNum = 1;
        core.captureAmount = core.storageDepth;
    }
}

std::unique_ptr<OXA::AoCore> standardCore(Random& random, int index, int cores)
{
    auto core = std::make_unique<OXA::AoCore>(index);
    core->sampleClock = QString("clk%1").arg(index);
    core->trigType = random.between(0, 1);
    core->captureInitDataEnabled = random.oneIn(4);
    core->captureSignals = core->signalList
        = signalsOf(QString("d%1").arg(index), random.size(1, 160));
    addPorts(random, *core);
    addUnits(random, *core);
    addExpressions(random, *core);
    setStorage(random, *core);
    setEvents(random, *core, cores);
    setMemory(random, *core);
    return core;
}

std::unique_ptr<OXA::AOCore_Lite> liteCore(Random& random)
{
    auto core = std::make_unique<OXA::AOCore_Lite>();
    core->sampleClock = "clk";
    core->inputRegisterEnabled = random.oneIn(2);
    core->captureInitDataEnabled = random.oneIn(4);
    core->signalList = signalsOf("d", random.size(1, 160));
    core->implementation = random.oneIn(2) ? 0 : 2;
    const int most = (core->implementation == 0 ? 16 * 8192 : 8192) / core->signalList.size();
    core->captureAmount = random.size(16, std::max(16, std::min(most, 8192)));
    return core;
}

}

Part writeRandomConfiguration(unsigned seed, int number, const QString& path)
{
    Random random(seed, number);
    const char* const(&names)[2] = kParts[random.between(0, int(std::size(kParts)) - 1)];
    const Part part {names[0], names[1]};
    if (random.oneIn(6)) {
        const std::unique_ptr<OXA::AOCore_Lite> core = liteCore(random);
        const QList<OXA::AOCore_Lite*> list {core.get()};
        OXA::writeOXAConfigToXml_Lite(list, path);
        return part;
    }
    std::vector<std::unique_ptr<OXA::AoCore>> cores;
    const int count = random.oneIn(4) ? random.between(2, 3) : 1;
    for (int index = 0; index < count; ++index)
        cores.push_back(standardCore(random, index, count));
    QList<OXA::AoCore*> list;
    for (const auto& core : cores)
        list += core.get();
    OXA::writeOXAConfigToXml(list, path);
    return part;
}
