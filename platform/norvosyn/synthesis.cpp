// SPDX-License-Identifier: Apache-2.0
#include "synthesis.h"

#include "cell_usage.h"
#include "engine_script.h"
#include "netlist_file.h"
#include "run_directory.h"
#include "synthesis_request.h"
#include "target_device.h"

#include "engine/engine_run.h"

namespace NorvoSyn {
namespace {

/// The steps of one run, in order; each adds its error to `messages`.
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
            return fail(QString("this run would overwrite the source %1").arg(source));
        QString error;
        return m_directory.prepare(engineScript(m_request, m_target), &error) || fail(error);
    }

    bool runFlow()
    {
        OXA_ENGINE::EngineRun run;
        run.directory = m_directory.path();
        run.script = m_directory.scriptFromPath();
        // Relative, because the engine passes it to a shell without quotes.
        run.temporary = RunDirectory::temporaryName();
        run.logFile = m_directory.logFile();
        run.stopAsked = m_hooks.stopAsked;
        run.progress = m_hooks.progress;
        return OXA_ENGINE::runScript(run, m_messages);
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
        QString error;
        return deliverNetlist(m_directory.netlist(), m_request.outputFile, &error) || fail(error);
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
