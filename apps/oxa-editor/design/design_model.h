// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_DESIGN_DESIGN_MODEL_H
#define APPS_OXA_EDITOR_DESIGN_DESIGN_MODEL_H

#include "design_tree.h"

#include "oxautils/model/signal_item.h"

#include <QAbstractItemModel>

#include <memory>

/// The signals of a design by hierarchy, those that match a filter.
///
/// The bits of a vector are rows below it. Signals and bits can be selected and dragged, scopes
/// cannot; signals that cannot be watched are disabled.
class DesignModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { NameColumn, RangeColumn, KindColumn, ClockColumn, Columns };

    explicit DesignModel(QObject* parent = nullptr);

    /// Shows `tree`, which may be null, without a filter.
    void setTree(const std::shared_ptr<const DesignTree>& tree);

    /// Shows the signals that match `filter`; all when it is empty. False when these are the same
    /// as before; the rows do not change then.
    bool setFilter(const QString& filter);

    int foundCount() const { return m_found.size(); }

    /// The signal of `index`, or of its bit; null for a scope.
    const OXA::DesignSignal* signalAt(const QModelIndex& index) const;

    /// Whether it is a bit of a vector, or a signal of one bit.
    bool isOneBit(const QModelIndex& index) const;

    /// The signals of `indexes`, in the order of the design; neighbouring bits of one as a bus.
    QList<OXA::SignalItem> items(const QModelIndexList& indexes) const;

    /// A number for the scope or signal of `index`, valid while the tree is shown, and the row of a
    /// number.
    int nodeAt(const QModelIndex& index) const;
    QModelIndex indexOf(int node) const;

    QModelIndexList scopes() const; ///< that are shown

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

private:
    void showFound();
    int positionAt(const QModelIndex& index) const;
    const DesignTree::Node& node(int number) const { return m_tree->nodes()[size_t(number)]; }
    QString text(const OXA::DesignSignal& signal, int column) const;

    std::shared_ptr<const DesignTree> m_tree;
    QString m_filter;
    QVector<int> m_found; // signals
    // By node:
    std::vector<QVector<int>> m_children; // those shown
    std::vector<int> m_rows; // the row in its parent; -1 when it is not shown
};

#endif
