// SPDX-License-Identifier: Apache-2.0
#include "target_device.h"

#include "dev/device_db.h"
#include "dev/device_facts.h"

namespace NorvoSyn {
namespace {

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
    const bool small = DEV::deviceFacts(deviceName).blocks == DEV::Blocks9k;
    target.blockBits = small ? 9216 : 18432;

    const DEV::ChipInfo chip = DEV::DeviceDb::instance().find(partNumber, deviceName);
    target.known = !chip.name.isEmpty();
    target.luts = chip.resources.value(DEV::LutEntry).toInt();
    target.registers = chip.resources.value(DEV::RegisterEntry).toInt();
    target.blocks = chip.resources.value(DEV::BlockSramEntry).toInt() / (small ? 9 : 18);
    target.hasShadowSram = !chip.resources.value(DEV::ShadowSramEntry).isEmpty();
    target.shadowBlocks = shadowBlocks(chip.resources.value(DEV::ShadowSramEntry));
    return target;
}

}
