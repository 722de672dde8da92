// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CSV_READER_H
#define OXACAPTURE_FILES_CSV_READER_H

#include "oxacapture/files/capture_result.h"

namespace OXA_CAPTURE {

/// Whether `path` is that of a .csv file.
bool isCsv(const QString& path);

/// Reads a table that `writeCapture` wrote, of buses or of bits. A bus has four bits for each of
/// its digits. False, with "PATH:LINE: REASON" in `error`, for another table, or when `progress`
/// stopped the work.
bool readCsv(const QString& path, Capture& capture, QString* error, const Progress& progress);

}

#endif
