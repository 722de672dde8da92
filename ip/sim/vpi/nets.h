// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_VPI_NETS_H
#define IP_SIM_VPI_NETS_H

#include <vpi_user.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace oxa_target {

void putBit(vpiHandle net, bool bit);

/// The words have 32 bits, the least significant first. Bits of `unknown`, which may be empty,
/// become x.
void putWords(
    vpiHandle net, const std::vector<uint32_t>& words, const std::vector<uint32_t>& unknown);

bool isHigh(vpiHandle net); ///< whether any of its bits is 1

/// Nets that are watched from their first `look` on.
class WatchedNets {
public:
    /// `changed` is set to true when one of them changes.
    explicit WatchedNets(bool& changed)
        : m_changed(changed)
    {
    }

    bool look(const std::string& name, std::string& levels); ///< as `Design::look`

private:
    struct Watched {
        vpiHandle net = nullptr;
        bool wasLow = false; // at the previous `look`, or since
        bool* changes = nullptr; // set to true at each change
    };

    Watched* watch(const std::string& name);

    bool& m_changed;
    std::map<std::string, Watched> m_nets;
};

}

#endif
