// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_DEVICE_DOUBLE_H
#define TESTS_SUPPORT_DEVICE_DOUBLE_H

#include <dev/device_db.h>

#include <functional>

/// Replaces the installed device database. For programs with one source that includes this.
struct DeviceDouble {
    DEV::ChipInfo answer; ///< to every find
    QStringList lookups; ///< "first|second" of every find
    std::function<void(const QString& deviceName)> onLookup; ///< may change the answer

    static DeviceDouble& instance()
    {
        static DeviceDouble device;
        return device;
    }
};

namespace DEV {

DeviceDb& DeviceDb::instance()
{
    static DeviceDb db;
    return db;
}

ChipInfo DeviceDb::find(const QString& partNumber, const QString& deviceName) const
{
    DeviceDouble& device = DeviceDouble::instance();
    device.lookups += partNumber + "|" + deviceName;
    if (device.onLookup)
        device.onLookup(deviceName);
    return device.answer;
}

}

#endif
