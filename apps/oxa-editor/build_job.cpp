// SPDX-License-Identifier: Apache-2.0
#include "build_job.h"

#include "oxautils/model/shown_text.h"

using namespace OXA;

namespace {

thread_local BuildJob* runningHere = nullptr; // the job of this thread
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
}

BuildJob::~BuildJob()
{
    stop();
    if (m_thread)
        m_thread->wait();
}

void BuildJob::installLog() { otherHandler = qInstallMessageHandler(handleMessage); }

void BuildJob::start(std::unique_ptr<BuildRun> build)
{
    if (isRunning())
        return;
    m_build = std::move(build);
    m_build->progress
        = [this](const QString& stage, int percent) { Q_EMIT progress(stage, percent); };
    m_build->loggedErrors = [] { return errorsHere; };
    auto result = std::make_shared<BuildResult>();
    m_thread.reset(QThread::create([=] {
        runningHere = this;
        Q_EMIT progress(tr("Generating"), -1);
        *result = m_build->run();
    }));
    connect(m_thread.get(), &QThread::finished, this, [=] {
        m_thread->wait();
        m_thread.reset();
        m_build.reset();
        Q_EMIT finished(*result);
    });
    m_thread->start();
}

void BuildJob::stop()
{
    if (m_build)
        m_build->stop();
}
