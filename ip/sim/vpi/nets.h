// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_VPI_NETS_H
#define IP_SIM_VPI_NETS_H

#include <vpi_user.h>

#include <map>
#include <string>

namespace oxa_target {

void putBit(vpiHandle net, bool bit);

/// `format` is that of `digits`: vpiHexStrVal or vpiBinStrVal.
void putDigits(vpiHandle net, PLI_INT32 format, std::string& digits);

bool isHigh(vpiHandle net); ///< whether any of its bits is 1

/// Nets that are watched from their first `look` on.
class WatchedNets {
public:
    /// Appends to `levels` that of the net `name`: 0, 1, or 2 for a 1 that was a 0 since the
    /// previous call. False when there is no such net.
    bool look(const std::string& name, std::string& levels);

    bool changed = false; ///< set to true when one of them changes

private:
    struct Watched {
        vpiHandle net = nullptr;
        bool wasLow = false; // at the previous `look`, or since
        bool* changes = nullptr; // set to true at each change
    };

    Watched* watch(const std::string& name);

    std::map<std::string, Watched> m_nets;
};

}

#endif
