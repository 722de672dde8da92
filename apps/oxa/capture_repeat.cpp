// SPDX-License-Identifier: Apache-2.0
#include "capture_repeat.h"

#include "progress_line.h"

#include "files/fail.h"
#include "oxacapture/files/numbered_path.h"

using namespace OXA_CAPTURE;

namespace {

QJsonObject seriesObject(const SeriesStatistics& statistics, const CaptureOutput& output)
{
    QJsonObject object {
        {"captures",    statistics.captures   },
        {"seconds",     statistics.seconds    },
        {"perMinute",   statistics.perMinute()},
        {"deadSeconds", statistics.deadSeconds},
    };
    if (!output.file.isEmpty())
        object["files"] = output.file;
    return object;
}

void print(const SeriesStatistics& statistics, const CaptureOutput& output, TextOut& out)
{
    const auto number
        = [](double value, int decimals) { return QString::number(value, 'f', decimals); };
    out << counted(statistics.captures, "capture") << " in " << number(statistics.seconds, 1)
        << " s, " << number(statistics.perMinute(), 0) << " a minute; ";
    const double share = statistics.seconds > 0 ? statistics.deadSeconds / statistics.seconds : 0;
    out << "not armed for " << number(100 * share, 0) << " % of the time";
    if (statistics.captures > 1)
        out << ", " << number(1000 * statistics.deadSeconds / double(statistics.captures - 1), 1)
            << " ms between two captures";
    out << '\n';
    if (!output.file.isEmpty())
        out << numberedPath(output.file, 0) << " to "
            << numberedPath(output.file, statistics.captures - 1) << ": written\n";
}

/// Writes one capture; false, with the error on `err`, when that fails.
bool write(const CaptureOutput& output, qint64 number, const Capture& capture, TextOut& err)
{
    const QString path = numberedPath(output.file, number);
    QString error;
    if (path.isEmpty() || writeSamples(output, path, capture, &error))
        return true;
    err.error(error, path);
    return false;
}

}

bool mayRepeat(const CaptureOutput& output, QString* error)
{
    return output.file.isEmpty() || isNumbered(output.file)
        || OXA::fail(error,
            "with --repeat, the name of the file needs one place for the number, as in"
            " cap-%04d.vcd");
}

int captureRepeatedly(CaptureRun& chip, CaptureSeries& series, const ClockFrequencies& clocks,
    const CaptureOutput& output, Io& io)
{
    ProgressLine line(io.err);
    qint64 done = 0;
    chip.progress = [&](const QStringList& texts) {
        line.show(QString("capture %1: %2").arg(QString::number(done), texts.join("; ")));
    };
    bool written = true;
    series.captured = [&](qint64 number, std::vector<CoreOutcome>& outcomes) {
        written = write(output, number, captureOf(outcomes, clocks), io.err);
        done = number + 1;
        return written && chip.goesOn();
    };
    SeriesStatistics statistics;
    std::vector<CoreOutcome> rest;
    QString error;
    const bool ok = series.capture(chip, statistics, rest, &error);
    line.clear();
    if (!ok)
        io.err.error(error);
    CaptureOutput restOutput = output;
    restOutput.file = numberedPath(output.file, statistics.captures);
    const bool isCut = !rest.empty() && (chip.goesOn() || statistics.captures == 0);
    const int status = isCut ? deliverOutcomes(rest, clocks, restOutput, io) : kDone;
    if (output.json)
        io.out.setResult(seriesObject(statistics, output));
    else if (statistics.captures > 0)
        print(statistics, output, io.out);
    return ok && written ? status : kJobFailed;
}
