// SPDX-License-Identifier: Apache-2.0
#include "design_job.h"

#include "oxacapture/waveform/waveform_design.h"

#include "oxautils/design/read_design.h"

DesignJob::DesignJob(QObject* parent)
    : QObject(parent)
{
}

DesignJob::~DesignJob()
{
    stop();
    if (m_thread)
        m_thread->wait();
}

void DesignJob::readSources(const OXA::DesignSources& sources)
{
    OXA::DesignHooks hooks;
    hooks.stopAsked = [this] { return bool(m_stop); };
    hooks.progress = [this](const QString& stage, int percent) { Q_EMIT progress(stage, percent); };
    start([=](OXA::Design& design, QString* error) {
        return OXA::readDesign(sources, design, error, hooks);
    });
}

void DesignJob::readWaveform(const QString& path)
{
    start([=](OXA::Design& design, QString* error) {
        return OXA_CAPTURE::readWaveformSignals(path, design, error);
    });
}

void DesignJob::start(const std::function<bool(OXA::Design&, QString*)>& read)
{
    struct Result {
        Tree tree;
        QString error;
    };
    if (isRunning())
        return;
    m_stop = false;
    auto result = std::make_shared<Result>();
    m_thread.reset(QThread::create([=] {
        OXA::Design design;
        const bool ok = read(design, &result->error);
        if (m_stop)
            result->error = tr("Cancelled.");
        else if (ok)
            result->tree = std::make_shared<DesignTree>(design);
    }));
    connect(m_thread.get(), &QThread::finished, this, [=] {
        m_thread->wait();
        m_thread.reset();
        Q_EMIT finished(result->tree, result->error);
    });
    m_thread->start();
}
