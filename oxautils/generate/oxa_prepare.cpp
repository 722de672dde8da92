// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/oxa_prepare.h"

#include "files/empty_directory.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/generate/lite_files.h"
#include "oxautils/generate/run.h"
#include "oxautils/generate/source_list.h"
#include "oxautils/generate/standard_files.h"

namespace OXA {

void removeDir(const QString& path) { OXA_FILES::emptyDirectory(path); }

int OxaPrepare::prepare(OxaArg arg)
{
    files.clear();
    includePaths.clear();
    OxaMode mode = Invalid;
    if (!clearWorkDir(arg, mode))
        return 0;
    switch (mode) {
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
    writeNames(arg, cores);
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
    writeNames(arg, cores.mid(0, 1)); // only this core is built
    if (arg.customTop.isEmpty())
        lite_generateOxaTop(arg, cores);

    includePaths += liteIncludePaths(arg);
    files += liteSources(arg);
    if (arg.customTop.isEmpty())
        files += topWrapperPath(arg);
    return 1;
}

}
