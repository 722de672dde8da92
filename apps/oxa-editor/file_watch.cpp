// SPDX-License-Identifier: Apache-2.0
#include "file_watch.h"

#include "document.h"

#include <QFileInfo>

namespace {

constexpr int kSettleTime = 100; // ms

}

FileWatch::FileWatch(Document& document, QObject* parent)
    : QObject(parent)
    , m_document(document)
{
    m_settled.setSingleShot(true);
    m_settled.setInterval(kSettleTime);
    connect(&m_document, &Document::pathChanged, this, &FileWatch::watch);
    connect(
        &m_watcher, &QFileSystemWatcher::fileChanged, &m_settled, QOverload<>::of(&QTimer::start));
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_settled,
        QOverload<>::of(&QTimer::start));
    connect(&m_settled, &QTimer::timeout, this, &FileWatch::look);
}

/// Watches the file and its directory: Qt stops watching a file that is replaced.
void FileWatch::watch()
{
    const QStringList before = m_watcher.files() + m_watcher.directories();
    if (!before.isEmpty())
        m_watcher.removePaths(before);
    const QString path = m_document.path();
    if (path.isEmpty())
        return;
    m_watcher.addPath(QFileInfo(path).absolutePath());
    if (QFileInfo::exists(path))
        m_watcher.addPath(path);
}

void FileWatch::look()
{
    watch();
    if (m_document.isFileChanged())
        Q_EMIT changed(QFileInfo::exists(m_document.path()));
    else
        Q_EMIT unchanged();
}
