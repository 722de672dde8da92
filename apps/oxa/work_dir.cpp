// SPDX-License-Identifier: Apache-2.0
#include "work_dir.h"

#include "oxautils/generate/inputs.h"

namespace {

QString faultText(OXA::WorkDirFault fault, const QString& path, const QString& lost)
{
    switch (fault) {
    case OXA::WorkDirFault::NoName:
        return "the work directory's name is empty";
    case OXA::WorkDirFault::NoDirectory:
        return path + " is not a directory";
    case OXA::WorkDirFault::HoldsInput:
        return path + " would be emptied, but it contains, or is in, " + lost
            + "; choose another work directory";
    default:
        return path
            + " would be emptied, but `oxa generate` did not create its files; choose another"
              " --work-dir, or add --force to delete them";
    }
}

}

bool mayEmpty(const QString& path, bool force, const OXA_FILES::Inputs& inputs, TextOut& err)
{
    QString lost;
    const OXA::WorkDirFault fault = OXA::workDirFault(path, inputs, lost);
    if (fault == OXA::WorkDirFault::None
        || (force && fault == OXA::WorkDirFault::HoldsForeignFiles))
        return true;
    err.error(faultText(fault, path, lost));
    return false;
}

bool mayWrite(const QString& output, const OXA_FILES::Inputs& inputs, TextOut& err)
{
    if (output == "-") // standard output, and an input of this name is standard input
        return true;
    const QString lost = OXA_FILES::lostByWriting(output, inputs);
    if (!lost.isEmpty())
        err.error(output + " would replace " + lost
            + ", which this command reads; choose another file with -o");
    return lost.isEmpty();
}
