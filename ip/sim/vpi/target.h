// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_VPI_TARGET_H
#define IP_SIM_VPI_TARGET_H

#include "clients/clients.h"
#include "nets.h"

#include <vpi_user.h>

namespace oxa_target {

/// The arguments of $oxa_target; the first ones are the pads.
enum Argument { Tdo = PadCount, Values, Clocks, ArgumentCount };

/// The design that calls $oxa_target, and its clients.
class Target : public Design {
public:
    Target(vpiHandle scope, const vpiHandle (&arguments)[ArgumentCount]);

    bool start(); ///< stops the simulation when it cannot serve clients

    void put(Pad pad, bool level) override;
    bool tdo() override;
    void putValues(const std::vector<uint32_t>& values) override;
    void putClocks(
        const std::vector<uint32_t>& clocks, const std::vector<uint32_t>& unknown) override;
    bool look(const std::string& name, std::string& levels) override;

private:
    void wake();
    void sleep();
    void callBack(PLI_INT32 reason);

    vpiHandle m_scope; // scope to be settled; null when done
    vpiHandle m_arguments[ArgumentCount];
    WatchedNets m_watched {watchedChanged};
    const bool m_hasBench;
    Clients m_clients;
    bool m_timePasses = false; // until the next time with an event
};

}

#endif
