// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_FLOW_LAYOUT_H
#define APPS_OXA_EDITOR_FLOW_LAYOUT_H

#include <QLayout>

#include <memory>
#include <vector>

/// Places widgets in a row, and in further rows when the width does not suffice, as words of a
/// text. For buttons above a list, which would otherwise keep the window wide.
class FlowLayout : public QLayout {
    Q_OBJECT

public:
    explicit FlowLayout(QWidget* parent = nullptr);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override { return int(m_items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override; ///< of one row
    QSize minimumSize() const override; ///< of the widest widget
    void setGeometry(const QRect& area) override;

private:
    int place(const QRect& area, bool really) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

#endif
