#include "oxautils/generate/oxa_prepare.h"

#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/generate/lite_files.h"
#include "oxautils/generate/run.h"
#include "oxautils/generate/source_list.h"
#include "oxautils/generate/standard_files.h"

#include <QDir>

namespace OXA {

void removeDir(const QString& path)
{
    const QDir directory(path);
    // System entries too: a link that points nowhere is one.
    const QFileInfoList entries = directory.entryInfoList(
        QDir::Files | QDir::AllDirs | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDir::Unsorted);
    for (const QFileInfo& entry : entries) {
        if (entry.isDir() && !entry.isSymLink()) {
            removeDir(entry.absoluteFilePath());
            directory.rmdir(entry.fileName());
        } else {
            QFile::remove(entry.absoluteFilePath());
        }
    }
}

int OxaPrepare::prepare(OxaArg arg)
{
    files.clear();
    includePaths.clear();
    if (!clearWorkDir(arg))
        return 0;
    switch (oxaModeFromOxaConfigFile(arg.configFile)) {
    case Standard:
        return std_generate(arg);
    case Lite:
        return lite_generate(arg);
    default:
        return 0;
    }
}

int OxaPrepare::std_generate(OxaArg arg)
{
    const QList<AoCore*> cores = readOXAConfigFromXml(arg.configFile);
    const CoreOwner owner(cores);
    if (cores.isEmpty())
        return 0;
    std_generateFileForAoCtrl(arg, cores);
    std_generateFilesForAoCore(arg, cores);
    if (arg.customTop.isEmpty())
        std_generateOxaTop(arg, cores);

    includePaths += standardIncludePaths(arg);
    files += standardSources(arg, cores.size());
    if (arg.customTop.isEmpty())
        files += topWrapperPath(arg);
    return 1;
}

int OxaPrepare::lite_generate(OxaArg arg)
{
    const QList<AOCore_Lite*> cores = readLiteCores(arg.configFile);
    const CoreOwner owner(cores);
    if (cores.isEmpty())
        return 0;
    lite_generateFilesForAoCtrl(arg, cores);
    lite_generateFilesForAoCore(arg, cores);
    if (arg.customTop.isEmpty())
        lite_generateOxaTop(arg, cores);

    includePaths += liteIncludePaths(arg);
    files += liteSources(arg);
    if (arg.customTop.isEmpty())
        files += topWrapperPath(arg);
    return 1;
}

}
