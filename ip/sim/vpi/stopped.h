// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_VPI_STOPPED_H
#define IP_SIM_VPI_STOPPED_H

namespace oxa_target {

bool isStopped(); ///< by `stop`

}

#endif
