// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_FILES_H
#define TESTS_SUPPORT_FILES_H

#include <QByteArray>
#include <QFile>
#include <QString>

/// The bytes of the file `path`; null when it cannot be read.
inline QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Makes the file `path` hold `content`; a failure shows as a failed read later.
inline QString writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
    return path;
}

/// Makes the file `path` a program that runs the lines of a shell's `script`.
inline QString writeProgram(const QString& path, const QByteArray& script)
{
    writeFile(path, "#!/bin/sh\n" + script);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

#endif
