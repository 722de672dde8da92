// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_DATA_DEPTH_H
#define OXAUTILS_ENCODING_DATA_DEPTH_H

#include "oxautils/model/ao_core.h"

namespace OXA {

/// The `flag` of a core in the file `configFile`.
OXAUTILS_EXPORT int depthFlag(const QString& configFile);

/// The initial value of a core's data depth register: the samples of a window from its trigger on,
/// minus the delay of the pipeline; below 0 when the window is too short. `device` is a device
/// name; some devices have one sample more of delay unless `flag` is not 0.
int dataDepth(const AoCore& core, const QString& device, int flag);

/// The samples after the trigger that the core takes with this register; below 0 when the window is
/// too short.
OXAUTILS_EXPORT qint64 samplesBehindTrigger(const AoCore& core, const QString& device, int flag);

}

#endif
