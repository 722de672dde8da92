// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CAPTURE_FILE_H
#define OXACAPTURE_FILES_CAPTURE_FILE_H

#include "oxacapture/files/capture_result.h"
#include "oxautils/model/state_names.h"

namespace OXA_CAPTURE {

/// How samples are shown in a file.
struct CaptureFileOptions {
    bool bits = false; ///< of a .csv file: a column for each bit, instead of one for each bus
    bool every = false; ///< of a .csv file: also rows for samples that were not stored
    /// Values with names get these as texts: in .csv files in a column, in .vcd and .fst files as
    /// another variable.
    OXA::StateNames states {};
};

/// `writeCapture` with options; without, they have their default values.
OXACAPTURE_EXPORT bool writeCapture(const QString& path, const Capture& capture,
    const CaptureFileOptions& options, QString* error, const Progress& progress = {});

/// Reads the samples in the waveform `path`, of any kind that `VcdReader` reads. Of a file that
/// `writeCapture` wrote as .vcd or .fst, it makes the capture again; the names of signals are those
/// in the file, and samples are counted from 0 in each window. A file with the suffix .csv, too,
/// has to be one that `writeCapture` wrote; there, a bus has four bits for each of its digits. A
/// sigrok session becomes one core with one window, in which the samples that differ from the one
/// before are stored, and the last one; its sample rate is the clock. Any other waveform becomes
/// one core with all signals and one window, with a sample whenever a signal changes. False when it
/// cannot be read, with "PATH: REASON" or "PATH:LINE: REASON" in `error`, or when `progress`
/// stopped the work.
OXACAPTURE_EXPORT bool readCapture(
    const QString& path, Capture& capture, QString* error, const Progress& progress = {});

/// Writes the waveform `from`, as `readCapture` reads it, in the format given by the suffix of
/// `to`, as `writeCapture` does. As .vcd or .fst, it stays the waveform that it is, unless it is a
/// .csv file.
OXACAPTURE_EXPORT bool convertCapture(const QString& from, const QString& to,
    const CaptureFileOptions& options, QString* error, const Progress& progress = {});

}

#endif
