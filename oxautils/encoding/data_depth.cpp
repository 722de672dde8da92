#include "oxautils/encoding/data_depth.h"

#include "oxautils/model/limits.h"

#include <dev/device_facts.h>

namespace OXA {

namespace {

// Any number may stand in a file; what leaves 32 bits wraps.
int minus(int a, int b) { return int(unsigned(a) - unsigned(b)); }

}

int dataDepth(const AoCore& core, const QString& device, int flag)
{
    const int depth = minus(minus(core.captureAmount, core.triggerPos),
        core.expressionType == DynamicExpressions ? 4 : 3);
    return minus(depth, flag == 0 ? DEV::deviceFacts(device).extraStages : 0);
}

}
