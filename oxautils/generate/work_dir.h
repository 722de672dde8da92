#ifndef OXAUTILS_GENERATE_WORK_DIR_H
#define OXAUTILS_GENERATE_WORK_DIR_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// Whether the directory `path` holds files, and no mark says that an earlier run made them.
OXAUTILS_EXPORT bool holdsForeignFiles(const QString& path);

/// Why a run may not empty a directory.
enum class WorkDirFault {
    None,
    NoName,
    NoDirectory, ///< it is something else
    HoldsInput, ///< or lies in one
    HoldsForeignFiles, ///< unless the user has said that they may go
};

/// A work directory that belongs to a run, for as long as this object lives.
class OXAUTILS_EXPORT WorkDir {
public:
    WorkDir() = default;
    ~WorkDir();
    Q_DISABLE_COPY(WorkDir)

    /// Makes the directory `path` when there is none, and leaves the mark in it, before anything is
    /// removed: what a killed run leaves can be emptied by the next. False, with `error`, when
    /// another run has it or nothing can be written there.
    bool claim(const QString& path, QString* error);

private:
    int m_mark = -1; // the lock is on the mark, and ends with the process
};

}

#endif
