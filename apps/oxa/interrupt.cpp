// SPDX-License-Identifier: Apache-2.0
#include "interrupt.h"

#include <csignal>
#include <pthread.h>
#include <unistd.h>

namespace {

sigset_t stopSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    return set;
}

}

Interrupt::Interrupt(const std::function<void()>& stop)
{
    // Blocked here and in all threads created later: only the waiting thread receives them.
    const sigset_t set = stopSignals();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    m_thread = std::thread([this, stop] { wait(stop); });
}

Interrupt::~Interrupt()
{
    m_over = true;
    m_thread.join();
    const sigset_t set = stopSignals();
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

void Interrupt::wait(const std::function<void()>& stop)
{
    const sigset_t set = stopSignals();
    const timespec pause {0, 50'000'000};
    while (!m_over) {
        const int signal = sigtimedwait(&set, nullptr, &pause);
        if (signal < 0)
            continue;
        if (++m_count == 1)
            stop();
        else
            _exit(128 + signal);
    }
}
