// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_RECENT_FILES_H
#define APPS_OXA_EDITOR_RECENT_FILES_H

#include <QMenu>

/// The menu of recently opened files, saved between runs.
class RecentFiles : public QMenu {
    Q_OBJECT

public:
    explicit RecentFiles(QWidget* parent = nullptr);

    /// Puts `path` on top.
    void add(const QString& path);

Q_SIGNALS:
    void chosen(const QString& path);

private:
    void fill();
};

#endif
