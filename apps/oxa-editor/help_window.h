// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_HELP_WINDOW_H
#define APPS_OXA_EDITOR_HELP_WINDOW_H

#include <QDialog>

class HelpBrowser;
class QLabel;
class QLineEdit;
class QUrl;

/// Shows the installed pages of the documentation, which are Markdown files on this computer.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent);

    /// Shows the page `name` in the help window of `owner`: "editor.md" at the heading for what has
    /// the focus there. Says why when the page is not installed.
    static void showFor(QWidget& owner, const QString& name);

    /// Shows the page `name`, such as "editor.md", at the heading that links call `anchor`, or its
    /// beginning. False when the page is not installed.
    bool showPage(const QString& name, const QString& anchor);

private:
    static QString directory(); ///< of the installed pages
    void layOut();
    void follow(const QUrl& link);
    void scrollTo(const QString& anchor);
    void find();
    void say(const QString& text); ///< below the page

    HelpBrowser* m_pages;
    QLineEdit* m_wanted;
    QLabel* m_state;
};

/// Shows help in modal dialogs, where the keys of the main window do nothing.
class DialogHelp : public QObject {
public:
    explicit DialogHelp(QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// Says which heading of the page about the editor describes `widget` and what is in it.
void setHelpAnchor(QWidget* widget, const char* anchor);

/// The heading for the widget `focus`, or for the nearest one around it that has one.
QString helpAnchorOf(const QWidget* focus);

#endif
