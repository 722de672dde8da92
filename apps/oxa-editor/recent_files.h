// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_RECENT_FILES_H
#define APPS_OXA_EDITOR_RECENT_FILES_H

#include <QMenu>

/// A menu of recently opened files, saved between runs.
class RecentFiles : public QMenu {
    Q_OBJECT

public:
    /// `setting`: where the paths are saved.
    RecentFiles(const QString& title, const QString& setting, QWidget* parent = nullptr);

    /// The last one first.
    QStringList paths() const;

    /// Puts `path` on top.
    void add(const QString& path);

Q_SIGNALS:
    void chosen(const QString& path);

private:
    void fill();

    QString m_setting;
};

#endif
