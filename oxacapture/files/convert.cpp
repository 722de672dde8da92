// SPDX-License-Identifier: Apache-2.0
#include "files/fail.h"
#include "files/replace_file.h"
#include "oxacapture/files/capture_file.h"
#include "oxacapture/files/capture_writers.h"
#include "oxacapture/files/csv_reader.h"
#include "oxacapture/files/fst_writer.h"
#include "oxacapture/waveform/waveform_input.h"

#include <QIODevice>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kCopiedAtOnce = 1 << 18; // bytes

/// Copies the dump in the file `from`.
bool copyDump(const QString& from, QIODevice& out, const Progress& goesOn, QString* error)
{
    WaveformInput input(from);
    QByteArray buffer(int(kCopiedAtOnce), '\0');
    qint64 copied = 0;
    qint64 got = 0;
    bool ok = input.open();
    while (ok && (got = input.read(buffer.data(), buffer.size())) > 0) {
        const QByteArray start = copied == 0 ? buffer.left(int(got)).trimmed() : "$";
        if (!start.startsWith('$') && !start.isEmpty())
            return OXA::fail(error, from + ": is no waveform");
        copied += got;
        if (out.write(buffer.constData(), got) != got)
            return false;
        if (!goesOn(input.percentRead(copied)))
            return false;
    }
    if (!ok || got < 0)
        return OXA::fail(error, from + ": " + input.error());
    return copied > 0 || OXA::fail(error, from + ": is empty");
}

}

bool convertCapture(const QString& from, const QString& to, const CaptureFileOptions& options,
    QString* error, const Progress& progress)
{
    if (!mayWriteCapture(to, error))
        return false;
    bool stopped = false;
    const Progress goesOn = [&](int percent) {
        stopped = stopped || (progress && !progress(percent));
        return !stopped;
    };
    const CaptureFormat format = captureFormat(to);
    if (isCsv(from) || (format != CaptureFormat::Vcd && format != CaptureFormat::Fst)) {
        Capture capture;
        return readCapture(from, capture, error, goesOn)
            && writeCapture(to, capture, options, error, goesOn);
    }
    QString unreadable; // what is wrong with `from`
    const auto copy = [&](QIODevice& out, const Progress& feed, QString* reason) {
        return copyDump(from, out, feed, &unreadable) || OXA::fail(reason, unreadable);
    };
    const auto fill = [&](QIODevice& out, QString* reason) {
        return format == CaptureFormat::Fst ? writeAsFst(out, copy, goesOn, reason)
                                            : copy(out, goesOn, reason);
    };
    return OXA_FILES::replaceFile(captureFileOf(to), fill, error)
        || (stopped && OXA::fail(error, "stopped"))
        || (!unreadable.isEmpty() && OXA::fail(error, unreadable));
}

}
