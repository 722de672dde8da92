// SPDX-License-Identifier: Apache-2.0
#include "capture_record.h"

#include "oxa-editor/wave/joint_waveform.h"
#include "oxa-editor/wave/wave_settings.h"

#include "oxacapture/files/capture_file.h"
#include "oxautils/encoding/unit_text.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTime>

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CaptureRecord", text); }

QString triggerText(const OXA::AoCore& core)
{
    QStringList units;
    for (int i = 0; i < core.matchUnits.size(); ++i) {
        const QString text = OXA::unitText(*core.matchUnits.at(i)); // "Basic: T0 == 101"
        if (core.matchUnits.at(i)->enabled)
            units += QString("M%1: %2").arg(QString::number(i), text.section(": ", 1));
    }
    return QStringList(core.expressions).join(tr(", then ")) + " (" + units.join("; ") + ')';
}

}

QString askedText(const Core& core)
{
    if (core.lite)
        return tr("core %1: %2 samples")
            .arg(QString::number(core.index()), QString::number(core.captureAmount()));
    const OXA::AoCore& own = *core.standard;
    return tr("core %1: %2, %3 × %4 samples, %5 before the trigger")
        .arg(QString::number(own.index), triggerText(own), QString::number(own.windowNum),
            QString::number(own.captureAmount), QString::number(own.triggerPos));
}

void takeClocks(
    const CaptureRecord& record, const WaveSettings& waves, OXA_CAPTURE::Capture& capture)
{
    for (OXA_CAPTURE::CapturedCore& core : capture) {
        const double hertz = waves.clock(core.index);
        core.clockHz = record.isOpened && hertz <= 0 ? core.clockHz : hertz;
    }
}

WaveformPtr jointWaveform(const CaptureRecord& record, const WaveSettings& waves, QString& text)
{
    // A file may be written of the capture itself in the meantime.
    auto capture = std::make_shared<OXA_CAPTURE::Capture>(*record.capture);
    takeClocks(record, waves, *capture);
    return jointWaveform(std::move(capture), text);
}

CaptureRecordPtr readRecord(
    const QString& path, QString* error, const OXA_CAPTURE::Progress& progress)
{
    auto record = std::make_shared<CaptureRecord>();
    if (!OXA_CAPTURE::readCapture(path, *record->capture, error, progress))
        return nullptr;
    qint64 samples = 0;
    size_t windows = 0;
    for (const OXA_CAPTURE::CapturedCore& core : *record->capture) {
        record->waveforms.push_back(capturedWaveform(core, nullptr));
        samples += record->waveforms.back()->samples;
        windows += core.windows.size();
    }
    record->time = QTime::currentTime().toString("HH:mm:ss");
    record->isOpened = true;
    record->asked = tr("opened");
    record->ended
        = tr("%1 samples in %2 windows").arg(QString::number(samples), QString::number(windows));
    record->file = QFileInfo(path).absoluteFilePath();
    return record;
}
