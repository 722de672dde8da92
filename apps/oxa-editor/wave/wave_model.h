// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_MODEL_H
#define APPS_OXA_EDITOR_WAVE_WAVE_MODEL_H

#include "wave_painter.h"

#include "oxautils/model/state_names.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QPersistentModelIndex>
#include <QRegularExpression>

#include <functional>

/// The rows of a waveform in the user's layout, with the bits of a bus below it, and their values
/// at the cursors.
class WaveModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { Name, Value, ValueB, Columns };

    explicit WaveModel(QObject* parent = nullptr);
    ~WaveModel() override;

    const WaveformPtr& waveform() const { return m_waveform; }

    /// Shows `waveform`, never null, in the layout `entries`, which may lack rows of the waveform
    /// and have others. Rows that the waveform before had, too, keep their indexes.
    void setWaveform(WaveformPtr waveform, const WaveEntries& entries);

    /// The layout, with all rows of the waveform.
    const WaveEntries& entries() const { return m_entries; }
    void setEntries(const WaveEntries& entries);

    /// The same as an edit of the user.
    void edit(const WaveEntries& entries);

    /// Changes the entries of `indexes`, of a bit the entry of its bus.
    void edit(const QModelIndexList& indexes, const std::function<void(WaveEntry& entry)>& change);

    /// The entries of `indexes`.
    QSet<const WaveEntry*> entriesOf(const QModelIndexList& indexes) const;

    /// Notes that the user expands or collapses a row.
    void setExpanded(const QModelIndex& index, bool isExpanded);

    /// Shows only rows whose name contains `text`, or matches it when it has wildcards, and groups
    /// that have such rows.
    void setFilter(const QString& text);
    bool isFiltered() const { return !m_filter.isEmpty(); }

    /// Whether hidden rows are visible, in gray.
    void setShowsHidden(bool shows);

    /// Null for a group and a divider.
    const WaveRow* row(const QModelIndex& index) const;
    /// That of a bit is that of its bus; null for an invalid index.
    const WaveEntry* entry(const QModelIndex& index) const;
    QModelIndex find(int entryId) const; ///< invalid when it is not shown
    bool isBit(const QModelIndex& index) const;
    bool hasHighRows() const; ///< not all rows have the same height

    Radix radix(const QModelIndex& index) const;

    /// What to draw for the `row` of `index`; valid until the model changes.
    WaveLane lane(const QModelIndex& index) const;

    /// The names of values, which buses that have some are shown with.
    void setStates(const OXA::StateNames& states);
    const OXA::StateNames& states() const { return m_states; }

    /// The sample whose values are shown in the column of cursor A (0) or B (1); -1: none.
    void setSample(int cursor, qint64 sample);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    QStringList mimeTypes() const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
        const QModelIndex& parent) override;

Q_SIGNALS:
    void edited(); ///< by the user
    void expandedOrCollapsed(); ///< by the user

private:
    struct Item;

    Item* item(const QModelIndex& index) const;
    QModelIndex indexOf(const Item* item, int column) const;
    void rebuild(WaveEntries entries);
    void build(Item& parent, WaveEntries& entries, bool isMatched);
    void addBits(Item& bus) const;
    bool matches(const WaveEntry& entry) const;
    QString valueText(const Item& item, int cursor) const;
    QVariant nameData(const Item& item, int role) const;
    void valuesChanged();

    WaveformPtr m_waveform;
    WaveEntries m_entries;
    std::unique_ptr<Item> m_root;
    OXA::StateNames m_states;
    QString m_filter;
    QRegularExpression m_pattern; // the same with wildcards
    bool m_showsHidden = false;
    qint64 m_samples[2] = {0, -1};
    QHash<std::pair<int, QString>, const WaveRow*> m_rowOf; // by the kind and name of entries
    mutable QList<QPersistentModelIndex> m_dragged;
    mutable QHash<const WaveRow*, std::shared_ptr<const AnalogTrack>> m_tracks;
};

#endif
