// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_IP_CORE_TARGET_H
#define TESTS_IP_CORE_TARGET_H

#include "random_core.h"

#include "oxacapture/simulator/simulation.h"
#include "oxacapture/target/analyzer_client.h"

/// Standard cores in the simulator, which all sample at edges of "clk", with a client at its pads.
class CoreTarget {
public:
    std::vector<OXA_CAPTURE::CorePlan> plans; ///< as the configuration has them
    OXA_CAPTURE::SampledWaveform waveform; ///< as the cores sample it
    std::vector<OXA_CAPTURE::CoreIdentity> identities;

    CoreTarget();

    /// Writes the configuration of `cores` and a waveform of random samples.
    void configure(const QList<OXA::AoCore*>& cores, Random& random, int samples);
    /// Builds the cores for `part`, and finds them. An error or nothing.
    QString start(const QString& part);
    /// Plays further samples of the waveform.
    bool play(int samples) { return m_target.play(qint64(2) * samples); }

    OXA_CAPTURE::JtagLink& link() { return m_target.jtag(); }
    OXA_CAPTURE::AnalyzerClient& client() { return m_client; }
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QString configuration() const { return path("cores.oxa"); }

private:
    QTemporaryDir m_dir;
    QList<OXA::AoCore*> m_cores;
    OXA_CAPTURE::SimulatedTarget m_target;
    OXA_CAPTURE::AnalyzerClient m_client;
};

#endif
