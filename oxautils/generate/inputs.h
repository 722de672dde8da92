// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_INPUTS_H
#define OXAUTILS_GENERATE_INPUTS_H

#include "files/input_guard.h"
#include "oxautils/generate/installed.h"
#include "oxautils/generate/oxa_arg.h"
#include "oxautils/generate/work_dir.h"

namespace OXA {

/// The inputs of a run of `arg`, which it must not delete.
inline OXA_FILES::Inputs inputsOf(const OxaArg& arg)
{
    return {
        {arg.configFile,           qEnvironmentVariable("OXA_DEVICE_DB")}, // the device catalogue
        { arg.ipDir + "/OXA", arg.ipDir + "/OXA_LITE",                 arg.ipDir + "/boards"}
    };
}

/// The same for a program with installed data in `dataDir`: also the program itself, the user's
/// home and `more` input files.
inline OXA_FILES::Inputs inputsOf(const OxaArg& arg, const QStringList& more)
{
    OXA_FILES::Inputs inputs = inputsOf(arg);
    inputs.paths += QStringList {QCoreApplication::applicationFilePath(), QDir::homePath()} + more;
    inputs.sources += installedDataDir();
    return inputs;
}

/// Whether a run with `inputs` may empty the directory `path`; `lost` is the input that would be
/// deleted.
OXAUTILS_EXPORT WorkDirFault workDirFault(
    const QString& path, const OXA_FILES::Inputs& inputs, QString& lost);

}

#endif
