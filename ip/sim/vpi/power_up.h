// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_VPI_POWER_UP_H
#define IP_SIM_VPI_POWER_UP_H

#include <vpi_user.h>

namespace oxa_target {

/// Sets every unknown bit of the registers and memories below `scope` to 0.
///
/// In a chip, registers without initial value power up with some value. In a netlist, an unknown
/// value spreads through gates whose result does not depend on it.
void settleBelow(vpiHandle scope);

}

#endif
