// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_UNDO_KEYS_H
#define APPS_OXA_EDITOR_UNDO_KEYS_H

#include <QObject>

class QLineEdit;
class QWidget;

/// Leaves the keys of undo and redo to the menu of `window`, except in a field whose text is being
/// typed. A field would otherwise undo its text alone, also after the document has taken it.
class UndoKeys : public QObject {
    Q_OBJECT

public:
    explicit UndoKeys(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_window;
};

/// The text of a field of one line; null for other objects.
QLineEdit* lineEditOf(QObject* object);

#endif
