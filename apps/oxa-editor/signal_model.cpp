// SPDX-License-Identifier: Apache-2.0
#include "signal_model.h"

#include "core.h"
#include "signal_clipboard.h"
#include "signal_names.h"

#include "oxautils/model/shown_text.h"

#include <QDataStream>
#include <QFont>
#include <QIODevice>
#include <QMimeData>

#include <algorithm>

using namespace OXA;

namespace {

constexpr char kRowsType[] = "application/x-oxa-signal-rows";
constexpr quintptr kTopLevel = 0; // a bit's index holds its bus's row + 1

/// The address of `model`, and the row of the parent (-1: none) whose rows are dragged.
struct DraggedRows {
    quint64 model = 0;
    int parentRow = -1;
    QList<int> rows;
};

QByteArray packed(const DraggedRows& dragged)
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << dragged.model << dragged.parentRow << dragged.rows;
    return bytes;
}

DraggedRows unpacked(QByteArray bytes)
{
    DraggedRows dragged;
    QDataStream(&bytes, QIODevice::ReadOnly) >> dragged.model >> dragged.parentRow >> dragged.rows;
    return dragged;
}

}

SignalModel::SignalModel(bool captures, QObject* parent)
    : QAbstractItemModel(parent)
    , m_captures(captures)
{
}

void SignalModel::setItems(const QList<SignalItem>& items)
{
    const int common = qMin(m_items.size(), items.size());
    int first = 0;
    while (first < common && same(m_items.at(first), items.at(first)))
        ++first;
    int tail = 0;
    while (tail < common - first
        && same(m_items.at(m_items.size() - 1 - tail), items.at(items.size() - 1 - tail)))
        ++tail;
    replaceRows(items, first, m_items.size() - first - tail, items.size() - first - tail);
}

/// Replaces the `before` rows from `first` on by `after` rows of `items`.
void SignalModel::replaceRows(const QList<SignalItem>& items, int first, int before, int after)
{
    bool sameShape = before == after;
    for (int i = first; sameShape && i < first + before; ++i)
        sameShape = m_items.at(i).subItems.size() == items.at(i).subItems.size();
    if (sameShape) {
        m_items = items;
        for (int i = first; i < first + after; ++i) {
            Q_EMIT dataChanged(index(i, 0), index(i, columnCount() - 1));
            const QModelIndex bus = index(i, 0);
            if (const int bits = rowCount(bus))
                Q_EMIT dataChanged(index(0, 0, bus), index(bits - 1, columnCount() - 1, bus));
        }
        return;
    }
    if (before > 0) {
        beginRemoveRows({}, first, first + before - 1);
        m_items.erase(m_items.begin() + first, m_items.begin() + first + before);
        endRemoveRows();
    }
    if (after > 0) {
        beginInsertRows({}, first, first + after - 1);
        m_items = items;
        endInsertRows();
    }
}

const SignalItem* SignalModel::itemAt(const QModelIndex& index) const
{
    if (!index.isValid())
        return nullptr;
    if (index.internalId() == kTopLevel)
        return &m_items.at(index.row());
    return &m_items.at(int(index.internalId()) - 1).subItems.at(index.row());
}

QModelIndex SignalModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : kTopLevel);
}

QModelIndex SignalModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == kTopLevel)
        return {};
    return createIndex(int(index.internalId()) - 1, 0, kTopLevel);
}

int SignalModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return m_items.size();
    if (parent.internalId() != kTopLevel || parent.column() > 0)
        return 0;
    return m_items.at(parent.row()).subItems.size();
}

int SignalModel::columnCount(const QModelIndex&) const { return m_captures ? 3 : 2; }

Qt::ItemFlags SignalModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled;
    const bool bit = index.internalId() != kTopLevel;
    if (index.column() == CaptureColumn)
        return bit ? flags : flags | Qt::ItemIsUserCheckable;
    const bool bus = !bit && m_items.at(index.row()).isBus();
    return flags | Qt::ItemIsEditable | (bus ? Qt::ItemIsDropEnabled : Qt::NoItemFlags);
}

QVariant SignalModel::data(const QModelIndex& index, int role) const
{
    const SignalItem* item = itemAt(index);
    if (!item)
        return {};
    const bool top = index.internalId() == kTopLevel;
    if (index.column() == CaptureColumn) {
        if (role == Qt::CheckStateRole && top)
            return int(item->captureEnable ? Qt::Checked : Qt::Unchecked);
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::ToolTipRole:
        if (index.column() == TextColumn)
            return role == Qt::EditRole ? item->text : shownText(item->text);
        if (role == Qt::DisplayRole && item->isBus())
            return QString("%1  (%2)").arg(shownText(item->name), bitsText(item->subItems.size()));
        return role == Qt::EditRole ? item->name : shownText(item->name);
    default:
        return {};
    }
}

bool SignalModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid())
        return false;
    QList<SignalItem> items = m_items;
    SignalItem& top = items[index.internalId() ? int(index.internalId()) - 1 : index.row()];
    SignalItem& item = index.internalId() ? top.subItems[index.row()] : top;
    QString step;
    if (index.column() == CaptureColumn && role == Qt::CheckStateRole) {
        item.captureEnable = value.toInt() != Qt::Unchecked;
        step = item.captureEnable ? tr("capture %1") : tr("do not capture %1");
    } else if (role == Qt::EditRole && index.column() == TextColumn) {
        item.text = cleanName(value.toString());
        step = tr("change the display text of %1");
    } else if (role == Qt::EditRole && index.column() == NameColumn) {
        const QString name = cleanName(value.toString());
        if (name.isEmpty())
            return false;
        step = tr("rename %1");
        item.name = name;
    } else {
        return false;
    }
    if (!same(items, m_items))
        Q_EMIT edited(items, step.arg(itemAt(index)->name));
    return true;
}

QVariant SignalModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case NameColumn:
        return tr("Signal");
    case TextColumn:
        return tr("Shown as");
    case CaptureColumn:
        return tr("Capture");
    default:
        return {};
    }
}

int SignalModel::moveRowsTo(
    const QModelIndex& parent, QList<int> rows, int target, const QString& step)
{
    QList<SignalItem> items = m_items;
    QList<SignalItem>& list = parent.isValid() ? items[parent.row()].subItems : items;
    std::sort(rows.begin(), rows.end());
    QList<SignalItem> moved;
    for (auto row = rows.crbegin(); row != rows.crend(); ++row) {
        moved.prepend(list.takeAt(*row));
        if (*row < target)
            --target;
    }
    for (int i = 0; i < moved.size(); ++i)
        list.insert(target + i, moved.at(i));
    if (!same(items, m_items))
        Q_EMIT edited(items, step);
    return target;
}

QStringList SignalModel::mimeTypes() const { return {kRowsType, kSignalsType}; }

/// Only rows of one parent move together: those of the first index.
QMimeData* SignalModel::mimeData(const QModelIndexList& indexes) const
{
    DraggedRows dragged;
    dragged.model = quint64(quintptr(this));
    const QModelIndex parent = indexes.value(0).parent();
    dragged.parentRow = parent.isValid() ? parent.row() : -1;
    for (const QModelIndex& index : indexes) {
        if (index.column() == 0 && index.parent() == parent)
            dragged.rows += index.row();
    }
    auto* data = new QMimeData;
    data->setData(kRowsType, packed(dragged));
    return data;
}

bool SignalModel::canDropMimeData(
    const QMimeData* data, Qt::DropAction action, int row, int, const QModelIndex& parent) const
{
    if (data->hasFormat(kRowsType))
        return action == Qt::MoveAction && canMove(data, row, parent);
    return action == Qt::CopyAction && data->hasFormat(kSignalsType);
}

bool SignalModel::canMove(const QMimeData* data, int row, const QModelIndex& parent) const
{
    const DraggedRows dragged = unpacked(data->data(kRowsType));
    const int parentRow = parent.isValid() ? parent.row() : -1;
    // Bits cannot leave their bus; a drop onto the root goes after its last row.
    return dragged.model == quint64(quintptr(this)) && dragged.parentRow == parentRow
        && (row >= 0 || !parent.isValid());
}

bool SignalModel::dropMimeData(
    const QMimeData* data, Qt::DropAction action, int row, int column, const QModelIndex& parent)
{
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    if (data->hasFormat(kSignalsType)) {
        // A drop onto a bus or between its bits goes after the bus.
        insertItems(parent.isValid() ? parent.row() + 1 : row, data);
        return true;
    }
    const DraggedRows dragged = unpacked(data->data(kRowsType));
    const QPersistentModelIndex bus = parent;
    const int first
        = moveRowsTo(parent, dragged.rows, row < 0 ? rowCount(parent) : row, tr("move signals"));
    Q_EMIT dropped(first, int(dragged.rows.size()), bus);
    return true;
}

/// Inserts the signals of `data` before the row `target`; -1: at the end.
void SignalModel::insertItems(int target, const QMimeData* data)
{
    QStringList errors;
    const QList<SignalItem> added = fromMimeData(data, errors);
    if (added.isEmpty())
        return;
    const int first = target < 0 ? int(m_items.size()) : target;
    QList<SignalItem> items = m_items;
    for (int i = 0; i < added.size(); ++i)
        items.insert(first + i, added.at(i));
    Q_EMIT edited(items, tr("add signals"));
    Q_EMIT dropped(first, int(added.size()), {});
}
