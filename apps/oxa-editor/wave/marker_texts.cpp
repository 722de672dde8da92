// SPDX-License-Identifier: Apache-2.0
#include "marker_texts.h"

#include "quantity.h"

#include <QCoreApplication>

#include <cmath>

using OXA_CAPTURE::kNoSample;

namespace {

constexpr QChar kMinus(0x2212);

QString tr(const char* text) { return QCoreApplication::translate("WaveView", text); }

/// "A: sample 587, window 0, trigger + 12 (240 ns)"
QString placeText(
    const Waveform& waveform, const QString& name, qint64 sample, const WaveTimes& times)
{
    // The samples of several cores have no numbers in common.
    QString text = waveform.joint ? tr("%1: %2").arg(name, durationText(times.at(sample)))
                                  : tr("%1: sample %2").arg(name, QString::number(sample));
    const int number = waveform.windowAt(sample);
    if (number < 0)
        return text;
    const WaveWindow& window = waveform.windows[size_t(number)];
    QString inWindow = tr("%1, window %2").arg(text, QString::number(number));
    if (window.trigger == kNoSample)
        return inWindow;
    const qint64 distance = sample - window.trigger;
    const std::optional<double> seconds = times.between(window.trigger, sample);
    if (waveform.joint)
        return tr("%1, trigger %2 %3")
            .arg(inWindow, distance < 0 ? kMinus : QChar('+'),
                durationText(std::fabs(seconds.value_or(0))));
    const QString time = seconds ? tr(" (%1)").arg(durationText(std::fabs(*seconds))) : QString();
    return tr("%1, trigger %2 %3%4")
        .arg(inWindow, distance < 0 ? kMinus : QChar('+'), QString::number(qAbs(distance)), time);
}

/// "B − A: 8 samples (160 ns, 6.25 MHz)"
QString distanceText(
    const Waveform& waveform, const QString& name, qint64 from, qint64 to, const WaveTimes& times)
{
    const QString title = tr("%1 %2 A: ").arg(name, kMinus);
    if (waveform.joint)
        return title + durationText(times.between(from, to).value_or(0));
    QString text = tr("%1%2 samples").arg(title, QString::number(to - from));
    if (times.section(from) != times.section(to))
        return tr("%1, of two windows").arg(text);
    const std::optional<double> seconds = times.between(from, to);
    if (!seconds || *seconds == 0)
        return text;
    return tr("%1 (%2, %3)")
        .arg(text, durationText(*seconds), frequencyText(1 / std::fabs(*seconds)));
}

}

QStringList markerTexts(
    const Waveform& waveform, const WaveMarkers& markers, const WaveTimes& times)
{
    QStringList texts;
    for (int marker = 0; marker < markers.count(); ++marker) {
        const qint64 sample = markers.at(marker);
        const QString name = WaveMarkers::name(marker);
        if (sample < 0)
            continue;
        texts += placeText(waveform, name, sample, times);
        if (marker > 0 && markers.at(0) >= 0)
            texts += distanceText(waveform, name, markers.at(0), sample, times);
    }
    return texts;
}
