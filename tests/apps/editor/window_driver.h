// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APPS_EDITOR_WINDOW_DRIVER_H
#define TESTS_APPS_EDITOR_WINDOW_DRIVER_H

#include "oxa-editor/main_window.h"
#include "oxa-editor/message_bar.h"

#include "support/files.h"
#include "support/patience.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

/// Settings of the test's own, and a folder for its files.
class TestFolder {
public:
    TestFolder()
    {
        QCoreApplication::setOrganizationName("OxaUtils");
        QCoreApplication::setApplicationName("test");
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
        QSettings().clear();
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }

    /// A copy of a file of examples/uart.
    QString example(const QString& name) const
    {
        return writeFile(path(name), bytesOf(OXA_SOURCE_DIR "/examples/uart/" + name));
    }

private:
    QTemporaryDir m_folder;
};

inline QString textsIn(const QListWidget& list)
{
    QStringList texts;
    for (int i = 0; i < list.count(); ++i)
        texts += list.item(i)->text();
    return texts.join('\n');
}

inline QString labelsIn(const QWidget& widget)
{
    QStringList texts;
    for (const QLabel* label : widget.findChildren<QLabel*>())
        texts += label->text();
    return texts.join('\n');
}

/// The visible widget of type T in `window` whose label or own text is `text` (without "&").
template <typename T> T* findIn(const QWidget& window, const QString& text)
{
    const auto plain = [](QString label) { return label.remove('&'); };
    for (QLabel* label : window.findChildren<QLabel*>()) {
        auto* buddy = qobject_cast<T*>(label->buddy());
        if (buddy && buddy->isVisible() && plain(label->text()) == text)
            return buddy;
    }
    for (T* widget : window.findChildren<T*>()) {
        const QString name = widget->accessibleName();
        const QString own = plain(widget->property("text").toString());
        if (widget->isVisible() && (name.isEmpty() ? own : name) == text)
            return widget;
    }
    return nullptr;
}

/// A shown window, and what a person does with it.
class WindowDriver {
public:
    /// Opens the file `path`, unless it is empty.
    explicit WindowDriver(const QString& path = {})
    {
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window, kPatience));
        QVERIFY(path.isEmpty() || window.open(path));
    }

    ~WindowDriver() { window.document().undoStack().setClean(); }

    Document& document() { return window.document(); }
    OXA::AoCore& core(int i = 0) { return *window.document().cores().at(i)->standard; }

    void keys(const char* shortcut)
    {
        activate();
        const QKeySequence sequence(shortcut);
        QTest::keyClick(&window, Qt::Key(sequence[0] & ~int(Qt::KeyboardModifierMask)),
            Qt::KeyboardModifiers(sequence[0] & int(Qt::KeyboardModifierMask)));
    }

    /// Makes the window active again, which it no longer is after a message or a popup.
    void activate()
    {
        if (window.isActiveWindow())
            return;
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window, kPatience));
    }

    template <typename T> T* find(const QString& text) const { return findIn<T>(window, text); }

    void press(const QString& button) const
    {
        auto* widget = find<QAbstractButton>(button);
        QVERIFY2(widget && widget->isEnabled(), qPrintable(button));
        QTest::mouseClick(widget, Qt::LeftButton);
    }

    /// Types over the whole of the field labelled `label` and leaves it.
    void enter(const QString& label, const QString& text)
    {
        auto* field = find<QWidget>(label);
        QVERIFY2(field, qPrintable(label));
        activate();
        field->setFocus();
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Tab);
    }

    /// Presses `key` in the widget labelled `label`.
    void keyIn(const QString& label, Qt::Key key, Qt::KeyboardModifiers with = {}) const
    {
        auto* widget = find<QWidget>(label);
        QVERIFY2(widget, qPrintable(label));
        QTest::keyClick(widget, key, with);
    }

    QString page() const
    {
        const auto* tabs = window.findChild<QTabWidget*>();
        return tabs->tabText(tabs->currentIndex());
    }

    QString message() const { return window.findChild<MessageBar*>()->text(); }

    /// Does `action`, and answers the question with such a button; returns the question.
    static QString answering(
        QMessageBox::StandardButton button, const std::function<void()>& action)
    {
        QString text;
        inModal<QMessageBox>(
            [&](QMessageBox* box) {
                if (!box->button(button))
                    return false;
                text = box->text();
                QTest::mouseClick(box->button(button), Qt::LeftButton);
                return true;
            },
            action);
        return text;
    }

    /// Does `action`, and enters `path` in the file dialog that it opens.
    static void choosing(const QString& path, const std::function<void()>& action)
    {
        inModal<QFileDialog>(
            [&](QFileDialog* dialog) {
                auto* name = dialog->findChild<QLineEdit*>();
                name->setText(path);
                QTest::keyClick(name, Qt::Key_Return);
                return true;
            },
            action);
    }

    /// Does `action`, and `act` in dialogs of type T that it opens, until that returns true.
    template <typename T>
    static void inModal(const std::function<bool(T*)>& act, const std::function<void()>& action)
    {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget());
            timer.stop();
            if (!dialog || !act(dialog))
                timer.start();
        });
        timer.start(5);
        action();
    }

    MainWindow window;
};

/// A window, with the dock's panel that a test is about.
template <typename Panel> struct PanelDriver : WindowDriver {
    using WindowDriver::WindowDriver;

    Panel& panel = *window.findChild<Panel*>();

    QString problems() const { return textsIn(*panel.problems()); }
    QString state() const { return labelsIn(panel); }
};

#endif
