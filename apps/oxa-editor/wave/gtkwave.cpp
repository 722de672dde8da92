#include "gtkwave.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryFile>

using namespace OXA_CAPTURE;

namespace {

QString tr(const char* text) { return QCoreApplication::translate("WaveView", text); }

/// All samples as if they were a window.
CapturedCore wholeOf(const Waveform& waveform)
{
    CapturedCore core = waveform.captured;
    for (const auto& row : waveform.rows) {
        if (row->isEvent || row->field != 0)
            continue;
        Window place;
        place.samples = waveform.samples;
        core.windows = cutWindows({place}, *row->samples);
        break;
    }
    return core;
}

}

bool openInGtkWave(const Waveform& waveform, double clockHz, QString& error)
{
    const QString program = QStandardPaths::findExecutable("gtkwave");
    if (program.isEmpty()) {
        error = tr("GTKWave is not installed: there is no program gtkwave.");
        return false;
    }
    CapturedCore core = waveform.captured.windows.empty() ? wholeOf(waveform) : waveform.captured;
    core.clockHz = clockHz;
    if (core.windows.empty()) {
        error = tr("There are no samples to show.");
        return false;
    }
    // The file stays: GTKWave may outlive this program.
    QTemporaryFile file(QDir::tempPath() + "/oxa-XXXXXX.vcd");
    file.setAutoRemove(false);
    if (!file.open()) {
        error = tr("A temporary file cannot be written: %1").arg(file.errorString());
        return false;
    }
    const QString path = file.fileName();
    file.close();
    if (!writeCapture(path, {core}, &error))
        return false;
    if (QProcess::startDetached(program, {path}))
        return true;
    error = tr("%1 does not start.").arg(program);
    return false;
}
