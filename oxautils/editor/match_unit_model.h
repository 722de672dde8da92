// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_EDITOR_MATCH_UNIT_MODEL_H
#define OXAUTILS_EDITOR_MATCH_UNIT_MODEL_H

#include "oxautils/oxautils_export.h"

#include <QAbstractTableModel>
#include <QList>

namespace OXA {

class MatchUnit;

/// A table of match units, one row each. A check box in the first column switches a unit on and
/// off; nothing else can be edited. The caller owns the units, which have to outlive the model or
/// its next `reset`.
class OXAUTILS_EXPORT MatchUnitModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// Shows no units. `parent`, if any, owns the model.
    explicit MatchUnitModel(QObject* parent = nullptr);

    /// Shows the first ten of `list`; `setMatcherList` shows all.
    explicit MatchUnitModel(const QList<MatchUnit*>& list, QObject* parent = nullptr);

    /// Shows all of `list`.
    void setMatcherList(const QList<MatchUnit*>& list);

    /// Shows no units.
    void reset();

    /// Call it after the unit of `row` was changed elsewhere.
    void updateRow(int row);

    /// The unit of the row of `index`; null for an invalid index.
    static MatchUnit* muFromIndex(const QModelIndex& index);

    /// As in QAbstractTableModel.
    /// @{
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    /// @}

Q_SIGNALS:
    void modified(); ///< the user changed a unit
    void matchChange(); ///< a unit was switched on or off; `modified` follows

private:
    QVariant dataForColEnable(int row, int role) const;
    QVariant dataForColIndex(int row, int role) const;
    QVariant dataForColTrigger(int row, int role) const;
    QVariant dataForColType(int row, int role) const;
    QVariant dataForColFunc(int row, int role) const;
    QVariant dataForCounter(int row, int role) const;
    QVariant dataForColValue(int row, int role) const;

    QList<MatchUnit*> m_units;
};

}

#endif
