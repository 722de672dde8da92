// SPDX-License-Identifier: Apache-2.0
// Any file as a device catalogue: refused with a reason and no change, or loaded whole.
#include "fuzz_support.h"

#include <dev/device_db.h>

void fuzz(const QByteArray& input)
{
    const MemoryFile file(input);
    DEV::DeviceDb& db = DEV::DeviceDb::instance();
    const int before = db.chips().size();
    QString error;
    if (!db.load(file.path(), &error)) {
        require(!error.isEmpty(), "a refusal says why");
        require(db.chips().size() == before, "a refused catalogue changes nothing");
        return;
    }
    const QList<DEV::ChipInfo> chips = db.chips();
    for (const DEV::ChipInfo& chip : chips) {
        require(!chip.partNumber.isEmpty(), "a part has a number");
        require(db.find(chip.partNumber, chip.name).package == chip.package, "a part is found");
    }
}
