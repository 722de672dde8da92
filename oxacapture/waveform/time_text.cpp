// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/time_text.h"

#include <QRegularExpression>
#include <QStringList>

#include <cmath>

namespace OXA_CAPTURE {

namespace {

constexpr int kDigits = 15; // of a frequency

// In the order of TimeKind.
constexpr const char* kTexts[] = {
    "oxa: times of the waveform", "oxa: times in each window", "oxa: numbers of samples, no times"};
constexpr char kRunText[] = "oxa: times of the run";

}

QString timeText(TimeKind kind, const QMap<int, double>& clocks, bool isOfRun)
{
    QString text = isOfRun && kind == TimeKind::Window ? kRunText : kTexts[int(kind)];
    for (auto clock = clocks.begin(); kind != TimeKind::Numbers && clock != clocks.end(); ++clock)
        text += QString(", core %1 at %2 Hz")
                    .arg(QString::number(clock.key()), QString::number(*clock, 'g', kDigits));
    return text;
}

QString alignedText(const AlignedCore& aligned)
{
    return QString("core %1: aligned with core %2, +- %3 s")
        .arg(QString::number(aligned.core), QString::number(aligned.source),
            QString::number(aligned.tolerance, 'g', 3));
}

QList<AlignedCore> readAlignedCores(const QString& text)
{
    static const QRegularExpression words(
        "core (\\d{1,9}): aligned with core (\\d{1,9}), \\+- (\\S+) s");
    QList<AlignedCore> cores;
    for (auto it = words.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        cores
            += {match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toDouble()};
    }
    return cores;
}

TimeKind readTimeText(const QString& text, QMap<int, double>& clocks)
{
    static const QRegularExpression clock("core (\\d{1,9}) at (\\S+) Hz");
    for (auto it = clock.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const double hertz = match.captured(2).toDouble();
        if (hertz > 0 && std::isfinite(hertz))
            clocks.insert(match.captured(1).toInt(), hertz);
    }
    for (const TimeKind kind : {TimeKind::Window, TimeKind::Numbers}) {
        if (text.startsWith(kTexts[int(kind)]))
            return kind;
    }
    return TimeKind::Waveform;
}

}
