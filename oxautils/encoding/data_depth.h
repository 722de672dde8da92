#ifndef OXAUTILS_ENCODING_DATA_DEPTH_H
#define OXAUTILS_ENCODING_DATA_DEPTH_H

#include "oxautils/model/ao_core.h"

namespace OXA {

/// The flag of a core that the file `configFile` holds.
OXAUTILS_EXPORT int depthFlag(const QString& configFile);

/// What a core's data depth register starts with: the samples of a window from its trigger on, less
/// what the pipeline takes; below 0 for a window too short. `device` is a device name, some of
/// whose pipelines take one sample more unless `flag` is not 0.
int dataDepth(const AoCore& core, const QString& device, int flag);

/// Samples of a window behind its trigger that the core takes with this register; below 0 for a
/// window too short.
OXAUTILS_EXPORT qint64 samplesBehindTrigger(const AoCore& core, const QString& device, int flag);

}

#endif
