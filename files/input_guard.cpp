// SPDX-License-Identifier: Apache-2.0
#include "files/input_guard.h"

#include "files/file_stat.h"

#include <QDir>
#include <QDirIterator>

#include <unistd.h>

namespace OXA_FILES {

namespace {

constexpr int kMostLinks = 40; // the limit of Linux

/// The links on the way to a file.
struct Trail {
    QStringList links; ///< followed links, without a link in their own path
    QString end; ///< the file, without a link in its path; may not exist
};

/// The target of the link `path`, as written in it; null when it is not a link.
QString linkTarget(const QString& path)
{
    QByteArray target(PATH_MAX, '\0');
    const ssize_t size
        = ::readlink(QFile::encodeName(path).constData(), target.data(), size_t(target.size()));
    return size < 0 ? QString() : QFile::decodeName(target.left(int(size)));
}

QString parentOf(const QString& path)
{
    const int slash = path.lastIndexOf('/');
    return slash <= 0 ? QString("/") : path.left(slash);
}

Trail trailOf(const QString& path)
{
    Trail trail;
    trail.end = "/";
    QStringList names = (path.startsWith('/') ? path : QDir::currentPath() + '/' + path).split('/');
    while (!names.isEmpty()) {
        const QString name = names.takeFirst();
        if (name.isEmpty() || name == ".")
            continue;
        if (name == "..") {
            trail.end = parentOf(trail.end);
            continue;
        }
        const QString entry = (trail.end == "/" ? "" : trail.end) + '/' + name;
        const QString target = trail.links.size() < kMostLinks ? linkTarget(entry) : QString();
        if (target.isNull()) {
            trail.end = entry;
            continue;
        }
        trail.links += entry;
        names = target.split('/') + names;
        if (target.startsWith('/'))
            trail.end = "/";
    }
    return trail;
}

bool isSameFile(const QString& a, const QString& b)
{
    if (a == b)
        return true;
    const auto first = statOf(a);
    const auto second = first ? statOf(b) : first;
    return second && isSame(*first, *second);
}

/// Whether `path` is `directory` or inside it; both without a link in their path.
bool isWithin(const QString& path, const QString& directory)
{
    for (QString at = path; !isSameFile(at, directory); at = parentOf(at)) {
        if (at == "/")
            return false;
    }
    return true;
}

/// The places that a path can mean: with ".." after a link, the system's and that of programs which
/// shorten the path first.
QList<Trail> meaningsOf(const QString& path)
{
    if (path.isEmpty())
        return {};
    return {trailOf(path), trailOf(QDir::cleanPath(path))};
}

bool wouldBeTaken(const Trail& input, const QString& directory)
{
    for (const QString& link : input.links) {
        if (isWithin(link, directory))
            return true;
    }
    return isWithin(input.end, directory);
}

/// Whether a file in `directory` is the same file as `file`.
bool holdsSameFile(const QString& directory, const QString& file)
{
    const auto info = statOf(file);
    if (!info || !S_ISREG(info->st_mode) || info->st_nlink < 2)
        return false;
    QDirIterator it(directory, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        if (isSameFile(it.next(), file))
            return true;
    }
    return false;
}

}

QString lostByEmptying(const QString& path, const Inputs& inputs)
{
    for (const Trail& directory : meaningsOf(path)) {
        for (const QString& input : inputs.paths + inputs.sources) {
            for (const Trail& meaning : meaningsOf(input)) {
                if (wouldBeTaken(meaning, directory.end))
                    return input;
            }
        }
        for (const QString& source : inputs.sources) {
            for (const Trail& meaning : meaningsOf(source)) {
                if (isWithin(directory.end, meaning.end))
                    return source;
            }
        }
    }
    return {};
}

QString lostByWriting(const QString& output, const Inputs& inputs)
{
    for (const Trail& file : meaningsOf(output)) {
        for (const QString& input : inputs.paths) {
            for (const Trail& meaning : meaningsOf(input)) {
                if (isSameFile(file.end, meaning.end))
                    return input;
            }
        }
        for (const QString& source : inputs.sources) {
            for (const Trail& meaning : meaningsOf(source)) {
                if (isWithin(file.end, meaning.end) || holdsSameFile(meaning.end, file.end))
                    return source;
            }
        }
    }
    return {};
}

}
