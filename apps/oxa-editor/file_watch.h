// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_FILE_WATCH_H
#define APPS_OXA_EDITOR_FILE_WATCH_H

#include <QFileSystemWatcher>
#include <QTimer>

class Document;

/// Detects that another program changed or removed the document's file.
class FileWatch : public QObject {
    Q_OBJECT

public:
    explicit FileWatch(Document& document, QObject* parent = nullptr);

Q_SIGNALS:
    void changed(bool exists);
    void unchanged(); ///< the file is again what it was, or other files changed

private:
    void watch();
    void look();

    Document& m_document;
    QFileSystemWatcher m_watcher;
    QTimer m_settled; // programs write in several steps
};

#endif
