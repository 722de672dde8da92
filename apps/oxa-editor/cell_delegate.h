#ifndef APPS_OXA_EDITOR_CELL_DELEGATE_H
#define APPS_OXA_EDITOR_CELL_DELEGATE_H

#include <QStyledItemDelegate>

/// Draws cells with room beside their texts, and check boxes that stand out from a dark ground too.
class CellDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
};

#endif
