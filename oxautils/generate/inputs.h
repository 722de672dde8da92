#ifndef OXAUTILS_GENERATE_INPUTS_H
#define OXAUTILS_GENERATE_INPUTS_H

#include "files/input_guard.h"
#include "oxautils/generate/installed.h"
#include "oxautils/generate/oxa_arg.h"
#include "oxautils/generate/work_dir.h"

namespace OXA {

/// What a run of `arg` reads, and so must not lose.
inline OXA_FILES::Inputs inputsOf(const OxaArg& arg)
{
    return {
        {arg.configFile,           qEnvironmentVariable("OXA_DEVICE_DB")}, // the device catalogue
        { arg.ipDir + "/OXA", arg.ipDir + "/OXA_LITE",                 arg.ipDir + "/boards"}
    };
}

/// The same for a program, which must not lose itself either, nor what is installed with it, the
/// user's home and `more` files that it reads.
inline OXA_FILES::Inputs inputsOf(const OxaArg& arg, const QStringList& more)
{
    OXA_FILES::Inputs inputs = inputsOf(arg);
    inputs.paths += QStringList {QCoreApplication::applicationFilePath(), QDir::homePath()} + more;
    inputs.sources += installedDataDir();
    return inputs;
}

/// Whether a run that reads `inputs` may empty the directory `path`; `lost` is the input that it
/// would lose.
OXAUTILS_EXPORT WorkDirFault workDirFault(
    const QString& path, const OXA_FILES::Inputs& inputs, QString& lost);

}

#endif
