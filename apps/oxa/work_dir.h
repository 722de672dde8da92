#ifndef APPS_OXA_WORK_DIR_H
#define APPS_OXA_WORK_DIR_H

#include "text_out.h"

#include "files/input_guard.h"
#include "oxautils/generate/oxa_arg.h"

/// What a run of `arg` must not lose: `more` files that it reads, those that any run reads, the
/// program, and the user's home.
OXA_FILES::Inputs inputsOf(const OXA::OxaArg& arg, const QStringList& more);

/// Whether the directory `path` holds files, and no mark says that an earlier run made them.
bool holdsForeignFiles(const QString& path);

/// Whether generating may empty the directory `path`: none of `inputs` would be lost, and it is not
/// there, is empty, carries the mark of an earlier run, or `force` says so. Otherwise false, said
/// on `err`.
bool mayEmpty(const QString& path, bool force, const OXA_FILES::Inputs& inputs, TextOut& err);

/// Whether the file `output` may be written: none of `inputs` would be lost. Otherwise false, said
/// on `err`.
bool mayWrite(const QString& output, const OXA_FILES::Inputs& inputs, TextOut& err);

/// A work directory that belongs to a run, for as long as this object lives.
class WorkDir {
public:
    WorkDir() = default;
    ~WorkDir();
    Q_DISABLE_COPY(WorkDir)

    /// Makes the directory `path` when there is none, and leaves the mark in it, before anything is
    /// removed: what a killed run leaves can be emptied by the next. False, with `error`, when
    /// another run has it or nothing can be written there.
    bool claim(const QString& path, QString& error);

private:
    int m_mark = -1; // the lock is on the mark, and ends with the process
};

#endif
