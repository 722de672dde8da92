// SPDX-License-Identifier: Apache-2.0
#include "clients.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <poll.h>
#include <sstream>

namespace oxa_target {

namespace {

constexpr int kParentCheck = 1000; // ms between two checks that it is running

// vvp only records a signal that ends it, and handles it when simulation time advances.
volatile std::sig_atomic_t endedBySignal = 0;

}

Clients::Clients(Design& design, size_t valueWords, size_t clockWords, bool hasBench)
    : m_design(design)
    , m_stimulus(valueWords, clockWords)
    , m_hasBench(hasBench)
{
}

bool Clients::open()
{
    if (!openSocket("oxa_jtag", m_jtag) || !openSocket("oxa_control", m_control))
        return false;
    if (!m_jtag.isListening() && !m_control.isListening()) {
        stop("+oxa_jtag or +oxa_control is required");
        return false;
    }
    if (m_jtag.port() > 0)
        say("remote_bitbang at port " + std::to_string(m_jtag.port()));
    for (const int number : {SIGINT, SIGTERM})
        std::signal(number, [](int) { endedBySignal = 1; });
    drive(false, true, false);
    return true;
}

bool Clients::openSocket(const char* name, ServerSocket& socket)
{
    const char* address = option(name);
    std::string error;
    if (!address || socket.listen(address, error))
        return true;
    stop(error);
    return false;
}

bool Clients::act()
{
    m_timePasses = false;
    if (m_rises) {
        m_rises = false;
        return put(Tck, true);
    }
    while (!endedBySignal && !play() && !m_bitbang.step() && !obeyControl()) {
        if (!wait())
            return false;
    }
    return !endedBySignal;
}

// One phase of a step; false when there is none.
bool Clients::play()
{
    if (m_clocksChange) {
        m_clocksChange = false;
        m_design.putClocks(m_step.clocks, m_step.unknownClocks);
        return true;
    }
    if (!m_running)
        return false;
    const bool isOver = m_stepsLeft == 0 || (m_hasBench && m_design.watchedChanged);
    if (isOver || (!m_hasBench && !m_stimulus.next(m_step))) {
        endRun();
        return false;
    }
    --m_stepsLeft;
    ++m_stepsRun;
    m_timePasses = m_hasBench;
    if (m_hasBench)
        return true;
    m_clocksChange = m_step.changesValues;
    if (m_step.changesValues)
        m_design.putValues(m_step.values);
    else
        m_design.putClocks(m_step.clocks, m_step.unknownClocks);
    return true;
}

void Clients::endRun()
{
    m_running = false;
    flush(); // what a bench has printed
    if (m_stepsLeft > 0 && !m_hasBench)
        m_control.send("error step " + std::to_string(m_stepsRun + 1) + " is not whole\n");
    else
        m_control.send("ran " + std::to_string(m_stepsRun) + '\n');
}

// Executes a line of the control client; false when there is none.
bool Clients::obeyControl()
{
    const size_t end = m_control.input.find('\n');
    if (end == std::string::npos)
        return false;
    const std::string line = m_control.input.substr(0, end);
    unsigned bytes = 0; // that follow the line
    if (std::sscanf(line.c_str(), "play %ld %u", &m_stepsLeft, &bytes) == 2) {
        if (m_control.input.size() - (end + 1) < bytes)
            return false;
        m_stimulus.take(m_control.input.substr(end + 1, bytes));
        beginRun();
    } else if (std::sscanf(line.c_str(), "run %ld", &m_stepsLeft) == 1 && m_hasBench) {
        beginRun();
    } else if (line.rfind("look ", 0) == 0) {
        look(line.substr(5));
    } else {
        m_control.send("error no such command\n");
    }
    m_control.input.erase(0, end + 1 + bytes);
    return true;
}

void Clients::beginRun()
{
    m_running = true;
    m_stepsRun = 0;
    m_design.watchedChanged = false;
}

// The levels of nets and registers.
void Clients::look(const std::string& names)
{
    std::string levels;
    std::istringstream list(names);
    for (std::string name; list >> name;) {
        if (!m_design.look(name, levels)) {
            m_control.send("error there is no " + name + '\n');
            return;
        }
    }
    m_control.send("saw " + levels + '\n');
}

// Waits for input; false when no more can come.
bool Clients::wait()
{
    pollfd polled[] = {
        {m_jtag.listenerHandle(),    POLLIN,                   0},
        {m_jtag.clientHandle(),      m_jtag.clientEvents(),    0},
        {m_control.listenerHandle(), POLLIN,                   0},
        {m_control.clientHandle(),   m_control.clientEvents(), 0}
    };
    if (poll(polled, 4, kParentCheck) < 0 && errno != EINTR)
        return false;
    const bool controlStays = m_control.receive();
    m_jtag.receive();
    return controlStays && getppid() == m_parent;
}

// Pads that change together with a rising TCK change before it.
void Clients::drive(bool tck, bool tms, bool tdi)
{
    const bool changed = put(Tms, tms) | put(Tdi, tdi);
    m_rises = changed && tck && m_pads[Tck] == 0;
    if (!m_rises)
        put(Tck, tck);
}

// Sets the pad; true when its level changed.
bool Clients::put(Pad pad, bool level)
{
    if (m_pads[pad] == int(level))
        return false;
    m_design.put(pad, level);
    m_pads[pad] = level;
    return true;
}

}
