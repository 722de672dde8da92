// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CAPTURES_CAPTURE_HISTORY_H
#define APPS_OXA_EDITOR_CAPTURES_CAPTURE_HISTORY_H

#include "capture_record.h"

#include <QAbstractTableModel>

/// The captures of this session, the latest one last. Saved ones are dropped when there are many.
class CaptureHistory : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Time, File, Asked, Ended, Columns };

    using QAbstractTableModel::QAbstractTableModel;

    CaptureRecordPtr at(int row) const { return m_records.value(row); }
    QList<CaptureRecordPtr> unsaved() const;

    void add(const CaptureRecordPtr& record);
    void remove(int row);
    /// The samples of `record` are in the file `path`.
    void setSaved(const CaptureRecordPtr& record, const QString& path);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void dropOldest();

    QList<CaptureRecordPtr> m_records;
};

#endif
