// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_WORK_DIR_H
#define OXAUTILS_GENERATE_WORK_DIR_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// Whether the directory `path` contains files and has no mark of an earlier run.
OXAUTILS_EXPORT bool holdsForeignFiles(const QString& path);

/// Why a run may not empty a directory.
enum class WorkDirFault {
    None,
    NoName,
    NoDirectory, ///< it is not a directory
    HoldsInput, ///< it contains an input, or is in one
    HoldsForeignFiles, ///< it contains files of others
};

/// A work directory that a run has claimed, during the lifetime of this object.
class OXAUTILS_EXPORT WorkDir {
public:
    WorkDir() = default;
    ~WorkDir();
    Q_DISABLE_COPY(WorkDir)

    /// Creates the directory `path` when it does not exist, and writes the mark before anything is
    /// removed, so that the next run can empty what a killed run leaves. False, with `error`, when
    /// another run uses it or it cannot be written.
    bool claim(const QString& path, QString* error);

private:
    int m_mark = -1; // the lock is on the mark, and ends with the process
};

}

#endif
