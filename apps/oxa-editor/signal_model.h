// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_SIGNAL_MODEL_H
#define APPS_OXA_EDITOR_SIGNAL_MODEL_H

#include "oxautils/model/signal_item.h"

#include <QAbstractItemModel>

/// Signals and buses with their bits, as a tree of two levels.
///
/// The model shows its owner's list: it requests a user's change by `edited`, and the owner calls
/// `setItems`.
class SignalModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { NameColumn, TextColumn, CaptureColumn };

    /// With `captures` there is a column for which signals are captured.
    explicit SignalModel(bool captures, QObject* parent = nullptr);

    const QList<OXA::SignalItem>& items() const { return m_items; }

    /// Shows `items`; rows outside the difference stay selected and expanded.
    void setItems(const QList<OXA::SignalItem>& items);

    /// The item or bit of `index`; null for an invalid index.
    const OXA::SignalItem* itemAt(const QModelIndex& index) const;

    /// Moves rows of one parent before its row `target`; returns the place of the first of them.
    int moveRowsTo(const QModelIndex& parent, QList<int> rows, int target, const QString& step);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::DropActions supportedDropActions() const override
    {
        return Qt::MoveAction | Qt::CopyAction;
    }
    Qt::DropActions supportedDragActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
        const QModelIndex& parent) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
        const QModelIndex& parent) override;

Q_SIGNALS:
    /// The user changed the list to `items`; `step` is the text for undo.
    void edited(const QList<OXA::SignalItem>& items, const QString& step);
    /// The user dropped `count` rows, of which `first` is now the first in `parent`.
    void dropped(int first, int count, const QModelIndex& parent);

private:
    bool canMove(const QMimeData* data, int row, const QModelIndex& parent) const;
    void insertItems(int target, const QMimeData* data);
    void replaceRows(const QList<OXA::SignalItem>& items, int first, int before, int after);

    const bool m_captures;
    QList<OXA::SignalItem> m_items;
};

#endif
