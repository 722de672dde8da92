// SPDX-License-Identifier: Apache-2.0
#ifndef FILES_FILE_STAT_H
#define FILES_FILE_STAT_H

#include <QFile>

#include <optional>
#include <sys/stat.h>

namespace OXA_FILES {

/// The system's record of the file `path`; none when it does not exist.
inline std::optional<struct stat> statOf(const QString& path)
{
    struct stat info { };
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return {};
    return info;
}

/// Whether both are the same file, by any names.
inline bool isSame(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}

#endif
