// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_VPI_TARGET_H
#define IP_SIM_VPI_TARGET_H

#include "bitbang.h"
#include "nets.h"
#include "stimulus.h"

#include <vpi_user.h>

#include <string>
#include <unistd.h>

namespace oxa_target {

/// The arguments of $oxa_target.
enum Argument { Tck, Tms, Tdi, Tdo, Values, Clocks, ArgumentCount };

/// A simulated target: serves the clients of its two sockets. Simulation time advances only when
/// one requests it.
class Target : public Pads {
public:
    Target(vpiHandle scope, const vpiHandle (&arguments)[ArgumentCount]);

    bool start(); ///< opens what the options name; stops the simulation when it cannot

    void drive(bool tck, bool tms, bool tdi) override;
    bool tdo() override;

private:
    void wake();
    bool open(const char* option, ServerSocket& socket);
    bool play();
    bool obeyControl();
    void beginRun(const std::string& count);
    void endRun();
    void look(const std::string& names);
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
    WatchedNets m_watched;
    std::string m_clocks; // levels for after the values are set
    const bool m_hasBench;
    bool m_timePasses = false; // until the next time with an event
    const pid_t m_parent = getppid();
};

}

#endif
