// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_FST_WRITER_H
#define OXACAPTURE_FILES_FST_WRITER_H

#include "oxacapture/progress.h"

#include <QString>

#include <functional>

class QIODevice;

namespace OXA_CAPTURE {

/// Writes a value change dump to `vcd`, and calls `goesOn` at least once for each MiB; false when
/// that returns false, or with a reason in `error`.
using DumpText = std::function<bool(QIODevice& vcd, const Progress& goesOn, QString* error)>;

/// Writes the dump to `out` as an FST file, through the program vcd2fst.
bool writeAsFst(QIODevice& out, const DumpText& dump, const Progress& goesOn, QString* error);

}

#endif
