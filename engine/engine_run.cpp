// SPDX-License-Identifier: Apache-2.0
#include "engine/engine_run.h"

#include "engine/engine_process.h"

#include <QDir>

#include <algorithm>

namespace OXA_ENGINE {
namespace {

constexpr char kEngineVariable[] = "OXA_SYNTHESIS_ENGINE";
constexpr char kDefaultEngine[] = "yosys";
constexpr char kTimeoutVariable[] = "OXA_SYNTHESIS_TIMEOUT";
constexpr int kDefaultTimeout = 3600; // seconds

/// The limit in the environment, in seconds; 0 when it is invalid.
int timeLimit()
{
    const QString text = qEnvironmentVariable(kTimeoutVariable);
    return text.isEmpty() ? kDefaultTimeout : std::max(0, text.toInt());
}

EngineCommand engineCommand(const EngineRun& run, int limit)
{
    const QString named = qEnvironmentVariable(kEngineVariable);
    EngineCommand command;
    command.program = named.isEmpty() ? QString(kDefaultEngine) : named;
    command.arguments = QStringList {"-Q", "-T", "-c", run.script};
    command.directory = run.directory;
    command.environment = QProcessEnvironment::systemEnvironment();
    command.environment.insert("TMPDIR", run.temporary);
    command.environment.insert("LC_ALL", "C"); // messages in English
    // It writes a history of typed commands there, even an empty one.
    command.environment.insert("HOME", QDir(run.directory).absoluteFilePath(run.temporary));
    command.timeLimit = limit;
    return command;
}

/// The messages about an engine that failed.
QStringList failureMessages(const EngineResult& result, EngineOutput& output)
{
    QStringList messages = output.finish();
    if (result.end == EngineEnd::Failed && output.hasError())
        return messages;
    QString problem = result.problem;
    if (result.end == EngineEnd::NotStarted)
        problem += QString("; install it, or name another with %1").arg(kEngineVariable);
    if (result.end == EngineEnd::TimedOut)
        problem += QString(" (%1 sets the limit)").arg(kTimeoutVariable);
    messages << problem;
    if (result.end == EngineEnd::Failed || result.end == EngineEnd::Crashed)
        for (const QString& line : output.tail())
            messages << "engine: " + line;
    return messages;
}

}

bool runScript(const EngineRun& run, QStringList& messages)
{
    const int limit = timeLimit();
    if (limit == 0) {
        messages << QString("%1 is not a number of seconds").arg(kTimeoutVariable);
        return false;
    }
    EngineOutput output(run.logFile, run.progress);
    const EngineResult result = runEngine(engineCommand(run, limit), run.stopAsked,
        [&](const QByteArray& line) { output.take(line); });
    if (result.end == EngineEnd::Done) {
        messages << output.finish();
        return true;
    }
    messages << failureMessages(result, output);
    return false;
}

}
