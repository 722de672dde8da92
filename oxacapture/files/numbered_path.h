// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_NUMBERED_PATH_H
#define OXACAPTURE_FILES_NUMBERED_PATH_H

#include "oxacapture/oxacapture_export.h"

#include <QString>

namespace OXA_CAPTURE {

/// Whether `pattern` has one place for a number: "%d", or "%04d" for one of at least four digits.
OXACAPTURE_EXPORT bool isNumbered(const QString& pattern);

/// The path of `pattern` with `number` at its place; `pattern` itself without one.
OXACAPTURE_EXPORT QString numberedPath(const QString& pattern, qint64 number);

}

#endif
