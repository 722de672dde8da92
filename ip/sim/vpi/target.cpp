// A simulated target: a socket for the pads of a design's test access port, and a recorded stimulus
// for its other ports.
//
//   $oxa_target(tck, tms, tdi, tdo, values, clocks);
//
// drives the variables tck, tms, tdi, values and clocks, and reads the net tdo. Simulation time
// advances only when a client requests it. Command line options:
//
//   +oxa_jtag=ADDRESS      address for remote_bitbang (docs/simulated-target.md)
//   +oxa_control=ADDRESS   address for control lines (docs/simulated-target.md)
//   +oxa_stimulus=FILE     the steps for the command "run"
//   +oxa_settle=1          unknown registers and memories start at 0
//   +oxa_bench=1           the design has its own bench: "run" counts the times at which something
//                          happens, and ends when a net changes that "look" has read; JTAG takes
//                          no simulation time
//   +oxa_find=MODULE       prints the paths of a module's instances and ends
//
// with an ADDRESS as in server_socket.h. It ends when its control client disconnects, or the
// process that started it ends.

#include "bitbang.h"
#include "instances.h"
#include "power_up.h"
#include "stimulus.h"

#include <vpi_user.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <poll.h>
#include <sstream>
#include <unistd.h>

namespace oxa_target {

namespace {

constexpr int kParentCheck = 1000; // ms between two checks that it is running

// vvp only records a signal that ends it, and handles it when simulation time advances.
volatile std::sig_atomic_t endedBySignal = 0;

bool isStopped = false; // by `stop`

enum Argument { Tck, Tms, Tdi, Tdo, Values, Clocks, ArgumentCount };

void putBit(vpiHandle net, bool bit)
{
    s_vpi_value value = {};
    value.format = vpiScalarVal;
    value.value.scalar = bit ? vpi1 : vpi0;
    vpi_put_value(net, &value, nullptr, vpiNoDelay);
}

// `format` is that of `digits`: vpiHexStrVal or vpiBinStrVal.
void putDigits(vpiHandle net, PLI_INT32 format, std::string& digits)
{
    s_vpi_value value = {};
    value.format = format;
    value.value.str = digits.data();
    vpi_put_value(net, &value, nullptr, vpiNoDelay);
}

// Whether any of its bits is 1.
bool isHigh(vpiHandle net)
{
    s_vpi_value value = {};
    value.format = vpiBinStrVal;
    vpi_get_value(net, &value);
    return std::strchr(value.value.str, '1') != nullptr;
}

class Target : public Pads {
public:
    Target(vpiHandle scope, const vpiHandle (&arguments)[ArgumentCount]);

    bool start();
    void wake();

    void drive(bool tck, bool tms, bool tdi) override;
    bool tdo() override;

private:
    struct Watched {
        vpiHandle net = nullptr;
        bool wasLow = false; // at the previous `look`, or since
        bool* changes = nullptr; // set to true at each change
    };

    bool open(const char* option, ServerSocket& socket);
    bool play();
    bool obeyControl();
    void beginRun(const std::string& count);
    void endRun();
    void look(const std::string& names);
    Watched* watch(const std::string& name);
    bool wait();
    void sleep();
    void callBack(PLI_INT32 reason);
    bool put(Argument pad, bool level);

    vpiHandle m_scope; // scope to be settled; null when done
    vpiHandle m_arguments[ArgumentCount];
    ServerSocket m_jtag;
    ServerSocket m_control;
    Bitbang m_bitbang {m_jtag, *this};
    Stimulus m_stimulus;
    bool m_running = false;
    int m_pads[Tdo] = {-1, -1, -1}; // levels driven last
    bool m_rises = false; // TCK rises when the other pads are stable
    long m_stepsLeft = 0;
    long m_stepsRun = 0;
    std::map<std::string, Watched> m_watched;
    std::string m_clocks; // levels for after the values are set
    const bool m_hasBench;
    bool m_timePasses = false; // until the next time with an event
    bool m_watchedChanges = false; // a net from `look` has changed in this run
    const pid_t m_parent = getppid();
};

// The text of "+option=" on the simulator's command line; null without it.
const char* option(const char* name)
{
    s_vpi_vlog_info info = {};
    vpi_get_vlog_info(&info);
    const size_t length = std::strlen(name);
    for (int i = 0; i < info.argc; ++i) {
        const char* argument = info.argv[i];
        if (argument[0] == '+' && std::strncmp(argument + 1, name, length) == 0
            && argument[length + 1] == '=')
            return argument + length + 2;
    }
    return nullptr;
}

void stop(const std::string& why)
{
    isStopped = true;
    if (!why.empty()) {
        vpi_printf("oxa_target: %s\n", why.c_str());
        vpip_set_return_value(1);
    }
    vpi_control(vpiFinish, 0);
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
    const bool isOver = m_stepsLeft == 0 || (m_hasBench && m_watchedChanges);
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
    m_watchedChanges = false;
    m_running = m_stepsLeft >= 0 && *rest == '\0';
    if (!m_running)
        m_control.send("error no such command\n");
}

// The levels of nets and registers; 2 is a 1 that was a 0 since the previous call.
void Target::look(const std::string& names)
{
    std::string levels;
    std::istringstream list(names);
    for (std::string name; list >> name;) {
        Watched* watched = watch(name);
        if (!watched) {
            m_control.send("error there is no " + name + '\n');
            return;
        }
        const bool high = isHigh(watched->net);
        levels += !high ? '0' : watched->wasLow ? '2' : '1';
        watched->wasLow = !high;
    }
    m_control.send("saw " + levels + '\n');
}

// Watches a net from its first `look` on; null when there is none.
Target::Watched* Target::watch(const std::string& name)
{
    const auto known = m_watched.find(name);
    if (known != m_watched.end())
        return &known->second;
    std::string text = name;
    vpiHandle net = vpi_handle_by_name(text.data(), nullptr);
    if (!net)
        return nullptr;
    Watched& watched = m_watched[name];
    watched.net = net;
    watched.changes = &m_watchedChanges;
    s_vpi_time time = {};
    time.type = vpiSuppressTime;
    s_vpi_value value = {};
    value.format = vpiSuppressVal;
    s_cb_data callback = {};
    callback.reason = cbValueChange;
    callback.obj = net;
    callback.time = &time;
    callback.value = &value;
    callback.user_data = reinterpret_cast<PLI_BYTE8*>(&watched);
    callback.cb_rtn = [](p_cb_data data) -> PLI_INT32 {
        Watched& changed = *reinterpret_cast<Watched*>(data->user_data);
        changed.wasLow = changed.wasLow || !isHigh(changed.net);
        *changed.changes = true;
        return 0;
    };
    vpi_register_cb(&callback);
    return &watched;
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

std::unique_ptr<Target> target;

PLI_INT32 callTarget(PLI_BYTE8*)
{
    vpiHandle arguments[ArgumentCount] = {};
    const vpiHandle call = vpi_handle(vpiSysTfCall, nullptr);
    const vpiHandle list = vpi_iterate(vpiArgument, call);
    for (int i = 0; list && i < ArgumentCount; ++i) {
        arguments[i] = vpi_scan(list);
        if (!arguments[i])
            break;
    }
    if (target || !arguments[ArgumentCount - 1]) {
        stop("$oxa_target is called once, with tck, tms, tdi, tdo, values and clocks");
        return 0;
    }
    target = std::make_unique<Target>(vpi_handle(vpiScope, call), arguments);
    target->start();
    return 0;
}

// $finish of a bench: the captures are still to be read.
PLI_INT32 callFinish(PLI_BYTE8*)
{
    static bool isTold = false;
    s_vpi_time now = {};
    now.type = vpiScaledRealTime;
    vpi_get_time(vpi_handle(vpiScope, vpi_handle(vpiSysTfCall, nullptr)), &now);
    if (!isTold)
        vpi_printf("oxa_target: $finish at %g; the design continues\n", now.real);
    isTold = true;
    return 0;
}

PLI_INT32 find(p_cb_data)
{
    printInstances(option("oxa_find"));
    stop({});
    return 0;
}

PLI_INT32 endOfSimulation(p_cb_data)
{
    if (option("oxa_bench") && !isStopped)
        vpi_printf("oxa_target: the bench has ended, and its clocks with it\n");
    target.reset(); // closes the sockets
    return 0;
}

void callAt(PLI_INT32 reason, PLI_INT32 (*function)(p_cb_data))
{
    s_cb_data callback = {};
    callback.reason = reason;
    callback.cb_rtn = function;
    vpi_register_cb(&callback);
}

void registerTarget()
{
    s_vpi_systf_data task = {};
    task.type = vpiSysTask;
    task.tfname = "$oxa_target";
    task.calltf = callTarget;
    vpi_register_systf(&task);
    if (option("oxa_bench")) {
        task.tfname = "$finish";
        task.calltf = callFinish;
        vpi_register_systf(&task);
    }
    callAt(cbEndOfSimulation, endOfSimulation);
    if (option("oxa_find"))
        callAt(cbStartOfSimulation, find);
}

}

}

extern "C" {
__attribute__((visibility("default"))) void (*vlog_startup_routines[])()
    = {oxa_target::registerTarget, nullptr};
}
