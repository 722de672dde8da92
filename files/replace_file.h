#ifndef FILES_REPLACE_FILE_H
#define FILES_REPLACE_FILE_H

#include <QByteArray>
#include <QString>

#include <functional>

class QIODevice;

namespace OXA_FILES {

/// Writes a file's content to `out`. False when `out` takes no more or, with `error`, when there is
/// none to write.
using Fill = std::function<bool(QIODevice& out, QString* error)>;

/// Makes `path` hold what `fill` writes, or leaves it as it was: then false, and `error` is
/// "PATH: cannot be written: REASON".
///
/// A new file takes the old one's place in one step, with its permissions. A file with another
/// name (a hard link), a file of another user or group, and one whose directory takes no new file
/// is written over instead. It is put back when that fails; only a sudden end in between can leave
/// half of it. What is no regular file (a FIFO, a device, the standard output) is opened and
/// written.
bool replaceFile(const QString& path, const Fill& fill, QString* error);
bool replaceFile(const QString& path, const QByteArray& content, QString* error);

/// Whether `path` is written as a stream, and so has no content that could be read back: it is
/// there and neither a regular file nor a directory, or it is the standard output.
bool isStream(const QString& path);

/// The same as `replaceFile` for a file of a directory that this run emptied: it is not worth a
/// detour over another name or the wait for the disk. After a failure, half of it may be there.
bool writeFile(const QString& path, const Fill& fill, QString* error);
bool writeFile(const QString& path, const QByteArray& content, QString* error);

}

#endif
