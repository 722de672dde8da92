// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_INTERRUPT_H
#define APPS_OXA_INTERRUPT_H

#include <atomic>
#include <functional>
#include <thread>

/// During its lifetime, the first Ctrl-C (or SIGTERM) calls `stop` in a separate thread; the second
/// ends the program. Create it before any other thread.
class Interrupt {
public:
    explicit Interrupt(const std::function<void()>& stop);
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    bool happened() const { return m_count > 0; }

private:
    void wait(const std::function<void()>& stop);

    std::atomic<int> m_count {0};
    std::atomic<bool> m_over {false};
    std::thread m_thread;
};

#endif
