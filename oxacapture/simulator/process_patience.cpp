// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/process_patience.h"

#include <ctime>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kMost = 120'000'000'000; // ns of processor time
constexpr int kStandstill = 60000; // ms without any

// The processor time of the process so far; negative when it has ended. It is 0 until the process
// has been interrupted for the first time.
qint64 processorTime(qint64 pid)
{
    clockid_t clock = 0;
    timespec time = {};
    if (clock_getcpuclockid(pid_t(pid), &clock) != 0 || clock_gettime(clock, &time) != 0)
        return -1;
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

}

void ProcessPatience::begin(qint64 pid)
{
    m_pid = pid;
    m_begun = m_seen = processorTime(pid);
    m_standstill.setRemainingTime(kStandstill);
}

bool ProcessPatience::lasts()
{
    const qint64 now = processorTime(m_pid);
    if (now > m_seen)
        m_standstill.setRemainingTime(kStandstill);
    m_seen = now;
    return now >= 0 && now - m_begun < kMost && !m_standstill.hasExpired();
}

}
