// SPDX-License-Identifier: Apache-2.0
#include "wave_events.h"

#include <algorithm>
#include <functional>

using namespace OXA_CAPTURE;

namespace {

constexpr quint32 kNoUnit = 0;
constexpr quint32 kAllUnits = ~quint32(0);

OXA::SignalItem named(const QString& name)
{
    OXA::SignalItem item;
    item.name = name;
    return item;
}

quint32 maskOf(const UnitSetup& unit) { return quint32(1) << unit.index; }

quint32 maskOf(const TriggerTable& table)
{
    quint32 mask = 0;
    for (const int unit : table.units)
        mask |= quint32(1) << unit;
    return mask;
}

/// Collects events of each sample as bits of a table.
class EventTable {
public:
    void addUnit(const UnitSetup& unit);
    void addExpression(int level, const QString& text, const TriggerTable& table);
    void addLevel(int levels);
    void addTrigger();

    /// The units `unknown` have no known value.
    void append(const SampleEvents& events, quint32 unknown);

    WaveRows rows() const { return signalRows(m_items, m_table, 0, true); }

private:
    using Probe = std::function<bool(const SampleEvents& events)>;

    /// An event. It is unknown when one of `units` is.
    struct Line {
        quint32 units;
        Probe probe;
    };

    void add(const QString& name, quint32 units, Probe probe)
    {
        m_items += named(name);
        m_lines.push_back({units, std::move(probe)});
    }

    QList<OXA::SignalItem> m_items;
    std::vector<Line> m_lines;
    std::shared_ptr<SampleTable> m_table;
};

void EventTable::addUnit(const UnitSetup& unit)
{
    const quint32 mask = maskOf(unit);
    const QString name = QString("M%1").arg(unit.index);
    add(name, mask, [mask](const SampleEvents& events) { return events.outputs & mask; });
    if (unit.counter > 0)
        add(name + " without counter", mask,
            [mask](const SampleEvents& events) { return events.matches & mask; });
}

void EventTable::addExpression(int level, const QString& text, const TriggerTable& table)
{
    const quint32 units = maskOf(table);
    add(QString("%1: %2").arg(QString::number(level), text), units ? units : kAllUnits,
        [table](const SampleEvents& events) { return table.at(events.outputs); });
}

void EventTable::addLevel(int levels)
{
    OXA::SignalItem bus = named("level");
    int bits = 1;
    while (levels >> bits)
        ++bits;
    for (int bit = bits - 1; bit >= 0; --bit) {
        bus.subItems += named(QString("level[%1]").arg(bit));
        m_lines.push_back(
            {kAllUnits, [bit](const SampleEvents& events) { return events.reached >> bit & 1; }});
    }
    m_items += bus;
}

void EventTable::addTrigger()
{
    add("trigger", kNoUnit, [](const SampleEvents& events) { return events.trigger; });
}

void EventTable::append(const SampleEvents& events, quint32 unknown)
{
    if (!m_table)
        m_table = std::make_shared<SampleTable>(SampleLayout({int(m_lines.size())}));
    const SampleLayout& layout = m_table->layout();
    std::vector<quint64> row(size_t(layout.rowWords()));
    for (size_t i = 0; i < m_lines.size(); ++i) {
        const Line& line = m_lines[i];
        setBit(layout, row, 0, int(i),
            line.units & unknown     ? Logic::Unknown
                : line.probe(events) ? Logic::One
                                     : Logic::Zero);
    }
    m_table->append(row.data());
}

/// The units of a core whose signals are all captured, with these as inputs.
class CapturedUnits {
public:
    CapturedUnits(const OXA::AoCore& core, const QStringList& data);

    void addTo(EventTable& table, const QStringList& expressions) const;
    void run(const SampleTable& data, const WaveWindow& window, EventTable& table) const;

private:
    std::vector<quint64> portRow(const SampleTable& data, qint64 sample) const;

    TriggerSetup m_setup;
    SampleLayout m_layout;
    std::vector<std::vector<int>> m_places; // positions of the ports' bits in the data; -1: none
    std::vector<TriggerTable> m_levels;
    quint32 m_known = 0; // units
    quint32 m_withEdges = 0;
};

CapturedUnits::CapturedUnits(const OXA::AoCore& core, const QStringList& data)
{
    const SampleRequest request = sampleRequest(core);
    std::vector<int> widths;
    for (const QStringList& field : request.fields) {
        m_places.emplace_back();
        for (const QString& name : field)
            m_places.back().push_back(data.indexOf(name));
        widths.push_back(field.size());
    }
    m_layout = SampleLayout(widths);
    Messages ignored; // about settings not used here
    triggerSetup(core, {}, m_setup, ignored);
    auto& units = m_setup.units;
    const auto isBlind = [this](const UnitSetup& unit) {
        const std::vector<int>& places = m_places[size_t(unit.field)];
        return unit.counter > 0 || std::count(places.begin(), places.end(), -1) > 0;
    };
    units.erase(std::remove_if(units.begin(), units.end(), isBlind), units.end());
    for (const UnitSetup& unit : units) {
        m_known |= maskOf(unit);
        if (std::any_of(unit.m2.begin(), unit.m2.end(), [](quint64 bits) { return bits != 0; }))
            m_withEdges |= maskOf(unit);
    }
    m_levels.swap(m_setup.levels); // without them the model stays armed
}

void CapturedUnits::addTo(EventTable& table, const QStringList& expressions) const
{
    for (const UnitSetup& unit : m_setup.units)
        table.addUnit(unit);
    for (int level = 0; level < int(m_levels.size()); ++level) {
        const TriggerTable& logic = m_levels[size_t(level)];
        if (!logic.rows.empty() && (maskOf(logic) & ~m_known) == 0)
            table.addExpression(level, expressions.value(level), logic);
    }
    table.addTrigger();
}

std::vector<quint64> CapturedUnits::portRow(const SampleTable& data, qint64 sample) const
{
    std::vector<quint64> row(size_t(m_layout.rowWords()));
    for (int field = 1; field < m_layout.fieldCount(); ++field) {
        const std::vector<int>& places = m_places[size_t(field)];
        for (int bit = 0; bit < int(places.size()); ++bit) {
            const int place = places[size_t(bit)];
            setBit(
                m_layout, row, field, bit, place < 0 ? Logic::Unknown : data.bit(sample, 0, place));
        }
    }
    return row;
}

void CapturedUnits::run(const SampleTable& data, const WaveWindow& window, EventTable& table) const
{
    TriggerModel model(m_setup, m_layout);
    for (qint64 sample = window.first; sample < window.first + window.samples; ++sample) {
        SampleEvents events = model.take(portRow(data, sample).data());
        events.trigger = sample == window.trigger;
        // Samples before the window are unknown.
        table.append(events, sample == window.first ? m_withEdges : kNoUnit);
    }
}

}

WaveRows eventRows(
    const OXA::AoCore& core, const TriggerSetup& setup, const std::vector<SampleEvents>& events)
{
    if (events.empty())
        return {};
    EventTable table;
    for (const UnitSetup& unit : setup.units)
        table.addUnit(unit);
    const int levels = int(setup.levels.size());
    for (int level = 0; level < levels; ++level)
        table.addExpression(level, core.expressions.value(level), setup.levels[size_t(level)]);
    if (levels > 1)
        table.addLevel(levels);
    table.addTrigger();
    for (const SampleEvents& event : events)
        table.append(event, event.armed ? kNoUnit : kAllUnits);
    return table.rows();
}

WaveRows capturedEventRows(const OXA::AoCore& core, const CapturedCore& captured,
    const SampleTable& data, const std::vector<WaveWindow>& windows)
{
    if (data.size() == 0)
        return {};
    const CapturedUnits units(core, OXA::flattenedNames(captured.items));
    EventTable table;
    units.addTo(table, core.expressions);
    for (const WaveWindow& window : windows)
        units.run(data, window, table);
    return table.rows();
}
