// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_OXA_PREPARE_H
#define OXAUTILS_GENERATE_OXA_PREPARE_H

#include "oxautils/generate/oxa_arg.h"

#include <QStringList>

namespace OXA {

/// Empties the directory `path`, hidden entries included. Symbolic links are removed, their targets
/// are not. Failures are ignored; an empty path does nothing.
OXAUTILS_EXPORT void removeDir(const QString& path);

/// Writes the Verilog of an analyzer for a host's own synthesis project, and lists the files of
/// that project.
class OXAUTILS_EXPORT OxaPrepare {
public:
    /// The analyzer's sources in the order for a project, without the files that they include.
    /// Paths are concatenated, not cleaned.
    QStringList files;

    /// The directories for include files, cleaned.
    QStringList includePaths;

    /// Empties the work directory and generates into it. 1 when done; 0 when the configuration has
    /// no core or no known mode. Also 0, with a critical message and nothing removed, when the
    /// configuration cannot be read as XML, and when the work directory's name is empty, or it
    /// contains an input or is in the installed cores. With a `customTop`, the top wrapper is
    /// neither written nor listed. Files that cannot be written are only logged.
    int prepare(OxaArg arg);

    /// The steps of `prepare` for either mode, without emptying the work directory.
    int std_generate(OxaArg arg);
    int lite_generate(OxaArg arg); ///< for a Lite configuration; the same results
};

}

#endif
