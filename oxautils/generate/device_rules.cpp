#include "oxautils/generate/device_rules.h"

namespace OXA {

namespace {

constexpr int kShadowSramEntry = 4;

struct ControlTop {
    const char* devices; // names, divided by "/"
    const char* fileName;
};

constexpr ControlTop kControlTops[] = {
    {"QX5A-138B/QX5A-138C/QX5AT-138B/QX5AT-138C/QX5AT-75B/QX5AT-75C/QX5AS-138B/QX5AS-138C/"
     "QX5AST-138B/QX5AST-138C",  "qx_con_top_138.v"},
    {"QX3ANRT-6A/QX3ANT-6A/QX3AN-6A", "qx_con_top_6k.v" },
};

constexpr char kCommonControlTop[] = "qx_con_top.v";

}

DEV::ChipInfo chipOf(const OxaArg& arg)
{
    return DEV::DeviceDb::instance().find(arg.device, arg.package);
}

QString controlTopName(const DEV::ChipInfo& chip)
{
    for (const ControlTop& top : kControlTops) {
        if (QString(top.devices).split('/').contains(chip.name))
            return top.fileName;
    }
    return kCommonControlTop;
}

bool hasShadowSram(const DEV::ChipInfo& chip)
{
    return !chip.resources.value(kShadowSramEntry).isEmpty();
}

bool needsZvDefine(const DEV::ChipInfo& chip)
{
    return (chip.name == "QX1NZ-1" || chip.name == "QX1NZ-1D") && chip.variant == "ZV";
}

}
