#include "oxautils/resource/device_facts.h"

#include <QString>

#include <algorithm>

namespace OXA_TOOL {

namespace {

constexpr const char* kDevicesWith9kBlocks[]
    = {"QX3A-50A", "QX3A-20A", "QX3AR-20A", "QX3A-10A", "QX3ANRT-6A", "QX3ANT-6A", "QX3AN-6A"};

}

bool hasBlocksOf9k(const QString& device)
{
    return std::any_of(std::begin(kDevicesWith9kBlocks), std::end(kDevicesWith9kBlocks),
        [&device](const char* name) { return device == QLatin1String(name); });
}

}
