// SPDX-License-Identifier: Apache-2.0
#include "engine/engine_process.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace OXA_ENGINE {
namespace {

constexpr int kPollMs = 50; // delay until a request to stop is seen
constexpr int kTerminateMs = 400; // between SIGTERM and SIGKILL
constexpr int kLineBytes = 1 << 16; // longer lines come in pieces

/// The engine as the leader of a process group, so that all its child processes can be ended too.
class GroupProcess : public QProcess {
public:
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    GroupProcess() { setChildProcessModifier(leadGroup); }
#endif

    /// Terminates the group, then kills what remains. Returns when the engine has ended.
    void endGroup()
    {
        signalGroup(SIGTERM);
        const QDeadlineTimer patience(kTerminateMs);
        while (state() != NotRunning && !patience.hasExpired()) {
            waitForReadyRead(kPollMs);
            readAll();
        }
        killGroup();
        waitForFinished(-1);
    }

    /// Processes that outlive the engine are still in its group.
    void killGroup() { signalGroup(SIGKILL); }

    void rememberGroup() { m_group = pid_t(processId()); }

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
protected:
    void setupChildProcess() override { leadGroup(); }
#endif

private:
    // In the child process, before the engine is executed: the engine ends with this thread, so an
    // interrupted program leaves no engine running.
    static void leadGroup()
    {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    }

    void signalGroup(int signal) const
    {
        if (m_group > 0)
            ::kill(-m_group, signal);
    }

    pid_t m_group = 0;
};

void passLines(QProcess& process, const std::function<void(const QByteArray&)>& line)
{
    while (process.canReadLine() || process.bytesAvailable() >= kLineBytes
        || (process.state() == QProcess::NotRunning && process.bytesAvailable() > 0)) {
        QByteArray text = process.readLine(kLineBytes);
        while (text.endsWith('\n') || text.endsWith('\r'))
            text.chop(1);
        line(text);
    }
}

EngineResult outcome(const QProcess& process, const QString& name)
{
    if (process.exitStatus() == QProcess::CrashExit)
        return {EngineEnd::Crashed,
            QString("%1 crashed (signal %2)").arg(name, QString::number(process.exitCode()))};
    if (process.exitCode() != 0)
        return {EngineEnd::Failed,
            QString("%1 failed (exit status %2)").arg(name, QString::number(process.exitCode()))};
    return {EngineEnd::Done, {}};
}

/// The path of `program`, found like in a shell; empty when it is not found.
QString executable(const QString& program)
{
    if (program.contains('/'))
        return QFileInfo(program).absoluteFilePath();
    return QStandardPaths::findExecutable(program);
}

EngineResult follow(GroupProcess& process, const EngineCommand& command,
    const std::function<bool()>& stopAsked, const std::function<void(const QByteArray&)>& line)
{
    QDeadlineTimer limit(Qt::CoarseTimer);
    limit.setRemainingTime(command.timeLimit * 1000LL);
    while (process.state() != QProcess::NotRunning) {
        process.waitForReadyRead(kPollMs);
        passLines(process, line);
        if (process.state() == QProcess::NotRunning)
            break;
        if (stopAsked()) {
            process.endGroup();
            return {EngineEnd::Stopped, QString("the synthesis was stopped")};
        }
        if (limit.hasExpired()) {
            process.endGroup();
            return {EngineEnd::TimedOut,
                QString("%1 did not end within %2 s and was ended")
                    .arg(command.name, QString::number(command.timeLimit))};
        }
    }
    passLines(process, line);
    return outcome(process, command.name);
}

}

EngineResult runEngine(const EngineCommand& command, const std::function<bool()>& stopAsked,
    const std::function<void(const QByteArray&)>& line)
{
    const QString program = executable(command.program);
    if (program.isEmpty())
        return {EngineEnd::NotStarted,
            QString("%1 was not found: %2").arg(command.name, command.program)};

    GroupProcess process;
    if (command.outputFile.isEmpty()) {
        process.setProcessChannelMode(QProcess::MergedChannels);
    } else {
        process.setStandardOutputFile(command.outputFile);
        process.setReadChannel(QProcess::StandardError);
    }
    process.setStandardInputFile(QProcess::nullDevice());
    process.setWorkingDirectory(command.directory);
    process.setProcessEnvironment(command.environment);
    process.start(program, command.arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted(-1))
        return {EngineEnd::NotStarted,
            QString("%1 %2 did not start: %3").arg(command.name, program, process.errorString())};
    process.rememberGroup();

    EngineResult result = follow(process, command, stopAsked, line);
    process.killGroup();
    return result;
}

}
