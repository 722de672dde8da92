// SPDX-License-Identifier: Apache-2.0
// Moving the rows of a WaveModel with the mouse.
#include "wave_model.h"

#include <QMimeData>

namespace {

constexpr char kMimeType[] = "application/x-oxa-waveform-rows";

}

QStringList WaveModel::mimeTypes() const { return {kMimeType}; }

// The data only says that rows are dragged: they cannot be dropped elsewhere.
QMimeData* WaveModel::mimeData(const QModelIndexList& indexes) const
{
    m_dragged.clear();
    for (const QModelIndex& index : indexes)
        m_dragged += index;
    auto* data = new QMimeData;
    data->setData(kMimeType, {});
    return data;
}

bool WaveModel::dropMimeData(
    const QMimeData* data, Qt::DropAction, int row, int, const QModelIndex& parent)
{
    const bool canDrop = !parent.isValid() || entry(parent)->kind == WaveEntry::Group;
    if (!data->hasFormat(kMimeType) || !canDrop)
        return false;
    QModelIndexList dragged;
    for (const QPersistentModelIndex& index : qAsConst(m_dragged))
        dragged += index;
    m_dragged.clear();
    const QModelIndex before = row < 0 ? QModelIndex() : index(row, 0, parent);
    edit(moved(m_entries, entriesOf(dragged), {entry(parent), entry(before)}));
    return false; // else the view would remove the rows
}
