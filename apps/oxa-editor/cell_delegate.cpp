// SPDX-License-Identifier: Apache-2.0
#include "cell_delegate.h"

#include <QPainter>
#include <QWidget>

QSize CellDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int room = 2 * option.fontMetrics.averageCharWidth();
    return QStyledItemDelegate::sizeHint(option, index) + QSize(room, 0);
}

void CellDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (!index.data(Qt::CheckStateRole).isValid() || !option.widget)
        return;
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QRect box = option.widget->style()->subElementRect(
        QStyle::SE_ItemViewItemCheckIndicator, &cell, option.widget);
    painter->setPen(option.palette.color(QPalette::Disabled, QPalette::Text));
    painter->drawRect(box.adjusted(0, 0, -1, -1));
}
