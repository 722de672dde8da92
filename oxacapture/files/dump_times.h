// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_DUMP_TIMES_H
#define OXACAPTURE_FILES_DUMP_TIMES_H

#include "oxacapture/files/capture_result.h"

namespace OXA_CAPTURE {

// What the times of a dump tell of a capture. Its windows have those of their stored samples and of
// the end of the last one.

/// Takes the numbers of a core's samples from their times, which have `perSample` units for each,
/// while the windows have at most `room` samples, stored or not, which are taken from it. Where
/// samples were passed over, the core stored those that `keep` says.
void takeNumbers(CapturedCore& core, OXA::CoreStorage::Keep keep, double perSample, qint64& room);

/// Adds the times of the samples that were not stored.
void completeTimes(CapturedWindow& window);

/// Lets cores be forced by others as the `text` of a file tells, which has `units` of time in a
/// second: so that their windows get the distances again that they have there.
void alignAsInText(Capture& capture, const QString& text, double units);

}

#endif
