#include "target_device.h"

#include "dev/device_db.h"

#include <algorithm>

namespace NorvoSyn {
namespace {

/// The devices whose block SRAMs hold 9 kbit; those of all others hold 18.
constexpr const char* kSmallBlockDevices[] = {
    "QX3A-50A",
    "QX3A-20A",
    "QX3AR-20A",
    "QX3A-10A",
    "QX3ANRT-6A",
    "QX3ANT-6A",
    "QX3AN-6A",
};

/// Places in a chip's list of resources.
enum Resource : int { Luts = 0, Registers = 2, ShadowSram = 4, BlockSramKbit = 5 };

bool hasSmallBlocks(const QString& deviceName)
{
    return std::any_of(std::begin(kSmallBlockDevices), std::end(kSmallBlockDevices),
        [&](const char* name) { return deviceName == name; });
}

/// "16.875Kb" is 270 blocks of 64 bits.
int shadowBlocks(QString amount)
{
    amount.chop(2);
    return int(amount.toDouble() * 1024 / 64);
}

}

TargetDevice targetDevice(const QString& partNumber, const QString& deviceName)
{
    TargetDevice target;
    const bool small = hasSmallBlocks(deviceName);
    target.blockBits = small ? 9216 : 18432;

    const DEV::ChipInfo chip = DEV::DeviceDb::instance().find(partNumber, deviceName);
    target.known = !chip.name.isEmpty();
    target.luts = chip.resources.value(Luts).toInt();
    target.registers = chip.resources.value(Registers).toInt();
    target.blocks = chip.resources.value(BlockSramKbit).toInt() / (small ? 9 : 18);
    target.hasShadowSram = !chip.resources.value(ShadowSram).isEmpty();
    target.shadowBlocks = shadowBlocks(chip.resources.value(ShadowSram));
    return target;
}

}
