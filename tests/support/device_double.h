#ifndef TESTS_SUPPORT_DEVICE_DOUBLE_H
#define TESTS_SUPPORT_DEVICE_DOUBLE_H

#include <dev/device_db.h>

#include <functional>

/// A device database that a test program puts in the place of the installed one, which it does by
/// containing device_double.cpp.
struct DeviceDouble {
    DEV::ChipInfo answer; ///< to every find
    QStringList lookups; ///< "first|second" of every find
    std::function<void(const QString& deviceName)> onLookup; ///< may change the answer

    static DeviceDouble& instance();
};

#endif
