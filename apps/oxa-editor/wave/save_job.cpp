// SPDX-License-Identifier: Apache-2.0
#include "save_job.h"

SaveJob::SaveJob(QObject* parent)
    : QObject(parent)
{
}

SaveJob::~SaveJob()
{
    stop();
    if (m_thread)
        m_thread->wait();
}

void SaveJob::start(const QString& path, const std::shared_ptr<const OXA_CAPTURE::Capture>& capture,
    const OXA_CAPTURE::CaptureFileOptions& options)
{
    if (isRunning())
        return;
    m_stop = false;
    auto error = std::make_shared<QString>();
    m_thread.reset(QThread::create([=] {
        int told = -1;
        const auto goesOn = [&](int percent) {
            if (percent != told)
                Q_EMIT progress(path, percent);
            told = percent;
            return !m_stop;
        };
        OXA_CAPTURE::writeCapture(path, *capture, options, error.get(), goesOn);
    }));
    connect(m_thread.get(), &QThread::finished, this, [=] {
        m_thread->wait();
        m_thread.reset();
        Q_EMIT finished(path, *error);
    });
    m_thread->start();
}
