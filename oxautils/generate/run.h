// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_RUN_H
#define OXAUTILS_GENERATE_RUN_H

#include "oxautils/config/oxa_mode.h"
#include "oxautils/generate/name_sums.h"
#include "oxautils/generate/oxa_arg.h"
#include "oxautils/model/ao_core_lite.h"

#include <QList>

namespace OXA {

/// Empties the work directory of `arg`, except for its mark, and reads the configuration's mode.
/// False, with a critical message and nothing removed, when the directory's name is empty, or it
/// contains an input or is in the installed cores, and when the configuration cannot be read as
/// XML.
bool clearWorkDir(const OxaArg& arg, OxaMode& mode);

/// False, with a critical message, when the netlist would replace an input of the run.
bool mayWriteOutput(const OxaArg& arg);

/// The cores of the Lite file `path`; none, with a critical message, when its version is not valid.
/// No exception leaves the library.
QList<AOCore_Lite*> readLiteCores(const QString& path);

/// Writes the sums of the cores' names into the work directory.
template <typename Core> void writeNames(const OxaArg& arg, const QList<Core*>& cores)
{
    QList<NameSums> sums;
    for (const Core* core : cores)
        sums += nameSums(*core);
    writeNameSums(arg.workDir, sums);
}

/// Deletes the cores of a run when the run ends.
template <typename Core> class CoreOwner {
public:
    explicit CoreOwner(const QList<Core*>& cores)
        : m_cores(cores)
    {
    }
    ~CoreOwner() { qDeleteAll(m_cores); }
    CoreOwner(const CoreOwner&) = delete;
    CoreOwner& operator=(const CoreOwner&) = delete;

private:
    QList<Core*> m_cores;
};

}

#endif
