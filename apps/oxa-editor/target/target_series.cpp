// SPDX-License-Identifier: Apache-2.0
// The functions of a run that captures again and again.

#include "target_run.h"

#include "oxacapture/files/numbered_path.h"
#include "oxacapture/target/capture_series.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace OXA_CAPTURE;

namespace {

constexpr int kShowTime = 500; // ms between two captures that are shown

QString tr(const char* text) { return QCoreApplication::translate("TargetRun", text); }

QString seriesText(const SeriesStatistics& statistics, const QString& pattern)
{
    const QString count
        = statistics.captures == 1 ? tr("1 capture") : tr("%1 captures").arg(statistics.captures);
    QString text = tr("%1 in %2 s").arg(count, QString::number(statistics.seconds, 'f', 1));
    if (pattern.isEmpty() || statistics.captures == 0)
        return text;
    const auto name
        = [&](qint64 number) { return QFileInfo(numberedPath(pattern, number)).fileName(); };
    text += ", " + name(0);
    return statistics.captures == 1 ? text
                                    : tr("%1 to %2").arg(text, name(statistics.captures - 1));
}

}

void TargetRun::captureSeries(CaptureRun& run)
{
    qint64 done = 0;
    run.progress = [&](const QStringList& texts) {
        QStringList counted;
        for (const QString& text : texts)
            counted += tr("capture %1: %2").arg(QString::number(done), text);
        progress(counted);
    };
    CaptureSeries series;
    series.count = m_request.repeat;
    series.captured = [&](qint64 number, std::vector<CoreOutcome>& outcomes) {
        done = number + 1;
        return takeCapture(number, outcomes) && !m_stop;
    };
    SeriesStatistics statistics;
    std::vector<CoreOutcome> rest;
    QString error;
    if (!series.capture(run, statistics, rest, &error))
        m_result.problems += error;
    // The capture that the user stops is not of the series, unless there is no other.
    const bool isKept = !rest.empty() && (!m_stop || statistics.captures == 0);
    const QString text = seriesText(statistics, m_request.pattern);
    if (isKept)
        takeCapture(statistics.captures, rest);
    m_result.series = text;
}

/// Keeps a capture, and writes it. False when that fails.
bool TargetRun::takeCapture(qint64 number, std::vector<CoreOutcome>& outcomes)
{
    for (CoreOutcome& outcome : outcomes)
        outcome.captured.clockHz = m_request.clocks.value(outcome.captured.index, 0);
    takeAll(outcomes);
    const QString path = numberedPath(m_request.pattern, number);
    QString error;
    if (!path.isEmpty() && !m_result.capture->empty()) {
        if (writeCapture(path, *m_result.capture, m_request.fileOptions, &error))
            m_result.file = path;
        else
            m_result.problems += error;
    }
    tellCapture();
    return error.isEmpty();
}

void TargetRun::tellCapture()
{
    if (m_told.isValid() && m_told.elapsed() < kShowTime)
        return;
    m_told.start();
    captured(m_result);
}
