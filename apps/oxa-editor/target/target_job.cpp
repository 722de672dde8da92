// SPDX-License-Identifier: Apache-2.0
#include "target_job.h"

TargetJob::TargetJob(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<QList<FoundCore>>();
    qRegisterMetaType<TargetResult>();
}

TargetJob::~TargetJob()
{
    if (!m_thread)
        return;
    m_run->abandon();
    m_thread->wait();
}

void TargetJob::start(const TargetRequest& request)
{
    if (isRunning())
        return;
    auto run = std::make_shared<TargetRun>(request);
    run->found = [this](const QList<FoundCore>& cores, const QString& builtFrom) {
        Q_EMIT found(cores, builtFrom);
    };
    run->progress = [this](const QStringList& texts) { Q_EMIT progress(texts); };
    run->captured = [this](const TargetResult& result) { Q_EMIT captured(result); };
    m_run = run;
    m_thread.reset(QThread::create([run] { run->work(); }));
    connect(m_thread.get(), &QThread::finished, this, [this] {
        m_thread->wait();
        m_thread.reset();
        const std::shared_ptr<TargetRun> done = std::move(m_run);
        Q_EMIT finished(done->result());
    });
    m_thread->start();
}

void TargetJob::stop()
{
    if (m_run)
        m_run->stop();
}

void TargetJob::force()
{
    if (m_run)
        m_run->force();
}
