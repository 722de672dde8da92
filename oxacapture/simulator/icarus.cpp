// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/icarus.h"

#include "files/fail.h"
#include "oxautils/model/shown_text.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>

#include <csignal>

namespace OXA_CAPTURE {

namespace {

constexpr int kPoll = 100; // ms between calls of `goesOn`
constexpr int kLogLines = 20; // of the compiler's log that are shown

/// The beginning of the compiler's log, and how much more there is.
QString firstLines(const QString& path)
{
    QFile log(path);
    QString text;
    int more = 0;
    log.open(QIODevice::ReadOnly);
    for (int i = 0; !log.atEnd(); ++i) {
        const QByteArray line = log.readLine(1 << 16);
        if (i < kLogLines)
            text += QString::fromLocal8Bit(line);
        else
            ++more;
    }
    return more == 0 ? text.trimmed()
                     : text
            + QString("... %1 more lines; `oxa simulate --keep-work DIR` keeps them in"
                      " DIR/iverilog.log")
                  .arg(more);
}

struct Signal {
    int number;
    const char* shellSays;
};

// Signals of a program that has a fault or uses too much memory.
constexpr Signal kSignals[] = {
    {SIGILL,  "Illegal instruction"     },
    {SIGABRT, "Aborted"                 },
    {SIGBUS,  "Bus error"               },
    {SIGFPE,  "Floating point exception"},
    {SIGKILL, "Killed"                  },
    {SIGSEGV, "Segmentation fault"      },
};

/// The signal that ended the compiler or its child process, which iverilog starts in a shell; null
/// when there was none. Without the shell's `words`, the status is a number of errors.
const Signal* endingSignal(const QProcess& iverilog, const QString& words)
{
    constexpr int kOfShell = 128; // plus the signal
    const bool crashed = iverilog.exitStatus() == QProcess::CrashExit;
    for (const Signal& signal : kSignals) {
        if (crashed ? iverilog.exitCode() == signal.number
                    : iverilog.exitCode() == kOfShell + signal.number
                    && words.contains(signal.shellSays))
            return &signal;
    }
    return nullptr;
}

/// The error of a failed compilation; `log` is the compiler's.
QString compilerFailure(const QProcess& iverilog, const QString& log)
{
    const QString words = firstLines(log);
    const Signal* signal = endingSignal(iverilog, words);
    if (!signal)
        return "iverilog does not accept the Verilog:\n" + words;
    return QString(
        "iverilog was ended by signal %1 (%2); Icarus 11 crashes at packed structures and"
        " enumerations of a package\n%3")
        .arg(QString::number(signal->number), signal->shellSays, words)
        .trimmed();
}

}

void workIn(const QString& directory, QProcess& compiler)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"TMP", "TMPDIR", "TEMP"})
        environment.insert(name, ".");
    compiler.setProcessEnvironment(environment);
    compiler.setWorkingDirectory(directory);
}

bool finishes(QProcess& process, const std::function<bool()>& goesOn)
{
    while (!process.waitForFinished(kPoll) && process.state() != QProcess::NotRunning) {
        if (goesOn())
            continue;
        process.kill();
        process.waitForFinished(-1);
        return false;
    }
    return true;
}

bool compileVerilog(const QStringList& arguments, const QString& workDir,
    const std::function<bool()>& goesOn, QString* error)
{
    for (const QString& argument : arguments) {
        if ((argument.contains('"') && !argument.startsWith("-D"))
            || OXA::shownText(argument) != argument)
            return OXA::fail(error,
                OXA::shownText(argument)
                    + ": contains a double quote or a character that does not print, where Icarus "
                      "ends "
                      "a path; choose another directory or file");
    }
    QProcess iverilog;
    const QString log = workDir + "/iverilog.log";
    iverilog.setProcessChannelMode(QProcess::MergedChannels);
    iverilog.setStandardOutputFile(log);
    workIn(workDir, iverilog); // iverilog passes the directory of temporary files to a shell
    iverilog.start("iverilog", arguments);
    if (!iverilog.waitForStarted(-1))
        return OXA::fail(
            error, "iverilog does not start (package iverilog): " + iverilog.errorString());
    if (!finishes(iverilog, goesOn))
        return OXA::fail(error, {});
    return (iverilog.exitStatus() == QProcess::NormalExit && iverilog.exitCode() == 0)
        || OXA::fail(error, compilerFailure(iverilog, log));
}

}
