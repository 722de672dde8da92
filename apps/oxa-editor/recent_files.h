#ifndef APPS_OXA_EDITOR_RECENT_FILES_H
#define APPS_OXA_EDITOR_RECENT_FILES_H

#include <QMenu>

/// The menu of the files that were opened last, which is kept from one run to the next.
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
