// SPDX-License-Identifier: Apache-2.0
#include "capture_history.h"

#include "oxautils/model/shown_text.h"

#include <QDir>
#include <QFileInfo>

namespace {

constexpr int kMostSaved = 50;

QString cellText(const CaptureRecord& record, int column)
{
    switch (column) {
    case CaptureHistory::Time:
        return record.time;
    case CaptureHistory::Asked:
        return record.asked;
    case CaptureHistory::Ended:
        return record.ended;
    default:
        return !record.file.isEmpty() ? QFileInfo(record.file).fileName()
            : record.isUnsaved        ? CaptureHistory::tr("not saved")
                                      : QString();
    }
}

}

QList<CaptureRecordPtr> CaptureHistory::unsaved() const
{
    QList<CaptureRecordPtr> records;
    for (const CaptureRecordPtr& record : m_records) {
        if (record->isUnsaved)
            records += record;
    }
    return records;
}

void CaptureHistory::add(const CaptureRecordPtr& record)
{
    beginInsertRows({}, m_records.size(), m_records.size());
    m_records += record;
    endInsertRows();
    dropOldest();
}

/// Drops the oldest saved capture when there are too many, so that memory does not grow for ever.
void CaptureHistory::dropOldest()
{
    if (m_records.size() - unsaved().size() <= kMostSaved)
        return;
    for (int row = 0; row < m_records.size(); ++row) {
        if (!m_records.at(row)->isUnsaved)
            return remove(row);
    }
}

void CaptureHistory::remove(int row)
{
    beginRemoveRows({}, row, row);
    m_records.removeAt(row);
    endRemoveRows();
}

void CaptureHistory::setSaved(const CaptureRecordPtr& record, const QString& path)
{
    record->isUnsaved = false;
    record->file = QFileInfo(path).absoluteFilePath();
    const int row = m_records.indexOf(record);
    if (row >= 0)
        Q_EMIT dataChanged(index(row, 0), index(row, Columns - 1));
}

int CaptureHistory::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_records.size();
}

int CaptureHistory::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(Columns);
}

QVariant CaptureHistory::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const CaptureRecord& record = *m_records.at(index.row());
    const QString text = OXA::shownText(cellText(record, index.column()));
    if (role == Qt::DisplayRole)
        return text;
    if (role != Qt::ToolTipRole || text.isEmpty())
        return {};
    const bool isFile = index.column() == File && !record.file.isEmpty();
    const QString tip = isFile ? QDir::toNativeSeparators(record.file) : text;
    return QString("<p>" + tip.toHtmlEscaped() + "</p>");
}

QVariant CaptureHistory::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QString texts[Columns] = {tr("Time"), tr("File"), tr("Asked for"), tr("Result")};
    return texts[section];
}
