// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/work_dir.h"

#include "files/fail.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/inputs.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace OXA {

namespace {

/// The process in the mark.
QString ownerOf(const QString& mark)
{
    QFile file(mark);
    file.open(QIODevice::ReadOnly);
    static const QRegularExpression process("process \\d+");
    const QString owner = process.match(QString::fromUtf8(file.read(1000))).captured();
    return owner.isEmpty() ? QString("another process") : owner;
}

}

bool holdsForeignFiles(const QString& path)
{
    const QDir directory(path);
    return directory.exists() && !directory.exists(WORK_DIR_MARK)
        && !directory.isEmpty(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

WorkDirFault workDirFault(const QString& path, const OXA_FILES::Inputs& inputs, QString& lost)
{
    if (path.isEmpty())
        return WorkDirFault::NoName;
    const QFileInfo info(path);
    if (info.exists() && !info.isDir())
        return WorkDirFault::NoDirectory;
    lost = OXA_FILES::lostByEmptying(path, inputs);
    if (!lost.isEmpty())
        return WorkDirFault::HoldsInput;
    return holdsForeignFiles(path) ? WorkDirFault::HoldsForeignFiles : WorkDirFault::None;
}

WorkDir::~WorkDir()
{
    if (m_mark >= 0)
        ::close(m_mark);
}

bool WorkDir::claim(const QString& path, QString* error)
{
    const QString mark = path + '/' + WORK_DIR_MARK;
    errno = 0;
    if (QDir().mkpath(path))
        m_mark = ::open(
            QFile::encodeName(mark).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (m_mark < 0)
        return fail(error, path + ": cannot be written: " + qt_error_string(errno));
    // On a file system without locks, the run continues.
    if (::flock(m_mark, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return fail(error,
            path + " is in use by " + ownerOf(mark)
                + "; wait for its end, or choose another work directory");
    // On a full disk, the mark may be empty.
    const QByteArray text
        = QString("`oxa generate` made this directory and empties it on its next run.\n"
                  "The last run was process %1.\n")
              .arg(::getpid())
              .toUtf8();
    const bool hasWords = ::write(m_mark, text.constData(), size_t(text.size())) == text.size()
        && ::ftruncate(m_mark, text.size()) == 0;
    Q_UNUSED(hasWords)
    return true;
}

}
