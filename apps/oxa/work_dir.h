#ifndef APPS_OXA_WORK_DIR_H
#define APPS_OXA_WORK_DIR_H

#include "text_out.h"

#include "files/input_guard.h"

// Each is false, said on `err`, when one of `inputs` would be lost.

/// Whether generating may empty the directory `path`: it is not there, is empty, carries the mark
/// of an earlier run, or `force` says so.
bool mayEmpty(const QString& path, bool force, const OXA_FILES::Inputs& inputs, TextOut& err);

/// Whether the file `output` may be written.
bool mayWrite(const QString& output, const OXA_FILES::Inputs& inputs, TextOut& err);

#endif
