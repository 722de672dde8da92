// SPDX-License-Identifier: Apache-2.0
#include "files/empty_directory.h"

#include <QDir>

namespace OXA_FILES {

void emptyDirectory(const QString& path, const QString& kept)
{
    if (path.isEmpty())
        return; // Qt takes it for the current directory
    const QDir directory(path);
    // System entries too: a dangling link is one.
    const QFileInfoList entries = directory.entryInfoList(
        QDir::Files | QDir::AllDirs | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDir::Unsorted);
    for (const QFileInfo& entry : entries) {
        // Not by its absolute path, which is another place when ".." follows a link.
        if (entry.isDir() && !entry.isSymLink()) {
            emptyDirectory(entry.filePath());
            directory.rmdir(entry.fileName());
        } else if (entry.fileName() != kept) {
            QFile::remove(entry.filePath());
        }
    }
}

}
