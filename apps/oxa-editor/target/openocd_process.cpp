// SPDX-License-Identifier: Apache-2.0
#include "openocd_process.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace {

constexpr int kStartTime = 20000; // ms until its Tcl server listens
constexpr int kEndTime = 2000; // ms until it is killed

}

OpenOcdProcess::OpenOcdProcess(QObject* parent)
    : QObject(parent)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_patience.setSingleShot(true);
    m_patience.setInterval(kStartTime);
    m_endPatience.setSingleShot(true);
    m_endPatience.setInterval(kEndTime);
    connect(&m_endPatience, &QTimer::timeout, &m_process, &QProcess::kill);
    connect(&m_process, &QProcess::readyRead, this, &OpenOcdProcess::read);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
        &OpenOcdProcess::finish);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        m_patience.stop();
        Q_EMIT ended(tr("openocd cannot be started; install the package openocd"));
    });
    connect(&m_patience, &QTimer::timeout, this, [this] {
        end();
        m_reason = tr("its Tcl server does not listen");
    });
}

OpenOcdProcess::~OpenOcdProcess()
{
    m_process.disconnect(this);
    m_process.terminate();
    if (isRunning() && !m_process.waitForFinished(kEndTime)) {
        m_process.kill();
        m_process.waitForFinished(kEndTime);
    }
}

void OpenOcdProcess::start(const QString& configuration)
{
    if (isRunning())
        return;
    m_address.clear();
    m_line.clear();
    m_error.clear();
    m_reason.clear();
    m_isEnding = false;
    const QFileInfo file(configuration);
    // OpenOCD reads the name as a word of its language.
    static const QRegularExpression special("[{}\\\\\"$;\\[\\]\\s]");
    if (!file.isFile())
        return Q_EMIT ended(tr("%1: there is no such file").arg(configuration));
    if (file.absoluteFilePath().contains(special))
        return Q_EMIT ended(
            tr("%1: OpenOCD does not read files with spaces or brackets in their paths")
                .arg(configuration));
    m_process.setWorkingDirectory(file.absolutePath());
    m_process.start("openocd",
        {"-c", "tcl_port 0", "-c", "telnet_port disabled", "-c", "gdb_port disabled", "-f",
            file.absoluteFilePath()});
    m_patience.start();
}

void OpenOcdProcess::end()
{
    m_isEnding = true;
    m_address.clear();
    m_process.terminate();
    m_endPatience.start();
}

void OpenOcdProcess::read()
{
    static const QRegularExpression listens("Listening on port (\\d+) for tcl connections");
    const QString text = QString::fromLocal8Bit(m_process.readAll());
    Q_EMIT said(text);
    QStringList lines = (m_line + text).split('\n');
    m_line = lines.takeLast();
    for (const QString& line : qAsConst(lines)) {
        if (line.startsWith("Error: "))
            m_error = line.mid(7).trimmed();
        const auto match = listens.match(line);
        if (!match.hasMatch() || !m_address.isEmpty())
            continue;
        m_address = "127.0.0.1:" + match.captured(1);
        m_patience.stop();
        Q_EMIT ready();
    }
}

void OpenOcdProcess::finish()
{
    m_patience.stop();
    m_endPatience.stop();
    m_address.clear();
    if (m_isEnding)
        return Q_EMIT ended(m_reason);
    Q_EMIT ended(m_error.isEmpty()
            ? tr("OpenOCD has ended with status %1").arg(m_process.exitCode())
            : tr("OpenOCD has ended: %1").arg(m_error));
}
