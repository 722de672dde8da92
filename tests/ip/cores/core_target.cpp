// SPDX-License-Identifier: Apache-2.0
#include "core_target.h"

#include "support/files.h"
#include "support/waveforms.h"

#include "oxautils/config/standard_config.h"

#include <QDir>

using namespace OXA_CAPTURE;

CoreTarget::CoreTarget()
    : m_client(m_target.jtag(), BitString(8, 5))
{
}

void CoreTarget::configure(const QList<OXA::AoCore*>& cores, Random& random, int samples)
{
    m_cores = cores;
    OXA::writeOXAConfigToXml(cores, configuration());
    QStringList names;
    for (const OXA::AoCore* core : cores) {
        for (const QStringList& field : sampleRequest(*core).fields)
            names += field;
    }
    names.removeDuplicates();
    QStringList texts;
    QByteArray sample(names.size(), '0');
    for (int i = 0; i < samples; ++i)
        texts += sample = randomSample(random, sample);
    writeFile(path("waveform.vcd"), vcdOf(names, texts));
}

QString CoreTarget::start(const QString& part)
{
    const QString share = OXA_BINARY_DIR "/share/oxautils";
    Simulation simulation;
    simulation.dirs = {share + "/sim", share + "/cells", OXA_BINARY_DIR "/lib/oxautils"};
    simulation.arg.configFile = configuration();
    simulation.arg.device = part;
    simulation.arg.ipDir = share + "/ip";
    simulation.workDir = path("work");
    simulation.progress = [](const QString&, int) { return true; };
    QDir().mkpath(simulation.workDir);

    Messages messages; // what no hardware does is left to the Verilog
    plans = corePlans(m_cores, {}, simulation.arg, messages);
    std::vector<SampleRequest> requests;
    for (const CorePlan& plan : plans)
        requests.push_back(plan.request);
    if (!sampleWaveform(path("waveform.vcd"), requests, waveform, messages))
        return messages.last().message();
    qint64 steps = 0;
    QString error;
    if (!buildTarget(simulation, plans, waveform, 0, m_target, steps, &error))
        return error;
    if (!m_target.start())
        return m_target.error();
    return m_client.begin() && m_client.discover(identities) ? QString() : m_client.error();
}
