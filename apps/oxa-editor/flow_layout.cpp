// SPDX-License-Identifier: Apache-2.0
#include "flow_layout.h"

#include <QWidget>

FlowLayout::FlowLayout(QWidget* parent)
    : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem* item) { m_items.emplace_back(item); }

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[size_t(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    if (index < 0 || index >= count())
        return nullptr;
    QLayoutItem* item = m_items[size_t(index)].release();
    m_items.erase(m_items.begin() + index);
    return item;
}

int FlowLayout::heightForWidth(int width) const { return place({0, 0, width, 0}, false); }

QSize FlowLayout::sizeHint() const
{
    QSize size;
    for (const auto& item : m_items)
        size = {size.width() + item->sizeHint().width() + qMax(spacing(), 0),
            qMax(size.height(), item->sizeHint().height())};
    return size;
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const auto& item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::setGeometry(const QRect& area)
{
    QLayout::setGeometry(area);
    place(area, true);
}

/// Returns the height of all rows in an area of that width, and with `really` moves the widgets.
int FlowLayout::place(const QRect& area, bool really) const
{
    const int gap = qMax(spacing(), 0);
    int x = area.left();
    int y = area.top();
    int rowHeight = 0;
    for (const auto& item : m_items) {
        const QSize size = item->sizeHint();
        if (x > area.left() && x + size.width() > area.left() + area.width()) {
            x = area.left();
            y += rowHeight + gap;
            rowHeight = 0;
        }
        if (really)
            item->setGeometry({QPoint(x, y), size});
        x += size.width() + gap;
        rowHeight = qMax(rowHeight, size.height());
    }
    return y + rowHeight - area.top();
}
