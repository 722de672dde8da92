#ifndef IP_SIM_VPI_POWER_UP_H
#define IP_SIM_VPI_POWER_UP_H

#include <vpi_user.h>

namespace oxa_target {

/// Gives every unknown bit of the registers and memories below `scope` the value 0.
///
/// A chip powers up with one value or another where none was asked for. In a netlist an unknown one
/// spreads through gates whose result does not depend on it.
void settleBelow(vpiHandle scope);

}

#endif
