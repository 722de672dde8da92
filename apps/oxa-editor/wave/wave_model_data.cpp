// SPDX-License-Identifier: Apache-2.0
// What a WaveModel shows in its columns.
#include "wave_model_item.h"

#include "oxautils/model/shown_text.h"

#include <QBrush>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPalette>
#include <QSize>

namespace {

constexpr int kRowSpace = 6; // pixels

}

QString WaveModel::valueText(const Item& item, int cursor) const
{
    const qint64 sample = m_samples[cursor];
    if (!item.row || sample < 0 || sample >= m_waveform->samples)
        return {};
    const WaveValue value = item.row->valueAt(sample);
    if ((item.row->isEvent && !value.isKnown()) || !item.row->isTakenAt(sample))
        return QString(QChar(0x2013)); // a dash: unknown event, or no sample
    return namedText(value, radix(indexOf(&item, 0)), item.states);
}

QVariant WaveModel::nameData(const Item& item, int role) const
{
    const WaveEntry& entry = *item.entry;
    const QString name = OXA::shownText(item.row ? item.row->name : entry.name);
    switch (role) {
    case Qt::DisplayRole: // the group is shown above it
        return item.row && item.parent->entry && !item.isBit()
            ? OXA::shownText(item.row->nameIn(item.parent->entry->name))
            : name;
    case Qt::EditRole:
        return entry.name;
    case Qt::ToolTipRole: // a name may look like rich text
        return "<p>"
            + (!item.row || item.row->width == 1
                    ? name
                    : tr("%1 (%2 bits)").arg(name, QString::number(item.row->width)))
                  .toHtmlEscaped()
            + "</p>";
    case Qt::AccessibleTextRole:
        return entry.kind == WaveEntry::Divider ? tr("Divider %1").arg(name)
            : entry.kind == WaveEntry::Group    ? tr("Group %1").arg(name)
                                                : name;
    case Qt::DecorationRole:
        return entry.color == 0 || item.isBit()
            ? QVariant()
            : waveColors(QGuiApplication::palette()).rows[entry.color - 1];
    case Qt::FontRole: {
        QFont font = QGuiApplication::font();
        font.setBold(!item.row);
        font.setItalic(entry.hidden);
        return font;
    }
    default:
        return {};
    }
}

QVariant WaveModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Item& shown = *item(index);
    const bool isName = index.column() == Name;
    if (role == Qt::SizeHintRole) {
        const int lines = shown.isBit() ? 1 : shown.entry->height;
        return QSize(0, QFontMetrics(QGuiApplication::font()).height() * lines + kRowSpace);
    }
    if (role == Qt::BackgroundRole)
        return shown.entry->kind == WaveEntry::Signal ? QVariant()
                                                      : QGuiApplication::palette().alternateBase();
    if (role == Qt::ForegroundRole)
        return shown.entry->hidden ? QGuiApplication::palette().brush(QPalette::PlaceholderText)
                                   : QVariant();
    if (isName)
        return nameData(shown, role);
    if (role == Qt::FontRole)
        return valueFont();
    return role == Qt::DisplayRole || role == Qt::ToolTipRole
        ? valueText(shown, index.column() - Value)
        : QVariant();
}

bool WaveModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    // The view may call this while it uses indexes, which would not survive another tree.
    item(index)->entry->name = value.toString().trimmed();
    Q_EMIT dataChanged(index, index);
    Q_EMIT edited();
    return true;
}

Qt::ItemFlags WaveModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    const Item& shown = *item(index);
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!shown.isBit())
        flags |= Qt::ItemIsDragEnabled;
    if (!shown.row && index.column() == Name)
        flags |= Qt::ItemIsEditable;
    if (shown.entry->kind == WaveEntry::Group)
        flags |= Qt::ItemIsDropEnabled;
    return flags;
}

QVariant WaveModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Name ? tr("Signal") : section == Value ? tr("At A") : tr("At B");
}
