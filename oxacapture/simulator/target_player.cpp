// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/target_player.h"

#include "oxacapture/simulator/simulation.h"

#include <QThread>

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kStepsAnOrder = 400; // between two checks of JTAG
constexpr int kPause = 20; // ms between two checks of the cores
constexpr int kShortPause = 1; // ms, when a client has just armed or stopped a core
constexpr int kClientPause = 1000; // ms after which it takes its time
constexpr int kArmingPause = 100; // ms in which further cores are armed

// What tells whether a core waits for its sample clock: what JTAG asks for, and how far that
// clock's side is. JTAG sees the latter only when it asks.
enum Net { Armed, Stop, Running, Finished, Stopped, NetCount };
constexpr const char* kNets[NetCount] = {"arm_tck", "stop_tck", "running", "finished", "stopped"};

}

QStringList playerNets(const std::vector<CorePlan>& cores)
{
    QStringList nets;
    for (size_t position = 0; position < cores.size(); ++position) {
        const QString core = cores[position].lite
            ? QString("oxa_testbench.u_oxa.u_ao_top")
            : QString("oxa_testbench.u_oxa.u_la%1_top").arg(position);
        for (const char* net : kNets)
            nets += core + '.' + net;
    }
    return nets;
}

TargetPlayer::TargetPlayer(
    SimulatedTarget& target, qint64 steps, bool loop, const std::vector<CorePlan>& cores)
    : m_target(target)
    , m_steps(steps)
    , m_end(steps - qint64(2) * kLeadOut)
    , m_loop(loop)
    , m_names(playerNets(cores))
{
}

bool TargetPlayer::look(Cores& cores)
{
    std::vector<SimulatedTarget::Level> levels;
    if (!m_target.look(m_names, levels))
        return false;
    bool stays = false; // a core that was armed before
    for (size_t i = 0; i < levels.size(); i += NetCount) {
        const auto isHigh = [&](Net net) { return levels[i + net] != SimulatedTarget::Low; };
        const bool armed = isHigh(Armed);
        const bool moves = armed
            ? !isHigh(Finished)
            : isHigh(Running) || isHigh(Finished) || isHigh(Stop) != isHigh(Stopped);
        const bool rose = levels[i + Armed] == SimulatedTarget::HighAgain;
        cores.armed.push_back(armed);
        cores.busy = cores.busy || moves;
        cores.stopping = cores.stopping || (moves && !armed);
        cores.anew = cores.anew || rose;
        stays = stays || (moves && armed && !rose);
    }
    cores.anew = cores.anew && !stays;
    return true;
}

bool TargetPlayer::step()
{
    Cores now;
    if (!look(now))
        return false;
    m_playing = m_playing && !now.anew;
    const bool ok = !now.busy || (m_playing ? playOn(now) : begin(now));
    m_playing = m_playing && now.busy;
    if (now.busy || now.armed != m_before.armed)
        m_active.start();
    m_before = now;
    if (!m_playing)
        QThread::msleep(
            m_active.isValid() && m_active.elapsed() < kClientPause ? kShortPause : kPause);
    return ok;
}

// Waits until no further core is armed.
bool TargetPlayer::begin(const Cores& now)
{
    const auto isArmed = [](bool armed) { return armed; };
    const auto count = std::count_if(now.armed.begin(), now.armed.end(), isArmed);
    const auto before = std::count_if(m_before.armed.begin(), m_before.armed.end(), isArmed);
    if (size_t(count) < now.armed.size() && (now.anew || count > before)) {
        QThread::msleep(kArmingPause);
        return true;
    }
    m_playing = true;
    if (!m_loop && !now.stopping)
        rewind();
    return true;
}

bool TargetPlayer::playOn(const Cores& now)
{
    if (m_at < m_end)
        return play(m_end);
    if (now.stopping && m_at < m_steps)
        return play(m_steps);
    if (now.stopping || m_loop)
        rewind();
    else
        QThread::msleep(kPause);
    return true;
}

// Plays for a short time, then pauses for as long.
bool TargetPlayer::play(qint64 end)
{
    QElapsedTimer timer;
    timer.start();
    const qint64 steps = std::min(kStepsAnOrder, end - m_at);
    if (!m_target.play(steps))
        return false;
    m_at += steps;
    QThread::msleep(std::max(1ul, static_cast<unsigned long>(timer.elapsed())));
    return true;
}

void TargetPlayer::rewind()
{
    m_at = 0;
    m_target.rewind();
}

}
