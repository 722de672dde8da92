#include "oxautils/encoding/data_depth.h"

#include <algorithm>

namespace OXA {

namespace {

// Their pipeline takes one sample more.
constexpr const char* kDeeperDevices[] = {"QX1N-1", "QX1A-1C", "QX1AN-1C", "QX1N-2B", "QX1NS-2",
    "QX1NS-2C", "QX1NSR-2", "QX1NSR-2C", "QX1NSE-2C", "QX1N-4", "QX1N-4B", "QX1NR-4", "QX1NR-4B",
    "QX1NRF-4B", "QX1N-6", "QX1N-9", "QX1NR-9", "QX2A-18", "QX2AR-18", "QX2A-55"};

// Any number may stand in a file; what leaves 32 bits wraps.
int minus(int a, int b) { return int(unsigned(a) - unsigned(b)); }

}

int dataDepth(const AoCore& core, const QString& device, int flag)
{
    const int depth
        = minus(minus(core.captureAmount, core.triggerPos), core.expressionType == 1 ? 4 : 3);
    const bool deeper = std::any_of(std::begin(kDeeperDevices), std::end(kDeeperDevices),
        [&device](const char* name) { return device == name; });
    return flag == 0 && deeper ? minus(depth, 1) : depth;
}

}
