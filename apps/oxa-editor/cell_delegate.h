// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CELL_DELEGATE_H
#define APPS_OXA_EDITOR_CELL_DELEGATE_H

#include <QStyledItemDelegate>

/// Draws cells with space beside their texts, and check boxes that are visible in dark themes.
class CellDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
};

#endif
