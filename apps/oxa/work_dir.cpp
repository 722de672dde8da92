#include "work_dir.h"

#include "oxautils/generate/inputs.h"

namespace {

/// What is wrong, and what to do about it.
QString faultText(OXA::WorkDirFault fault, const QString& path, const QString& lost)
{
    switch (fault) {
    case OXA::WorkDirFault::NoName:
        return "the work directory has no name";
    case OXA::WorkDirFault::NoDirectory:
        return path + " is not a directory";
    case OXA::WorkDirFault::HoldsInput:
        return path + " would be emptied, but it holds or lies in " + lost
            + "; name another work directory";
    default:
        return path
            + " would be emptied, but `oxa generate` did not make what is in it; name another"
              " --work-dir, or add --force to lose its content";
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
    err << "error: " << faultText(fault, path, lost) << '\n';
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
