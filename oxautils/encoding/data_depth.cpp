// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/data_depth.h"

#include "oxautils/model/limits.h"

#include <dev/device_facts.h>

namespace OXA {

namespace {

// A file may contain any number; results wrap at 32 bits.
int minus(int a, int b) { return int(unsigned(a) - unsigned(b)); }

/// Samples from the trigger sample on that are taken before the register counts.
int uncountedSamples(const AoCore& core)
{
    return core.expressionType == DynamicExpressions ? 4 : 3;
}

}

int depthFlag(const QString& configFile) { return configFile.endsWith("oxa") ? 0 : 1; }

int dataDepth(const AoCore& core, const QString& device, int flag)
{
    const int depth = minus(minus(core.captureAmount, core.triggerPos), uncountedSamples(core));
    return minus(depth, flag == 0 ? DEV::deviceFacts(device).extraStages : 0);
}

qint64 samplesBehindTrigger(const AoCore& core, const QString& device, int flag)
{
    return qint64(dataDepth(core, device, flag)) + uncountedSamples(core) - 1;
}

}
