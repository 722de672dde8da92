// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_VPI_INSTANCES_H
#define IP_SIM_VPI_INSTANCES_H

#include <string>

namespace oxa_target {

/// Prints "oxa_target: instance PATH" for each instance of `module` in the design, with the path as
/// Verilog refers to it.
void printInstances(const std::string& module);

}

#endif
