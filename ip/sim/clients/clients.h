// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_CLIENTS_CLIENTS_H
#define IP_SIM_CLIENTS_CLIENTS_H

#include "bitbang.h"
#include "simulation.h"
#include "stimulus.h"

#include <unistd.h>

namespace oxa_target {

/// The clients of a simulated target, at its two sockets. Simulation time advances only when one
/// requests it.
class Clients : public Pads {
public:
    /// The words of the ports. `hasBench`: the design has a bench of its own.
    Clients(Design& design, size_t valueWords, size_t clockWords, bool hasBench);

    bool open(); ///< what the options name; stops the simulation when it cannot

    /// To be called whenever the design is stable: executes the next action, which changes the
    /// design. False when no more can come.
    bool act();
    /// Whether the action just executed is to let time pass.
    bool letsTimePass() const { return m_timePasses; }

    void drive(bool tck, bool tms, bool tdi) override;
    bool tdo() override { return m_design.tdo(); }

private:
    bool openSocket(const char* name, ServerSocket& socket);
    bool play();
    bool obeyControl();
    void beginRun();
    void endRun();
    void look(const std::string& names);
    bool wait();
    bool put(Pad pad, bool level);

    Design& m_design;
    ServerSocket m_jtag;
    ServerSocket m_control;
    Bitbang m_bitbang {m_jtag, *this};
    Stimulus m_stimulus;
    bool m_running = false;
    int m_pads[PadCount] = {-1, -1, -1}; // levels driven last
    bool m_rises = false; // TCK rises when the other pads are stable
    long m_stepsLeft = 0;
    long m_stepsRun = 0;
    StimulusStep m_step; // the one being played
    bool m_clocksChange = false; // when its values have settled
    const bool m_hasBench;
    bool m_timePasses = false;
    const pid_t m_parent = getppid();
};

}

#endif
