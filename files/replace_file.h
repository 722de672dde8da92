// SPDX-License-Identifier: Apache-2.0
#ifndef FILES_REPLACE_FILE_H
#define FILES_REPLACE_FILE_H

#include <QByteArray>
#include <QString>

#include <functional>

class QIODevice;

namespace OXA_FILES {

/// Writes a file's content to `out`. False when `out` fails or, with `error`, when there is no
/// content.
using Fill = std::function<bool(QIODevice& out, QString* error)>;

/// Replaces the content of `path` by what `fill` writes. On failure `path` is unchanged, the result
/// is false, and `error` is "PATH: cannot be written: REASON".
///
/// A new file replaces the old one in one step, with its permissions. A file with another name (a
/// hard link), a file of another user or group, and one whose directory cannot get a new file is
/// overwritten instead. It is restored when that fails; only a crash can leave it incomplete. What
/// is not a regular file (a FIFO, a device, the standard output) is opened and written.
bool replaceFile(const QString& path, const Fill& fill, QString* error);
bool replaceFile(const QString& path, const QByteArray& content, QString* error);

/// Whether `path` is written as a stream, so its content cannot be read back: it exists and is
/// neither a regular file nor a directory, or it is the standard output.
bool isStream(const QString& path);

/// The same as `replaceFile` for a file in a directory that this run emptied: without a backup and
/// without waiting for the disk. After a failure, it may be incomplete.
bool writeFile(const QString& path, const Fill& fill, QString* error);
bool writeFile(const QString& path, const QByteArray& content, QString* error);

}

#endif
