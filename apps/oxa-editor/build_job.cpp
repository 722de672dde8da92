#include "build_job.h"

#include "oxautils/generate/oxa_prepare.h"
#include "oxautils/generate/oxa_proxy_qx_syn.h"
#include "oxautils/generate/work_dir.h"
#include "oxautils/model/shown_text.h"

#include <norvosyn/qx_synthesis_sync_proxy.h>

using namespace OXA;

namespace {

thread_local BuildJob* runningHere = nullptr; // the job whose thread this is
thread_local int errorsHere = 0;
QtMessageHandler otherHandler = nullptr;

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (!runningHere) {
        if (otherHandler)
            otherHandler(type, context, shownText(text));
        return;
    }
    errorsHere += type == QtCriticalMsg;
    if (type != QtDebugMsg)
        Q_EMIT runningHere->logged(text);
}

}

BuildJob::BuildJob(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<BuildOutcome>();
}

BuildJob::~BuildJob()
{
    stop();
    if (m_thread)
        m_thread->wait();
}

void BuildJob::installLog() { otherHandler = qInstallMessageHandler(handleMessage); }

void BuildJob::start(const OxaArg& arg, bool synthesize)
{
    if (isRunning())
        return;
    m_stopping = false;
    auto result = std::make_shared<Result>();
    m_thread.reset(QThread::create([=] {
        runningHere = this;
        errorsHere = 0;
        *result = run(arg, synthesize);
    }));
    connect(m_thread.get(), &QThread::finished, this, [=] {
        m_thread->wait();
        m_thread.reset();
        Q_EMIT finished(result->outcome, result->messages);
    });
    m_thread->start();
}

void BuildJob::stop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stopping = true;
    if (m_generator)
        m_generator->tryToStop();
}

void BuildJob::setGenerator(OXAProxyQxSyn* generator)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_generator = generator;
    if (generator && m_stopping)
        generator->tryToStop(); // before the run, which then does not start
}

BuildJob::Result BuildJob::run(const OxaArg& arg, bool synthesize)
{
    Q_EMIT progress(tr("Generating"), -1);
    WorkDir workDir;
    QString error;
    if (!workDir.claim(arg.workDir, &error))
        return {BuildOutcome::Refused, {error}};
    Result result = synthesize ? this->synthesize(arg) : generate(arg);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_stopping && result.outcome != BuildOutcome::Done)
        result.outcome = BuildOutcome::Stopped;
    return result;
}

BuildJob::Result BuildJob::generate(const OxaArg& arg)
{
    OxaPrepare prepared;
    if (prepared.prepare(arg) != 1)
        return {BuildOutcome::Refused, {}};
    return {errorsHere > 0 ? BuildOutcome::Failed : BuildOutcome::Done, prepared.files};
}

BuildJob::Result BuildJob::synthesize(const OxaArg& arg)
{
    OXAProxyQxSyn generator(nullptr);
    if (auto* engine = generator.findChild<NorvoSyn::QxSynthesisSyncProxy*>()) {
        connect(
            engine, &NorvoSyn::QxSynthesisSyncProxy::progress, engine,
            [this](const QString& stage, int percent) { Q_EMIT progress(stage, percent); },
            Qt::DirectConnection);
    }
    setGenerator(&generator);
    const int status = generator.startGenerate(arg);
    setGenerator(nullptr);
    if (status < 0)
        return {BuildOutcome::Refused, {}};
    if (status > 0)
        return {BuildOutcome::Failed, generator.errorMessages()};
    return {BuildOutcome::Done, generator.errorMessages() << arg.outputFile};
}
