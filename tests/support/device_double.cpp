#include "support/device_double.h"

DeviceDouble& DeviceDouble::instance()
{
    static DeviceDouble device;
    return device;
}

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
