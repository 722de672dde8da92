// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CAPTURE_WRITERS_H
#define OXACAPTURE_FILES_CAPTURE_WRITERS_H

#include "oxacapture/files/capture_result.h"

class QIODevice;

namespace OXA_CAPTURE {

// One function for each format (docs/captures.md). False when writing fails, when `goesOn`
// returned false or, with `error`, when the format does not allow it.

bool writeVcd(QIODevice& out, const Capture& capture, const Progress& goesOn, QString* error);
bool writeCsv(QIODevice& out, const Capture& capture, const Progress& goesOn, QString* error);
bool writeSigrok(QIODevice& out, const Capture& capture, const Progress& goesOn, QString* error);

constexpr qint64 kSamplesAtOnce = 4096; ///< at most this many between two calls of `goesOn`

/// The samples of all windows of a core together.
qint64 capturedSamples(const CapturedCore& core);

/// `wanted`, with "oxa_" in front as long as one of the core's signals has that name.
QString freeName(const CapturedCore& core, QString wanted);

}

#endif
