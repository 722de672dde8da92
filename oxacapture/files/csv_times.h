// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CSV_TIMES_H
#define OXACAPTURE_FILES_CSV_TIMES_H

#include "oxacapture/files/capture_result.h"

namespace OXA_CAPTURE {

/// Reads seconds, "0.000020", as a number of units, 20 for `decimals` 6. False when it is no such
/// number, or too large.
bool readSeconds(const QByteArray& text, quint64& units, int& decimals);

/// Completes a capture whose windows have the times of a table's rows. When those of all cores are
/// counted from the beginning of each window, in periods of a clock, the cores get its frequency
/// instead. False, with `error`, for times that go back otherwise.
bool completeTimes(Capture& capture, QString* error);

}

#endif
