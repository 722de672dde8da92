// SPDX-License-Identifier: Apache-2.0
#include "wave_layout.h"

#include "wave_colors.h"

#include <QCoreApplication>
#include <QJsonObject>

#include <algorithm>
#include <functional>
#include <tuple>

namespace {

// In the order of WaveEntry::Kind; members that have the name of an entry.
constexpr const char* kKinds[] = {"signal", "event", "group", "divider"};

struct ShapeFacts {
    const char* key;
    const char* name;
};

// In the order of WaveShape.
constexpr ShapeFacts kShapes[] = {
    {"digits", QT_TRANSLATE_NOOP("WaveView", "Digits")      },
    {"steps",  QT_TRANSLATE_NOOP("WaveView", "Analog steps")},
    {"lines",  QT_TRANSLATE_NOOP("WaveView", "Analog lines")},
};
static_assert(std::size(kShapes) == kWaveShapes);

using Names = QSet<std::pair<int, QString>>;

void collect(const WaveEntries& entries, Names& names)
{
    for (const WaveEntry& entry : entries) {
        if (entry.isWave())
            names.insert({entry.kind, entry.name});
        collect(entry.rows, names);
    }
}

/// The place behind the entry of that kind and name, or behind its group; the beginning without it.
WaveEntries::iterator behind(WaveEntries& entries, const WaveEntry& wanted)
{
    const auto is = [&](const WaveEntry& entry) {
        return entry.kind == wanted.kind && entry.name == wanted.name;
    };
    if (!entries.empty() && is(entries.back()))
        return entries.end();
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const WaveEntry& entry) {
        return is(entry) || std::any_of(entry.rows.begin(), entry.rows.end(), is);
    });
    return found == entries.end() ? entries.begin() : found + 1;
}

/// The rows of the group of that name, which is added at the end when there is none; without a
/// name, `entries`.
WaveEntries& rowsOf(WaveEntries& entries, const QString& group)
{
    if (group.isEmpty())
        return entries;
    auto found = std::find_if(entries.begin(), entries.end(), [&](const WaveEntry& entry) {
        return entry.kind == WaveEntry::Group && entry.name == group;
    });
    if (found == entries.end()) {
        found = entries.insert(entries.end(), WaveEntry());
        found->kind = WaveEntry::Group;
        found->name = group;
        found->expanded = true;
    }
    return found->rows;
}

using Chosen = QSet<const WaveEntry*>;

Chosen withoutGroups(const WaveEntries& entries, Chosen chosen)
{
    for (const WaveEntry& entry : entries) {
        if (entry.kind == WaveEntry::Group)
            chosen.remove(&entry);
    }
    return chosen;
}

/// The chosen entries, in groups too.
void choose(const WaveEntries& entries, const Chosen& chosen, WaveEntries& result)
{
    for (const WaveEntry& entry : entries) {
        if (chosen.contains(&entry))
            result.push_back(entry);
        else
            choose(entry.rows, chosen, result);
    }
}

struct Arrangement {
    Chosen leaving;
    WaveEntries coming;
    WavePlace place; ///< of those that come
};

/// The entries `from`, which are the rows of `group`, or all without it.
WaveEntries arranged(
    const WaveEntries& from, const WaveEntry* group, const Arrangement& arrangement)
{
    WaveEntries result;
    const auto add = [&] {
        result.insert(result.end(), arrangement.coming.begin(), arrangement.coming.end());
    };
    for (const WaveEntry& entry : from) {
        if (&entry == arrangement.place.before)
            add();
        if (arrangement.leaving.contains(&entry))
            continue;
        result.push_back(entry);
        result.back().rows = arranged(entry.rows, &entry, arrangement);
    }
    if (!arrangement.place.before && group == arrangement.place.group)
        add();
    return result;
}

QJsonObject toJson(const WaveEntry& entry)
{
    QJsonObject object {
        {kKinds[entry.kind], entry.name}
    };
    if (entry.color != 0)
        object["color"] = rowColorKey(entry.color);
    if (entry.height != 1)
        object["height"] = entry.height;
    if (entry.radix)
        object["radix"] = radixKey(*entry.radix);
    if (entry.shape != WaveShape::Digits)
        object["shape"] = kShapes[int(entry.shape)].key;
    if (entry.hidden)
        object["hidden"] = true;
    if (entry.expanded)
        object["expanded"] = true;
    if (entry.kind == WaveEntry::Group)
        object["rows"] = toJson(entry.rows);
    return object;
}

std::optional<WaveEntry> entryFrom(const QJsonObject& object)
{
    WaveEntry entry;
    const auto* kind = std::find_if(std::begin(kKinds), std::end(kKinds),
        [&](const char* key) { return object[key].isString(); });
    if (kind == std::end(kKinds))
        return {};
    entry.kind = WaveEntry::Kind(kind - kKinds);
    entry.name = object[*kind].toString();
    entry.color = rowColorOf(object["color"].toString());
    entry.height = qBound(1, object["height"].toInt(1), kHighestRow);
    entry.radix = radixOf(object["radix"].toString());
    for (int i = 0; i < kWaveShapes; ++i) {
        if (object["shape"] == kShapes[i].key)
            entry.shape = WaveShape(i);
    }
    entry.hidden = object["hidden"].toBool();
    entry.expanded = object["expanded"].toBool();
    return entry;
}

// A second entry of a row is dropped, and so are groups in groups.
WaveEntries entriesFrom(const QJsonArray& array, bool inGroup, Names& seen)
{
    WaveEntries entries;
    for (const QJsonValue& value : array) {
        std::optional<WaveEntry> entry = entryFrom(value.toObject());
        if (!entry || (inGroup && entry->kind == WaveEntry::Group))
            continue;
        if (entry->isWave() && seen.contains({entry->kind, entry->name}))
            continue;
        seen.insert({entry->kind, entry->name});
        if (entry->kind == WaveEntry::Group)
            entry->rows = entriesFrom(value.toObject()["rows"].toArray(), true, seen);
        entries.push_back(std::move(*entry));
    }
    return entries;
}

}

QString shapeName(WaveShape shape)
{
    return QCoreApplication::translate("WaveView", kShapes[int(shape)].name);
}

int newEntryId()
{
    static int last = 0;
    return ++last;
}

bool operator==(const WaveEntry& a, const WaveEntry& b)
{
    const auto look = [](const WaveEntry& entry) {
        return std::tie(entry.kind, entry.name, entry.color, entry.height, entry.shape, entry.radix,
            entry.hidden, entry.expanded);
    };
    return look(a) == look(b) && a.rows == b.rows;
}

void addMissing(WaveEntries& entries, const Waveform& waveform)
{
    Names known;
    collect(entries, known);
    WaveEntry last;
    for (const auto& row : waveform.rows) {
        WaveEntry entry;
        entry.kind = row->isEvent ? WaveEntry::Event : WaveEntry::Signal;
        entry.name = row->name;
        if (!known.contains({entry.kind, entry.name})) {
            WaveEntries& rows = rowsOf(entries, row->group);
            rows.insert(behind(rows, last), entry);
            known.insert({entry.kind, entry.name});
        }
        last = entry;
    }
}

WaveEntries moved(
    const WaveEntries& entries, const QSet<const WaveEntry*>& chosen, const WavePlace& place)
{
    const Chosen moving = place.group ? withoutGroups(entries, chosen) : chosen;
    WaveEntries taken;
    choose(entries, moving, taken);
    return arranged(entries, nullptr, {moving, taken, place});
}

WaveEntries inserted(const WaveEntries& entries, const WaveEntry& entry, const WavePlace& place)
{
    return arranged(entries, nullptr, {{}, {entry}, place});
}

WaveEntries grouped(
    const WaveEntries& entries, const QSet<const WaveEntry*>& chosen, WaveEntry group)
{
    const Chosen moving = withoutGroups(entries, chosen);
    choose(entries, moving, group.rows);
    const auto isFirst = [&](const WaveEntry& entry) {
        return moving.contains(&entry)
            || std::any_of(entry.rows.begin(), entry.rows.end(),
                [&](const WaveEntry& row) { return moving.contains(&row); });
    };
    const auto first = std::find_if(entries.begin(), entries.end(), isFirst);
    const WavePlace place {nullptr, first == entries.end() ? nullptr : &*first};
    return arranged(entries, nullptr, {moving, {group}, place});
}

WaveEntries removed(const WaveEntries& entries, const QSet<const WaveEntry*>& chosen)
{
    WaveEntries result;
    for (const WaveEntry& entry : entries) {
        const WaveEntries rows = removed(entry.rows, chosen);
        if (chosen.contains(&entry)) {
            result.insert(result.end(), rows.begin(), rows.end());
            continue;
        }
        result.push_back(entry);
        result.back().rows = rows;
    }
    return result;
}

QJsonArray toJson(const WaveEntries& entries)
{
    QJsonArray array;
    for (const WaveEntry& entry : entries)
        array += toJson(entry);
    return array;
}

WaveEntries waveEntriesFrom(const QJsonArray& array)
{
    Names seen;
    return entriesFrom(array, false, seen);
}
