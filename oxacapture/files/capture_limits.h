// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CAPTURE_LIMITS_H
#define OXACAPTURE_FILES_CAPTURE_LIMITS_H

#include <QtGlobal>

namespace OXA_CAPTURE {

// Of a capture that is read from a file, so that no file can take all memory.
constexpr qint64 kMostWords = qint64(1) << 29; ///< of samples
constexpr qint64 kMostBits = 1 << 20; ///< of all signals
constexpr qint64 kMostCharacters = qint64(1) << 28; ///< of names

}

#endif
