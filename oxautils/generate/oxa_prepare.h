#ifndef OXAUTILS_GENERATE_OXA_PREPARE_H
#define OXAUTILS_GENERATE_OXA_PREPARE_H

#include "oxautils/generate/oxa_arg.h"

#include <QStringList>

namespace OXA {

/// Empties the directory `path`, hidden entries included, and leaves it there. A symbolic link goes
/// itself, what it points to stays. Failures are ignored; without a path nothing is removed.
OXAUTILS_EXPORT void removeDir(const QString& path);

/// Writes the Verilog of an analyzer for a synthesis project of the host's own, and says what goes
/// into that project.
class OXAUTILS_EXPORT OxaPrepare {
public:
    /// The analyzer's sources in the order in which a project takes them; what they include is not
    /// listed. As concatenated, not cleaned.
    QStringList files;

    /// The directories to be searched for include files, cleaned.
    QStringList includePaths;

    /// Empties the work directory and generates into it. 1 when done; 0 when the configuration has
    /// no core or no known mode. Also 0, with a critical message and nothing removed, when the
    /// configuration is no XML that can be read, and when the work directory has no name, holds
    /// what the run reads or lies in the installed cores. With a `customTop`, the top wrapper is
    /// neither written nor listed. Files that cannot be written are only logged.
    int prepare(OxaArg arg);

    /// The steps of `prepare` for either mode, into the work directory as it is.
    int std_generate(OxaArg arg);
    int lite_generate(OxaArg arg);
};

}

#endif
