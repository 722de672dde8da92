// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_EDITOR_DIALOG_DRIVER_H
#define TESTS_EDITOR_DIALOG_DRIVER_H

#include "oxautils/editor/match_unit_dialog.h"
#include "oxautils/editor/tree_line_edit.h"
#include "oxautils/model/ao_core.h"

#include "support/patience.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMessageBox>
#include <QRadioButton>
#include <QTreeWidget>
#include <QtTest>

/// A shown match unit dialog, and what a person does with it.
class DialogDriver {
public:
    explicit DialogDriver(OXA::MatchUnit* unit, bool fixedUnit = false)
        : dialog(unit, fixedUnit)
    {
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog, kPatience));
    }

    template <typename T> T* find(const char* name) const { return dialog.findChild<T*>(name); }

    OXA::TreeLineEdit* edit(int row, const char* tree = "treeSignals0") const
    {
        auto* widget = find<QTreeWidget>(tree);
        return static_cast<OXA::TreeLineEdit*>(widget->itemWidget(widget->topLevelItem(row), 1));
    }

    QString shown(int row, const char* tree = "treeSignals0") const
    {
        return edit(row, tree)->displayText();
    }

    QString bits(int row, const char* tree = "treeSignals0") const
    {
        QString bits;
        for (const OXA::TreeLineEdit* bit : edit(row, tree)->subEdits)
            bits += bit->displayText();
        return bits;
    }

    /// Types over the row from its first character on, without leaving the field.
    void type(int row, const QString& keys, const char* tree = "treeSignals0")
    {
        OXA::TreeLineEdit* field = edit(row, tree);
        QTest::mouseClick(field, Qt::LeftButton);
        QTest::keyClick(field, Qt::Key_Home);
        QTest::keyClicks(field, keys);
    }

    /// Types over the row and goes on to the next field.
    void enter(int row, const QString& keys, const char* tree = "treeSignals0")
    {
        type(row, keys, tree);
        QTest::keyClick(edit(row, tree), Qt::Key_Tab);
    }

    /// Chooses `text` and leaves the focus where it is.
    void choose(const char* combo, const QString& text)
    {
        auto* box = find<QComboBox>(combo);
        const int row = box->findText(text);
        QVERIFY2(row >= 0, qPrintable(text));
        box->setCurrentIndex(row);
        Q_EMIT box->activated(row);
    }

    void radix(const QString& name)
    {
        find<QRadioButton>(qPrintable("rbtn" + name))->setChecked(true);
    }

    /// The digit menu of `field`, as the menu key opens it.
    QMenu* menu(OXA::TreeLineEdit* field)
    {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(2, 2));
        QApplication::sendEvent(field, &event);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }

    void chooseDigit(OXA::TreeLineEdit* field, int entry)
    {
        QMenu* popup = menu(field);
        QVERIFY(popup);
        popup->setActiveAction(popup->actions().at(entry));
        QTest::keyClick(popup, Qt::Key_Return);
    }

    /// Presses Enter; returns the text of the warning that came, empty when none did.
    QString confirm()
    {
        QString text;
        QTimer::singleShot(0, [&] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                text = box->windowTitle() + ": " + box->text();
                QTest::keyClick(box, Qt::Key_Return);
            }
        });
        QTest::keyClick(&dialog, Qt::Key_Return);
        QCoreApplication::processEvents();
        return text;
    }

    OXA::MatchUnitDialog dialog;
};

#endif
