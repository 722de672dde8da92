// SPDX-License-Identifier: Apache-2.0
#include "file_job.h"

FileJob::~FileJob()
{
    stop();
    if (m_thread)
        m_thread->wait();
}

void FileJob::run(const QString& path,
    const std::function<void(const OXA_CAPTURE::Progress&)>& work,
    const std::function<void()>& finish)
{
    m_stop = false;
    m_thread.reset(QThread::create([=] {
        int told = -1;
        work([&](int percent) {
            if (percent != told)
                Q_EMIT progress(path, percent);
            told = percent;
            return !m_stop;
        });
    }));
    connect(m_thread.get(), &QThread::finished, this, [=] {
        m_thread->wait();
        m_thread.reset();
        finish();
    });
    m_thread->start();
}
