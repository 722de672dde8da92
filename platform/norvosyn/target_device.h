// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_TARGET_DEVICE_H
#define NORVOSYN_TARGET_DEVICE_H

#include <QString>

namespace NorvoSyn {

/// What synthesis needs of a device.
struct TargetDevice {
    bool known = false; ///< the device is in the database; else the counts are 0
    int blockBits = 18432; ///< size of one block SRAM: 18432 or 9216, ninth bits included
    bool hasShadowSram = false;
    int luts = 0;
    int registers = 0;
    int blocks = 0; ///< block SRAMs
    int shadowBlocks = 0; ///< of 64 bits
};

/// The device of a part. An unknown one has the common block size and no shadow SRAM.
TargetDevice targetDevice(const QString& partNumber, const QString& deviceName);

}

#endif
