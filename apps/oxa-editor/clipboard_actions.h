// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CLIPBOARD_ACTIONS_H
#define APPS_OXA_EDITOR_CLIPBOARD_ACTIONS_H

#include <QObject>
#include <QPointer>
#include <QWidget>

class QAction;
class QMenu;

/// Cut, Copy, Paste and Select All in a menu, for the widget that has the focus.
///
/// A field or a text is served by itself; another widget when it, or one around it, has the slot
/// `cut()`, `copy()`, `paste()` or `selectAll()`. The keys stay with these widgets: the menu only
/// shows them.
class ClipboardActions : public QObject {
    Q_OBJECT

public:
    /// Adds the actions to `menu`, their owner.
    explicit ClipboardActions(QMenu* menu);

private:
    void noteFocus(QWidget* focus);
    void updateActions();
    void perform(int entry);

    QList<QAction*> m_actions;
    QPointer<QWidget> m_focus; // the last one outside of menus
};

#endif
