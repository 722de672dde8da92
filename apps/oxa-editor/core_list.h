// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CORE_LIST_H
#define APPS_OXA_EDITOR_CORE_LIST_H

#include "document.h"

#include <QWidget>

class QListWidget;
class QToolButton;

/// The list of cores, for choosing the current one, adding, copying, removing, reordering and
/// renaming.
class CoreList : public QWidget {
    Q_OBJECT

public:
    explicit CoreList(Document& document, QWidget* parent = nullptr);

    CorePtr current() const;
    void setCurrent(const CorePtr& core);
    void refresh();
    QListWidget* list() const { return m_list; }

    void add();
    void duplicate();
    void remove();
    void moveUp();
    void moveDown();

Q_SIGNALS:
    void currentChanged();

private:
    QToolButton* addButton(const QString& text, const QString& hint, const QKeySequence& keys,
        void (CoreList::*done)());
    void move(int by);
    void takeOrder();
    void rename(int row);

    Document& m_document;
    QListWidget* m_list;
    QList<QToolButton*> m_needCore;
};

#endif
