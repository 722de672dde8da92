// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CAPTURE_WRITERS_H
#define OXACAPTURE_FILES_CAPTURE_WRITERS_H

#include "oxacapture/files/capture_file.h"

class QIODevice;

namespace OXA_CAPTURE {

// One function for each format (docs/captures.md). False when writing fails, when `goesOn`
// returned false or, with `error`, when the format does not allow it.

bool writeVcd(QIODevice& out, const Capture& capture, const Progress& goesOn,
    const CaptureFileOptions& options, QString* error);
bool writeFst(QIODevice& out, const Capture& capture, const Progress& goesOn,
    const CaptureFileOptions& options, QString* error);
bool writeCsv(QIODevice& out, const Capture& capture, const Progress& goesOn,
    const CaptureFileOptions& options, QString* error);
bool writeSigrok(QIODevice& out, const Capture& capture, const Progress& goesOn,
    const CaptureFileOptions& options, QString* error);

enum class CaptureFormat { Vcd, Fst, Csv, Sigrok };

/// The format that the name of a file gives, as `mayWriteCapture` allows it.
CaptureFormat captureFormat(const QString& path);
/// The file to write for `path`: for the standard output, its device.
QString captureFileOf(const QString& path);

constexpr qint64 kSamplesAtOnce = 4096; ///< at most this many between two calls of `goesOn`

/// The end of the last of the samples at `times`, as long after it as it is after the one before.
quint64 endOfLast(const std::vector<quint64>& times);

/// Appends the `time` of a sample, and those of the `passed` samples between it and the one before,
/// at equal distances.
void addTime(quint64 time, qint64 passed, std::vector<quint64>& times);

/// Appends a digit for each four of `bits`, 0, 1 or x, to `text`: the first for those that are left
/// over, x when one of its bits is x.
void addHexadecimal(const QByteArray& bits, QByteArray& text);

/// The samples of all windows of a core together.
qint64 capturedSamples(const CapturedCore& core);

/// A signal of a core in a dump.
struct DumpName {
    QString name; ///< "count [7:0]"; the trigger is the last one
    QStringList bits; ///< their names in the configuration
};
/// The signals of `core` as `writeVcd` names them.
std::vector<DumpName> dumpNames(const CapturedCore& core);

/// `wanted`, with "oxa_" in front as long as one of the core's signals has that name.
QString freeName(const CapturedCore& core, QString wanted);

}

#endif
