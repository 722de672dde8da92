// SPDX-License-Identifier: Apache-2.0
#include "open_job.h"

void OpenJob::start(const QString& path)
{
    m_waiting += path;
    if (!isRunning())
        startNext();
}

void OpenJob::stop()
{
    m_waiting.clear();
    FileJob::stop();
}

void OpenJob::startNext()
{
    struct Outcome {
        CaptureRecordPtr record;
        QString error;
    };
    auto outcome = std::make_shared<Outcome>();
    const QString path = m_waiting.takeFirst();
    const auto read = [=](const OXA_CAPTURE::Progress& goesOn) {
        outcome->record = readRecord(path, &outcome->error, goesOn);
    };
    run(path, read, [=] {
        if (!m_waiting.isEmpty())
            startNext();
        Q_EMIT finished(outcome->record, path, outcome->error);
    });
}
