// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/device_rules.h"

#include <dev/device_facts.h>

namespace OXA {

namespace {

// In the order of DEV::ControlTop.
constexpr const char* kControlTops[] = {"qx_con_top.v", "qx_con_top_138.v", "qx_con_top_6k.v"};

}

DEV::ChipInfo chipOf(const OxaArg& arg)
{
    return DEV::DeviceDb::instance().find(arg.device, arg.package);
}

QString controlTopName(const DEV::ChipInfo& chip)
{
    return kControlTops[DEV::deviceFacts(chip.name).controlTop];
}

bool hasShadowSram(const DEV::ChipInfo& chip)
{
    return !chip.resources.value(DEV::ShadowSramEntry).isEmpty();
}

bool needsZvDefine(const DEV::ChipInfo& chip)
{
    return DEV::deviceFacts(chip.name).hasZv && chip.variant == "ZV";
}

}
