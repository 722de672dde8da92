// SPDX-License-Identifier: Apache-2.0
#include "gtkwave.h"

#include "wave_span.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryFile>

using namespace OXA_CAPTURE;

namespace {

constexpr char kShowAndRemove[]
    = R"("$1" "$2"; /bin/rm -f -- "$2")"; // GTKWave may outlive this program

}

GtkWave::GtkWave(QObject* parent)
    : QObject(parent)
    , m_job(new SaveJob)
{
    connect(m_job.get(), &SaveJob::progress, this, [this](const QString&, int percent) {
        Q_EMIT said(tr("For GTKWave: %1 % written").arg(percent));
    });
    connect(m_job.get(), &SaveJob::finished, this,
        [this](const QString&, const QString& error) { start(error); });
}

GtkWave::~GtkWave()
{
    const bool isWriting = m_job->isRunning();
    m_job.reset();
    if (isWriting)
        QFile::remove(m_path);
}

/// Makes an empty file, which exists until GTKWave ends.
bool GtkWave::makeFile()
{
    QTemporaryFile file(QDir::tempPath() + "/oxa-XXXXXX.vcd");
    file.setAutoRemove(false);
    if (!file.open()) {
        Q_EMIT said(tr("A temporary file cannot be written: %1").arg(file.errorString()));
        return false;
    }
    m_path = QFileInfo(file.fileName()).absoluteFilePath(); // never an option
    return true;
}

void GtkWave::open(const Waveform& waveform, double clockHz)
{
    if (m_job->isRunning())
        return;
    m_program = QStandardPaths::findExecutable("gtkwave");
    if (m_program.isEmpty())
        return Q_EMIT said(tr("GTKWave is not installed: the program gtkwave was not found."));
    if (waveform.joint) {
        if (makeFile())
            m_job->start(m_path, waveform.joint);
        return;
    }
    CapturedCore core = waveform.captured.windows.empty() ? cutSpans(waveform,
                            {
                                {0, waveform.samples - 1}
    })
                                                          : waveform.captured;
    core.clockHz = clockHz;
    if (core.windows.empty())
        return Q_EMIT said(tr("There are no samples to show."));
    if (makeFile())
        m_job->start(m_path, std::make_shared<const Capture>(Capture {std::move(core)}));
}

void GtkWave::start(const QString& error)
{
    if (!error.isEmpty()) {
        QFile::remove(m_path);
        Q_EMIT said(error);
    } else if (QProcess::startDetached("/bin/sh", {"-c", kShowAndRemove, "sh", m_program, m_path}))
        Q_EMIT said(tr("GTKWave is starting."));
    else
        Q_EMIT said(tr("%1 cannot be started.").arg(m_program));
}
