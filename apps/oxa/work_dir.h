// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_WORK_DIR_H
#define APPS_OXA_WORK_DIR_H

#include "text_out.h"

#include "files/input_guard.h"

// Each returns false, with an error on `err`, when one of `inputs` would be lost.

/// Whether the directory `path` may be emptied: it does not exist, is empty, has the mark of an
/// earlier run, or `force` is set.
bool mayEmpty(const QString& path, bool force, const OXA_FILES::Inputs& inputs, TextOut& err);

/// Whether the file `output` may be written.
bool mayWrite(const QString& output, const OXA_FILES::Inputs& inputs, TextOut& err);

#endif
