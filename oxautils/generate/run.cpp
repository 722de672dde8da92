#include "oxautils/generate/run.h"

#include "oxautils/config/lite_config.h"
#include "oxautils/config/version.h"
#include "oxautils/generate/oxa_prepare.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

namespace OXA {

namespace {

bool isInside(const QString& path, const QString& directory)
{
    return path == directory || path.startsWith(directory == "/" ? directory : directory + '/');
}

/// Whether emptying `directory` would take `path`, or a link on the way to it.
bool wouldBeTaken(const QString& path, const QString& directory)
{
    if (path.isEmpty())
        return false;
    const QFileInfo file(path);
    const QString asNamed = QDir::cleanPath(file.absoluteFilePath());
    const QString beside = QFileInfo(file.absolutePath()).canonicalFilePath();
    const QString real = file.canonicalFilePath();
    const QString directoryAsNamed = QDir::cleanPath(QFileInfo(directory).absoluteFilePath());
    const QString directoryReal = QFileInfo(directory).canonicalFilePath();
    return isInside(asNamed, directoryAsNamed) || isInside(asNamed, directoryReal)
        || (!beside.isEmpty() && isInside(beside, directoryReal))
        || (!real.isEmpty() && isInside(real, directoryReal));
}

}

bool clearWorkDir(const OxaArg& arg)
{
    if (arg.workDir.isEmpty()) { // generated paths would begin at the root directory
        qCritical("no work directory is named");
        return false;
    }
    if (!QFileInfo::exists(arg.workDir))
        return true;
    const QString needed[] = {arg.configFile, arg.ipDir};
    for (const QString& path : needed) {
        if (!wouldBeTaken(path, arg.workDir))
            continue;
        qCritical().noquote() << "the work directory" << arg.workDir
                              << "would be emptied, but it holds" << path;
        return false;
    }
    removeDir(arg.workDir);
    return true;
}

QList<AOCore_Lite*> readLiteCores(const QString& path)
{
    try {
        return readOXAConfigFromXml_Lite(path);
    } catch (const CompareException& exception) {
        qCritical().noquote() << path + ":" << exception.message();
        return {};
    }
}

}
