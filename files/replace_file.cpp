// SPDX-License-Identifier: Apache-2.0
#include "files/replace_file.h"

#include "files/fail.h"
#include "files/file_stat.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace OXA_FILES {

namespace {

constexpr qint64 kChunk = 1 << 20;

/// Whether a new file can replace the old one: it belongs to this user and has no other name, which
/// would keep the old content.
bool isReplaceable(const QString& path, const struct stat& old)
{
    const auto directory = statOf(QFileInfo(QFileInfo(path).canonicalFilePath()).absolutePath());
    const bool inherits = directory && (directory->st_mode & S_ISGID);
    return old.st_nlink == 1 && old.st_uid == ::geteuid()
        && old.st_gid == (inherits ? directory->st_gid : ::getegid());
}

/// The standard output or error, when it is this file: opening the file again would write from its
/// beginning. Otherwise -1.
int openDescriptor(const struct stat& file)
{
    for (const int descriptor : {STDOUT_FILENO, STDERR_FILENO}) {
        struct stat info { };
        if (::fstat(descriptor, &info) == 0 && isSame(info, file))
            return descriptor;
    }
    return -1;
}

bool isStream(const struct stat& file)
{
    return !S_ISDIR(file.st_mode) && (!S_ISREG(file.st_mode) || openDescriptor(file) >= 0);
}

/// Makes a write to a closed pipe fail instead of ending this program.
class IgnoredBrokenPipe {
public:
    IgnoredBrokenPipe()
    {
        sigemptyset(&m_pipe);
        sigaddset(&m_pipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
    }
    ~IgnoredBrokenPipe()
    {
        const timespec now {};
        while (sigtimedwait(&m_pipe, nullptr, &now) > 0) { }
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    Q_DISABLE_COPY(IgnoredBrokenPipe)

private:
    sigset_t m_pipe {};
    sigset_t m_before {};
};

/// Why the last write to `file` failed; Qt gives no reason for a partial write.
QString writeProblem(const QFileDevice& file)
{
    const int number = errno;
    return file.error() == QFileDevice::NoError ? qt_error_string(number) : file.errorString();
}

// Each of these is false, with a reason, on failure.

/// Fills `file`, which is open, completely.
bool fillFile(QFileDevice& file, const Fill& fill, QString* error)
{
    // A commit or a close would not report failed flushes.
    QString reason;
    return (fill(file, &reason) && file.flush())
        || OXA::fail(error, reason.isEmpty() ? writeProblem(file) : reason);
}

bool fillNode(const QString& path, const struct stat& node, const Fill& fill, QString* error)
{
    const IgnoredBrokenPipe ignored;
    QFile file(path);
    const int descriptor = openDescriptor(node);
    if (descriptor >= 0)
        std::fflush(nullptr); // earlier output comes first
    const bool isOpen = descriptor < 0 ? file.open(QIODevice::WriteOnly)
                                       : file.open(descriptor, QIODevice::WriteOnly);
    if (isOpen)
        return fillFile(file, fill, error);
    return OXA::fail(error, file.errorString());
}

/// Copies the content of `from` to `to`. `to` is not truncated first: it keeps its space on the
/// disk, so that the old content can be restored on a full disk.
bool copyOver(QFileDevice& from, QFileDevice& to)
{
    if (!from.seek(0) || !to.seek(0))
        return false;
    for (QByteArray chunk = from.read(kChunk); !chunk.isEmpty(); chunk = from.read(kChunk)) {
        if (to.write(chunk) != chunk.size())
            return false;
    }
    return from.error() == QFileDevice::NoError && to.flush() && to.resize(from.size());
}

bool fillInPlace(const QString& path, const Fill& fill, QString* error)
{
    QTemporaryFile fresh;
    QTemporaryFile old;
    QFile file(path);
    if (!fresh.open() || !old.open())
        return OXA::fail(error, "cannot create a temporary file in " + QDir::tempPath());
    if (!fillFile(fresh, fill, error))
        return false;
    // Unbuffered: failed writes must not be repeated.
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return OXA::fail(error, file.errorString());
    if (!copyOver(file, old))
        return OXA::fail(error, "cannot back it up in " + QDir::tempPath());
    if (copyOver(fresh, file))
        return true;
    QString reason = writeProblem(file);
    if (!copyOver(old, file)) {
        old.setAutoRemove(false);
        reason += "; its old content is in " + old.fileName();
    }
    return OXA::fail(error, reason);
}

bool fillAnew(const QString& path, const Fill& fill, QString* error)
{
    QSaveFile file(path);
    const bool isOpen = file.open(QIODevice::WriteOnly);
    if (isOpen && !fillFile(file, fill, error))
        return false;
    return (isOpen && file.commit()) || OXA::fail(error, file.errorString());
}

bool fillPath(const QString& path, const Fill& fill, QString* error)
{
    const auto old = statOf(path);
    if (!old)
        return fillAnew(path, fill, error);
    if (S_ISDIR(old->st_mode))
        return OXA::fail(error, "it is a directory");
    if (isStream(*old))
        return fillNode(path, *old, fill, error);
    const QFileInfo directory(QFileInfo(QFileInfo(path).canonicalFilePath()).absolutePath());
    if (!isReplaceable(path, *old) || !directory.isWritable())
        return fillInPlace(path, fill, error);
    return fillAnew(path, fill, error);
}

Fill bytes(const QByteArray& content)
{
    return [&content](QIODevice& out, QString*) { return out.write(content) == content.size(); };
}

QString sentence(const QString& path, const QString& reason)
{
    return path + ": cannot be written: " + reason;
}

}

bool replaceFile(const QString& path, const Fill& fill, QString* error)
{
    QString reason;
    return fillPath(path, fill, &reason) || OXA::fail(error, sentence(path, reason));
}

bool replaceFile(const QString& path, const QByteArray& content, QString* error)
{
    return replaceFile(path, bytes(content), error);
}

bool isStream(const QString& path)
{
    const auto info = statOf(path);
    return info && isStream(*info);
}

bool writeFile(const QString& path, const Fill& fill, QString* error)
{
    QFile file(path);
    QString reason;
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate) && fillFile(file, fill, &reason))
        return true;
    return OXA::fail(error, sentence(path, reason.isEmpty() ? file.errorString() : reason));
}

bool writeFile(const QString& path, const QByteArray& content, QString* error)
{
    return writeFile(path, bytes(content), error);
}

}
