// SPDX-License-Identifier: Apache-2.0
#include "target.h"

#include "power_up.h"
#include "simulation.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <sstream>

namespace oxa_target {

namespace {

constexpr int kParentCheck = 1000; // ms between two checks that it is running

// vvp only records a signal that ends it, and handles it when simulation time advances.
volatile std::sig_atomic_t endedBySignal = 0;

}

Target::Target(vpiHandle scope, const vpiHandle (&arguments)[ArgumentCount])
    : m_scope(option("oxa_settle") ? scope : nullptr)
    , m_hasBench(option("oxa_bench"))
{
    std::memcpy(m_arguments, arguments, sizeof m_arguments);
}

bool Target::start()
{
    if (!open("oxa_jtag", m_jtag) || !open("oxa_control", m_control))
        return false;
    const char* stimulus = option("oxa_stimulus");
    if (stimulus && !m_stimulus.open(stimulus)) {
        stop(std::string("cannot read ") + stimulus);
        return false;
    }
    if (!m_jtag.isListening() && !m_control.isListening()) {
        stop("+oxa_jtag or +oxa_control is required");
        return false;
    }
    if (m_jtag.port() > 0) {
        vpi_printf("oxa_target: remote_bitbang at port %d\n", m_jtag.port());
        vpi_flush();
    }
    for (const int number : {SIGINT, SIGTERM})
        std::signal(number, [](int) { endedBySignal = 1; });
    drive(false, true, false);
    sleep();
    return true;
}

bool Target::open(const char* name, ServerSocket& socket)
{
    const char* address = option(name);
    std::string error;
    if (!address || socket.listen(address, error))
        return true;
    stop(error);
    return false;
}

// Called when the design is stable: executes the next action, and lets time advance.
void Target::wake()
{
    if (m_scope) { // after all initial blocks
        settleBelow(m_scope);
        m_scope = nullptr;
        return sleep();
    }
    if (m_rises) {
        m_rises = false;
        put(Tck, true);
        return sleep();
    }
    while (!endedBySignal && !play() && !m_bitbang.step() && !obeyControl()) {
        if (!wait())
            return stop({});
    }
    if (endedBySignal)
        return stop({});
    sleep();
}

// One phase of a step; false when there is none.
bool Target::play()
{
    if (!m_clocks.empty()) {
        putDigits(m_arguments[Clocks], vpiBinStrVal, m_clocks);
        m_clocks.clear();
        return true;
    }
    if (!m_running)
        return false;
    StimulusStep step;
    const bool isOver = m_stepsLeft == 0 || (m_hasBench && m_watched.changed);
    if (isOver || (!m_hasBench && !m_stimulus.next(step))) {
        endRun();
        return false;
    }
    --m_stepsLeft;
    ++m_stepsRun;
    m_timePasses = m_hasBench;
    if (m_hasBench)
        return true;
    m_clocks = step.clocks;
    if (!step.values.empty())
        putDigits(m_arguments[Values], vpiHexStrVal, step.values);
    return true;
}

void Target::endRun()
{
    m_running = false;
    vpi_flush(); // what a bench has printed
    if (m_stimulus.isDamaged())
        m_control.send("error line " + std::to_string(m_stimulus.line()) + " is not a step\n");
    else
        m_control.send("ran " + std::to_string(m_stepsRun) + '\n');
}

// Executes a line of the control client; false when there is none.
bool Target::obeyControl()
{
    const size_t end = m_control.input.find('\n');
    if (end == std::string::npos)
        return false;
    const std::string line = m_control.input.substr(0, end);
    m_control.input.erase(0, end + 1);
    const size_t blank = std::min(line.find(' '), line.size());
    const std::string command = line.substr(0, blank);
    const std::string rest = line.substr(std::min(blank + 1, line.size()));
    if (command == "run") {
        beginRun(rest);
    } else if (command == "look") {
        look(rest);
    } else if (line == "rewind") {
        m_stimulus.rewind();
        m_control.send("rewound\n");
    } else {
        m_control.send("error no such command\n");
    }
    return true;
}

void Target::beginRun(const std::string& count)
{
    char* rest = nullptr;
    m_stepsLeft = count.empty() ? -1 : std::strtol(count.c_str(), &rest, 10);
    m_stepsRun = 0;
    m_watched.changed = false;
    m_running = m_stepsLeft >= 0 && *rest == '\0';
    if (!m_running)
        m_control.send("error no such command\n");
}

// The levels of nets and registers.
void Target::look(const std::string& names)
{
    std::string levels;
    std::istringstream list(names);
    for (std::string name; list >> name;) {
        if (!m_watched.look(name, levels)) {
            m_control.send("error there is no " + name + '\n');
            return;
        }
    }
    m_control.send("saw " + levels + '\n');
}

// Waits for input; false when no more can come.
bool Target::wait()
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

// Waits for the design, which takes no simulation time to answer.
void Target::sleep()
{
    if (!m_hasBench)
        callBack(cbAfterDelay);
    else
        callBack(m_timePasses ? cbNextSimTime : cbReadWriteSynch);
}

void Target::callBack(PLI_INT32 reason)
{
    s_vpi_time delay = {};
    delay.type = vpiSimTime;
    delay.low = reason == cbAfterDelay ? 1 : 0;
    s_cb_data callback = {};
    callback.reason = reason;
    callback.time = &delay;
    callback.user_data = reinterpret_cast<PLI_BYTE8*>(this);
    callback.cb_rtn = [](p_cb_data data) -> PLI_INT32 {
        Target& self = *reinterpret_cast<Target*>(data->user_data);
        if (!self.m_timePasses)
            self.wake();
        else { // the new time begins: its events come first
            self.m_timePasses = false;
            self.sleep();
        }
        return 0;
    };
    vpi_register_cb(&callback);
}

// Pads that change together with a rising TCK change before it.
void Target::drive(bool tck, bool tms, bool tdi)
{
    const bool changed = put(Tms, tms) | put(Tdi, tdi);
    m_rises = changed && tck && m_pads[Tck] == 0;
    if (!m_rises)
        put(Tck, tck);
}

// Sets the pad; true when its level changed.
bool Target::put(Argument pad, bool level)
{
    if (m_pads[pad] == int(level))
        return false;
    putBit(m_arguments[pad], level);
    m_pads[pad] = level;
    return true;
}

bool Target::tdo()
{
    s_vpi_value value = {};
    value.format = vpiScalarVal;
    vpi_get_value(m_arguments[Tdo], &value);
    return value.value.scalar == vpi1;
}

}
