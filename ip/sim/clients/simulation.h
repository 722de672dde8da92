// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_CLIENTS_SIMULATION_H
#define IP_SIM_CLIENTS_SIMULATION_H

#include <cstdint>
#include <string>
#include <vector>

namespace oxa_target {

// Each simulator has its own of the following.

/// The text of "+NAME=" on the simulator's command line; null without it.
const char* option(const char* name);

/// Prints "oxa_target: TEXT", and whatever the design has printed.
void say(const std::string& text);
void flush(); ///< of what the design has printed

/// Ends the simulation; with an error when `why` is not empty.
void stop(const std::string& why);

/// The pads that clients drive.
enum Pad { Tck, Tms, Tdi, PadCount };

/// A simulated design. Words have 32 bits, the least significant bits first.
class Design {
public:
    virtual ~Design() = default;
    virtual void put(Pad pad, bool level) = 0;
    virtual bool tdo() = 0;
    virtual void putValues(const std::vector<uint32_t>& values) = 0;
    /// Bits of `unknown` are for clocks that had no edge yet.
    virtual void putClocks(
        const std::vector<uint32_t>& clocks, const std::vector<uint32_t>& unknown)
        = 0;
    /// Appends to `levels` that of the net `name`: 0, 1, or 2 for a 1 that was a 0 since the
    /// previous call. False when there is no such net.
    virtual bool look(const std::string& name, std::string& levels) = 0;

    bool watchedChanged = false; ///< set with a bench when a net changes that `look` has read
};

}

#endif
