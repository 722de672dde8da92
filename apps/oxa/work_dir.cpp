#include "work_dir.h"

#include "oxautils/generate/work_dir.h"

#include <QFileInfo>

bool mayEmpty(const QString& path, bool force, const OXA_FILES::Inputs& inputs, TextOut& err)
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
    if (const QString lost = OXA_FILES::lostByEmptying(path, inputs); !lost.isEmpty()) {
        err << "error: " << path << " would be emptied, but it holds or lies in " << lost
            << "; name another work directory\n";
        return false;
    }
    if (force || !OXA::holdsForeignFiles(path))
        return true;
    err << "error: " << path << " would be emptied, but `oxa generate` did not make what is in it;"
        << " name another --work-dir, or add --force to lose its content\n";
    return false;
}

bool mayWrite(const QString& output, const OXA_FILES::Inputs& inputs, TextOut& err)
{
    const QString lost = OXA_FILES::lostByWriting(output, inputs);
    if (!lost.isEmpty())
        err << "error: " << output << " would replace " << lost
            << ", which this run reads; name another file with -o\n";
    return lost.isEmpty();
}
