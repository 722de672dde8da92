// SPDX-License-Identifier: Apache-2.0
#include "undo_keys.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>

namespace {

bool isUndoOrRedo(const QKeyEvent& key)
{
    const Qt::KeyboardModifiers with = key.modifiers() & ~Qt::KeypadModifier;
    return (key.key() == Qt::Key_Z && (with & ~Qt::ShiftModifier) == Qt::ControlModifier)
        || (key.key() == Qt::Key_Y && with == Qt::ControlModifier);
}

/// Whether the field takes its text at this event.
bool isAccepting(const QEvent& event)
{
    if (event.type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
        return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
    }
    const int key = static_cast<const QKeyEvent&>(event).key();
    return event.type() == QEvent::KeyPress && (key == Qt::Key_Return || key == Qt::Key_Enter);
}

}

QLineEdit* lineEditOf(QObject* object)
{
    if (qobject_cast<QAbstractSpinBox*>(object) || qobject_cast<QComboBox*>(object))
        return object->findChild<QLineEdit*>();
    return qobject_cast<QLineEdit*>(object);
}

UndoKeys::UndoKeys(QWidget* window)
    : QObject(window)
    , m_window(window)
{
    qApp->installEventFilter(this);
}

bool UndoKeys::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::FocusOut && type != QEvent::KeyPress && type != QEvent::ShortcutOverride)
        return false;
    QLineEdit* text = lineEditOf(watched);
    if (!text || text->window() != m_window)
        return false;
    if (isAccepting(*event))
        text->setModified(false);
    if (type == QEvent::FocusOut || text->isModified()
        || !isUndoOrRedo(*static_cast<QKeyEvent*>(event)))
        return false;
    event->ignore();
    return true;
}
