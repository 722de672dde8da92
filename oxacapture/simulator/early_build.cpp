// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/early_build.h"

#include "files/fail.h"
#include "oxacapture/simulator/preparation.h"

namespace OXA_CAPTURE {

namespace {

using namespace std::chrono_literals;

constexpr auto kPoll = 20ms;
constexpr qint64 kLeastStep = 8; // bytes of a waveform file, with its time and its edge

}

EarlyBuild::EarlyBuild(
    const Simulation& simulation, const std::vector<CorePlan>& cores, qint64 bytes)
{
    if (!takesVerilator(simulation, bytes / kLeastStep))
        return;
    m_built = std::async(std::launch::async, [this, simulation, cores] {
        return buildVerilated(
            simulation, cores, prepare(simulation, cores), m_target, [this] { return !m_stopped; },
            &m_error);
    });
}

EarlyBuild::~EarlyBuild() { stop(); }

bool EarlyBuild::finish(const std::function<bool()>& goesOn, QString* error)
{
    while (m_built.wait_for(kPoll) == std::future_status::timeout) {
        if (!goesOn())
            m_stopped = true;
    }
    return m_built.get() || OXA::fail(error, m_error);
}

void EarlyBuild::stop()
{
    m_stopped = true;
    if (m_built.valid())
        m_built.get();
}

}
