// SPDX-License-Identifier: Apache-2.0
#include "wave_model_item.h"

#include <algorithm>
#include <map>

namespace {

std::pair<int, QString> keyOf(const WaveRow& row)
{
    return {row.isEvent ? WaveEntry::Event : WaveEntry::Signal, row.name};
}

}

WaveModel::WaveModel(QObject* parent)
    : QAbstractItemModel(parent)
    , m_waveform(std::make_shared<Waveform>())
    , m_root(std::make_unique<Item>())
{
}

WaveModel::~WaveModel() = default;

void WaveModel::setWaveform(WaveformPtr waveform, const WaveEntries& entries)
{
    const WaveformPtr before = m_waveform; // the rows are used until they are replaced
    m_waveform = std::move(waveform);
    m_rowOf.clear();
    for (const auto& row : m_waveform->rows)
        m_rowOf.insert(keyOf(*row), row.get());
    // The runs of one stimulus share the rows of its signals.
    for (auto track = m_tracks.begin(); track != m_tracks.end();) {
        const bool stays = m_rowOf.value(keyOf(*track.key())) == track.key();
        track = stays ? std::next(track) : m_tracks.erase(track);
    }
    rebuild(entries);
}

void WaveModel::setEntries(const WaveEntries& entries) { rebuild(entries); }

void WaveModel::edit(const WaveEntries& entries)
{
    rebuild(entries);
    Q_EMIT edited();
}

void WaveModel::edit(
    const QModelIndexList& indexes, const std::function<void(WaveEntry& entry)>& change)
{
    for (const QModelIndex& index : indexes) {
        if (index.isValid())
            change(*item(index)->entry);
    }
    edit(m_entries);
}

QSet<const WaveEntry*> WaveModel::entriesOf(const QModelIndexList& indexes) const
{
    QSet<const WaveEntry*> entries;
    for (const QModelIndex& index : indexes) {
        if (index.isValid())
            entries.insert(item(index)->entry);
    }
    return entries;
}

void WaveModel::setExpanded(const QModelIndex& index, bool isExpanded)
{
    WaveEntry& entry = *item(index)->entry;
    if (entry.expanded == isExpanded || isFiltered()) // a filter expands groups
        return;
    entry.expanded = isExpanded;
    Q_EMIT expandedOrCollapsed();
}

void WaveModel::setFilter(const QString& text)
{
    m_filter = text.trimmed();
    m_pattern = QRegularExpression(QRegularExpression::wildcardToRegularExpression(m_filter),
        QRegularExpression::CaseInsensitiveOption);
    rebuild(m_entries);
}

void WaveModel::setShowsHidden(bool shows)
{
    m_showsHidden = shows;
    rebuild(m_entries);
}

void WaveModel::rebuild(WaveEntries entries)
{
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<std::tuple<int, QString, int>> keys;
    for (const QModelIndex& index : before)
        keys.push_back(item(index)->key());

    m_entries = std::move(entries);
    addMissing(m_entries, *m_waveform);
    m_root = std::make_unique<Item>();
    build(*m_root, m_entries, !isFiltered());

    std::map<std::tuple<int, QString, int>, const Item*> found;
    const std::function<void(const Item&)> note = [&](const Item& parent) {
        for (const auto& child : parent.items) {
            found[child->key()] = child.get();
            note(*child);
        }
    };
    if (!before.isEmpty())
        note(*m_root);
    QModelIndexList after;
    for (int i = 0; i < before.size(); ++i) {
        const auto place = found.find(keys[size_t(i)]);
        after
            += place == found.end() ? QModelIndex() : indexOf(place->second, before.at(i).column());
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

/// Adds the items of `entries`; of those that the filter matches unless `isMatched`.
void WaveModel::build(Item& parent, WaveEntries& entries, bool isMatched)
{
    for (WaveEntry& entry : entries) {
        if (entry.hidden && !m_showsHidden)
            continue;
        if (entry.kind == WaveEntry::Group) {
            Item* group = parent.add({&entry});
            build(*group, entry.rows, isMatched || matches(entry));
            if (isFiltered() && group->items.empty())
                parent.items.pop_back();
            continue;
        }
        const WaveRow* row = m_rowOf.value({entry.kind, entry.name});
        if ((entry.isWave() && !row) || !(isMatched || matches(entry)))
            continue;
        Item* item = parent.add({&entry, row});
        if (row)
            addBits(*item);
    }
}

void WaveModel::addBits(Item& bus) const
{
    QStringList names;
    for (const WaveRow& bit : bus.row->bits) {
        bus.add({bus.entry, &bit});
        names += bit.name;
    }
    if (!names.isEmpty() && !m_states.isEmpty() && !bus.row->isEvent)
        bus.states = OXA::statesOf(m_states, names);
}

bool WaveModel::matches(const WaveEntry& entry) const
{
    return entry.name.contains(m_filter, Qt::CaseInsensitive)
        || m_pattern.match(entry.name).hasMatch();
}

WaveModel::Item* WaveModel::item(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Item*>(index.internalPointer()) : m_root.get();
}

QModelIndex WaveModel::indexOf(const Item* item, int column) const
{
    return item == m_root.get() ? QModelIndex()
                                : createIndex(item->place, column, const_cast<Item*>(item));
}

const WaveRow* WaveModel::row(const QModelIndex& index) const { return item(index)->row; }

const WaveEntry* WaveModel::entry(const QModelIndex& index) const { return item(index)->entry; }

QModelIndex WaveModel::find(int entryId) const
{
    const std::function<QModelIndex(const Item&)> search = [&](const Item& parent) {
        for (const auto& child : parent.items) {
            const QModelIndex found
                = child->entry->id == entryId ? indexOf(child.get(), Name) : search(*child);
            if (found.isValid())
                return found;
        }
        return QModelIndex();
    };
    return search(*m_root);
}

bool WaveModel::isBit(const QModelIndex& index) const { return item(index)->isBit(); }

bool WaveModel::hasHighRows() const
{
    const std::function<bool(const WaveEntries&)> isHigh = [&](const WaveEntries& entries) {
        return std::any_of(entries.begin(), entries.end(),
            [&](const WaveEntry& entry) { return entry.height != 1 || isHigh(entry.rows); });
    };
    return isHigh(m_entries);
}

Radix WaveModel::radix(const QModelIndex& index) const
{
    const Item& shown = *item(index);
    if (!shown.row || !shown.row->isBus())
        return Radix::Binary;
    const Radix usual = shown.row->isEvent ? Radix::Decimal
        : shown.states.isEmpty()           ? Radix::Hexadecimal
                                           : Radix::Names;
    return shown.entry->radix.value_or(usual);
}

WaveLane WaveModel::lane(const QModelIndex& index) const
{
    const Item& shown = *item(index);
    const WaveEntry& entry = *shown.entry;
    WaveLane lane {*shown.row, radix(index), shown.states, entry.color};
    if (entry.shape == WaveShape::Digits || !shown.row->isBus())
        return lane;
    auto& track = m_tracks[shown.row];
    const bool isSigned = lane.radix == Radix::Signed;
    if (!track || track->isSigned() != isSigned)
        track = std::make_shared<AnalogTrack>(*shown.row, isSigned);
    lane.shape = entry.shape;
    lane.track = track.get();
    return lane;
}

void WaveModel::setStates(const OXA::StateNames& states)
{
    if (states == m_states) // of most runs
        return;
    m_states = states;
    rebuild(m_entries);
}

void WaveModel::setSample(int cursor, qint64 sample)
{
    if (sample == m_samples[cursor])
        return;
    m_samples[cursor] = sample;
    valuesChanged();
}

void WaveModel::valuesChanged()
{
    const std::function<void(const Item&)> tell = [&](const Item& parent) {
        if (parent.items.empty())
            return;
        Q_EMIT dataChanged(
            indexOf(parent.items.front().get(), Value), indexOf(parent.items.back().get(), ValueB));
        for (const auto& child : parent.items)
            tell(*child);
    };
    tell(*m_root);
}

QModelIndex WaveModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return indexOf(item(parent)->items[size_t(row)].get(), column);
}

QModelIndex WaveModel::parent(const QModelIndex& index) const
{
    return index.isValid() ? indexOf(item(index)->parent, 0) : QModelIndex();
}

int WaveModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : int(item(parent)->items.size());
}

int WaveModel::columnCount(const QModelIndex&) const { return Columns; }
