#include "synthesis.h"

#include "cell_usage.h"
#include "engine_output.h"
#include "engine_process.h"
#include "engine_script.h"
#include "netlist_file.h"
#include "run_directory.h"
#include "synthesis_request.h"
#include "target_device.h"

#include <algorithm>

namespace NorvoSyn {
namespace {

constexpr char kEngineVariable[] = "OXA_SYNTHESIS_ENGINE";
constexpr char kDefaultEngine[] = "yosys";
constexpr char kTimeoutVariable[] = "OXA_SYNTHESIS_TIMEOUT";
constexpr int kDefaultTimeout = 3600; // seconds

/// The limit of the environment, in seconds; 0 when it makes no sense.
int timeLimit()
{
    const QString text = qEnvironmentVariable(kTimeoutVariable);
    return text.isEmpty() ? kDefaultTimeout : std::max(0, text.toInt());
}

EngineCommand engineCommand(const RunDirectory& directory, int limit)
{
    const QString named = qEnvironmentVariable(kEngineVariable);
    EngineCommand command;
    command.program = named.isEmpty() ? QString(kDefaultEngine) : named;
    command.arguments = QStringList {"-Q", "-T", "-c", directory.scriptFromPath()};
    command.directory = directory.path();
    command.environment = QProcessEnvironment::systemEnvironment();
    // Relative, since the engine hands it to a shell without quoting; and messages in English.
    command.environment.insert("TMPDIR", RunDirectory::temporaryName());
    command.environment.insert("LC_ALL", "C");
    // It keeps a history there of what was typed, even when nothing was.
    command.environment.insert("HOME", directory.path() + '/' + RunDirectory::temporaryName());
    command.timeLimit = limit;
    return command;
}

/// What to say of an engine that did not end well.
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

/// The steps of one run, in order; each says what went wrong in `messages`.
class Synthesis {
public:
    Synthesis(const SynthesisRequest& request, const SynthesisHooks& hooks, QStringList& messages)
        : m_request(request)
        , m_hooks(hooks)
        , m_messages(messages)
        , m_target(targetDevice(request.partNumber, request.deviceName))
        , m_directory(request.workDir, request.projectName)
    {
    }

    bool run() { return prepare() && runFlow() && fits() && deliver(); }

private:
    bool fail(const QString& message)
    {
        m_messages << message;
        return false;
    }

    bool prepare()
    {
        if (m_request.checkResources && !m_target.known)
            return fail(QString("RESOURCE_CHECK: the device database has no \"%1\", \"%2\"")
                            .arg(m_request.partNumber, m_request.deviceName));
        if (const QString source = m_directory.lost(m_request.sources); !source.isEmpty())
            return fail(
                QString("the source %1 is where this run writes its own files").arg(source));
        QString problem;
        return m_directory.prepare(engineScript(m_request, m_target), problem) || fail(problem);
    }

    bool runFlow()
    {
        const int limit = timeLimit();
        if (limit == 0)
            return fail(QString("%1 is not a number of seconds").arg(kTimeoutVariable));
        EngineOutput output(m_directory.logFile(), m_hooks.progress);
        const EngineResult result = runEngine(engineCommand(m_directory, limit), m_hooks.stopAsked,
            [&](const QByteArray& line) { output.take(line); });
        if (result.end == EngineEnd::Done) {
            m_messages << output.finish();
            return true;
        }
        m_messages << failureMessages(result, output);
        return false;
    }

    bool fits()
    {
        if (!m_request.checkResources)
            return true;
        const QStringList problems = resourceProblems(m_directory.usage(), m_target);
        m_messages << problems;
        return problems.isEmpty();
    }

    bool deliver()
    {
        if (m_hooks.stopAsked())
            return fail("the synthesis was stopped");
        QString problem;
        return deliverNetlist(m_directory.netlist(), m_request.outputFile, problem)
            || fail(problem);
    }

    const SynthesisRequest& m_request;
    const SynthesisHooks& m_hooks;
    QStringList& m_messages;
    TargetDevice m_target;
    RunDirectory m_directory;
};

}

bool synthesize(const QVariantMap& map, const SynthesisHooks& hooks, QStringList& messages)
{
    SynthesisRequest request;
    return readRequest(map, request, messages) && Synthesis(request, hooks, messages).run();
}

}
