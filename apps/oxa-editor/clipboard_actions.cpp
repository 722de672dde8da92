// SPDX-License-Identifier: Apache-2.0
#include "clipboard_actions.h"

#include "undo_keys.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

#include <iterator>

namespace {

struct Entry {
    const char* text;
    QKeySequence::StandardKey keys;
    const char* icon;
    const char* slot;
    bool edits;
};

constexpr Entry kEntries[] = {
    {QT_TRANSLATE_NOOP("ClipboardActions", "Cu&t"),        QKeySequence::Cut,       "edit-cut",   "cut",       true },
    {QT_TRANSLATE_NOOP("ClipboardActions", "&Copy"),       QKeySequence::Copy,      "edit-copy",  "copy",
     false                                                                                                          },
    {QT_TRANSLATE_NOOP("ClipboardActions", "&Paste"),      QKeySequence::Paste,     "edit-paste", "paste",
     true                                                                                                           },
    {QT_TRANSLATE_NOOP("ClipboardActions", "Select A&ll"), QKeySequence::SelectAll,
     "edit-select-all",                                                                           "selectAll", false},
};

/// The object around `focus` whose slot does the action; null when there is none.
QObject* receiverOf(QWidget* focus, const Entry& entry)
{
    const QByteArray slot = QByteArray(entry.slot) + "()";
    QObject* receiver = focus ? lineEditOf(focus) : nullptr;
    for (QWidget* at = focus; at && !receiver; at = at->parentWidget()) {
        if (at->metaObject()->indexOfMethod(slot) >= 0)
            receiver = at;
    }
    const bool refuses = receiver && entry.edits && receiver->property("readOnly").toBool();
    return refuses ? nullptr : receiver;
}

/// The list of which a row can be copied as text.
const QAbstractItemView* listOf(const QWidget* focus, const Entry& entry)
{
    const auto* view = qobject_cast<const QAbstractItemView*>(focus);
    const bool copies = view && entry.keys == QKeySequence::Copy && view->currentIndex().isValid();
    return copies ? view : nullptr;
}

}

ClipboardActions::ClipboardActions(QMenu* menu)
    : QObject(menu)
{
    for (int i = 0; i < int(std::size(kEntries)); ++i) {
        const Entry& entry = kEntries[i];
        QAction* action = menu->addAction(QIcon::fromTheme(entry.icon), tr(entry.text));
        action->setShortcut(entry.keys);
        action->setShortcutContext(Qt::WidgetShortcut); // which a menu never gets
        connect(action, &QAction::triggered, this, [this, i] { perform(i); });
        m_actions += action;
    }
    connect(menu, &QMenu::aboutToShow, this, &ClipboardActions::updateActions);
    connect(qApp, &QApplication::focusChanged, this,
        [this](QWidget*, QWidget* now) { noteFocus(now); });
}

/// With the keyboard, the menu bar gets the focus before its menu opens.
void ClipboardActions::noteFocus(QWidget* focus)
{
    if (focus && !qobject_cast<QMenuBar*>(focus) && !qobject_cast<QMenu*>(focus))
        m_focus = focus;
}

void ClipboardActions::updateActions()
{
    for (int i = 0; i < m_actions.size(); ++i)
        m_actions[i]->setEnabled(receiverOf(m_focus, kEntries[i]) || listOf(m_focus, kEntries[i]));
}

void ClipboardActions::perform(int entry)
{
    if (QObject* receiver = receiverOf(m_focus, kEntries[entry]))
        QMetaObject::invokeMethod(receiver, kEntries[entry].slot);
    else if (const QAbstractItemView* view = listOf(m_focus, kEntries[entry]))
        QApplication::clipboard()->setText(view->currentIndex().data().toString());
}
