// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WELCOME_PAGE_H
#define APPS_OXA_EDITOR_WELCOME_PAGE_H

#include <QWidget>

class QLabel;
class QListWidget;
class QVBoxLayout;

/// What a window without a configuration offers: the ways to get one.
class WelcomePage : public QWidget {
    Q_OBJECT

public:
    explicit WelcomePage(QWidget* parent = nullptr);

    /// Shows the files opened before, the last one first.
    void setFiles(const QStringList& paths);

Q_SIGNALS:
    void standardWanted();
    void liteWanted();
    void openWanted();
    void designWanted(); ///< a new configuration for signals of a design
    void exampleWanted();
    void chosen(const QString& path); ///< a file opened before

private:
    void addChoice(QVBoxLayout& layout, const QString& text, const QString& hint, const char* icon,
        void (WelcomePage::*wanted)());
    void addRecent(QVBoxLayout& layout);

    QListWidget* m_files;
    QLabel* m_none;
};

#endif
