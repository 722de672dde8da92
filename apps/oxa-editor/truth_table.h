// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_TRUTH_TABLE_H
#define APPS_OXA_EDITOR_TRUTH_TABLE_H

#include "oxautils/model/ao_core.h"

#include <QAbstractTableModel>

#include <vector>

/// The truth table of a trigger expression over its units, up to six: a column for each unit, the
/// first changing slowest, and one for the result.
class TruthTable : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Shows the table of `text`. When there is none, the table is empty and `reason` explains it.
    void setExpression(const QString& text, const OXA::AoCore& core);
    QString reason() const { return m_reason; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void compute(const QString& text, const OXA::AoCore& core);

    QList<int> m_units;
    std::vector<bool> m_results; // by row
    QString m_reason;
};

#endif
