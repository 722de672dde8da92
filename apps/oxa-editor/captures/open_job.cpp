// SPDX-License-Identifier: Apache-2.0
#include "open_job.h"

OpenJob::~OpenJob()
{
    stop();
    if (m_thread)
        m_thread->wait();
}

void OpenJob::start(const QString& path)
{
    m_waiting += path;
    if (!isRunning())
        startNext();
}

void OpenJob::stop()
{
    m_waiting.clear();
    m_stop = true;
}

void OpenJob::startNext()
{
    struct Outcome {
        CaptureRecordPtr record;
        QString error;
    };
    m_stop = false;
    auto outcome = std::make_shared<Outcome>();
    const QString path = m_waiting.takeFirst();
    m_thread.reset(QThread::create([=] {
        int told = -1;
        const auto goesOn = [&](int percent) {
            if (percent != told)
                Q_EMIT progress(path, percent);
            told = percent;
            return !m_stop;
        };
        outcome->record = readRecord(path, &outcome->error, goesOn);
    }));
    connect(m_thread.get(), &QThread::finished, this, [=] {
        m_thread->wait();
        m_thread.reset();
        if (!m_waiting.isEmpty())
            startNext();
        Q_EMIT finished(outcome->record, path, outcome->error);
    });
    m_thread->start();
}
