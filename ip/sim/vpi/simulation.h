// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_VPI_SIMULATION_H
#define IP_SIM_VPI_SIMULATION_H

#include <string>

namespace oxa_target {

/// The text of "+NAME=" on the simulator's command line; null without it.
const char* option(const char* name);

/// Ends the simulation; with an error when `why` is not empty.
void stop(const std::string& why);

bool isStopped(); ///< by `stop`

}

#endif
