// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_STORAGE_TEXT_H
#define OXAUTILS_ENCODING_STORAGE_TEXT_H

#include "oxautils/model/ao_core.h"

namespace OXA {

/// Which samples are stored, as text, which `storageFromText` reads back into a core without a
/// limit:
///
///     all
///     changes, gap 16
///     changes of top/a top/b, gap 16, limit 1000
///     when M2 && !M3, gap 16
///
/// A limit of 0 is left out. Names that contain a comma before a space, or end in one, cannot be
/// read back.
OXAUTILS_EXPORT QString storageText(const CoreStorage& storage);

/// Sets the storage of `core` from `text`. False, with what is accepted in `error`, when that
/// cannot be read; `core` is then not changed.
///
///     STORAGE = all | KEEP [, gap BITS] [, limit SAMPLES]
///     KEEP    = changes [of NAME NAME ...] | when EXPRESSION
///
/// A gap or a limit that is left out stays as it is in a core that stores only some samples; in
/// another one, it is 16 bits, or 0 samples. The expression is written as `expressionFromText` does
/// for the core's kind of expressions. `checkCores` checks numbers, names and expression.
OXAUTILS_EXPORT bool storageFromText(const QString& text, AoCore& core, QString* error);

}

#endif
