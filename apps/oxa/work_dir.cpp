#include "work_dir.h"

#include <QDir>
#include <QFile>

namespace {

constexpr char kMarkName[] = ".oxa-generated";
constexpr char kMarkText[] = "`oxa generate` made this directory and empties it on its next run.\n";

}

bool holdsForeignFiles(const QString& path)
{
    const QDir directory(path);
    return directory.exists() && !directory.exists(kMarkName)
        && !directory.isEmpty(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

bool mayEmpty(const QString& path, bool force, TextOut& err)
{
    const QFileInfo info(path);
    if (path.isEmpty()) {
        err << "error: the work directory has no name\n";
        return false;
    }
    if (info.exists() && !info.isDir()) {
        err << "error: " << path << " is not a directory\n";
        return false;
    }
    if (force || !holdsForeignFiles(path))
        return true;
    err << "error: " << path << " would be emptied, but `oxa generate` did not make what is in it;"
        << " name another --work-dir, or add --force to lose its content\n";
    return false;
}

void markWorkDir(const QString& path)
{
    QFile mark(path + "/" + kMarkName);
    if (mark.open(QIODevice::WriteOnly))
        mark.write(kMarkText);
}
