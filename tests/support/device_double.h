#ifndef TESTS_SUPPORT_DEVICE_DOUBLE_H
#define TESTS_SUPPORT_DEVICE_DOUBLE_H

#include <dev/device_db.h>

/// A device database that a test program puts in the place of the installed one, which it does by
/// containing device_double.cpp.
struct DeviceDouble {
    DEV::ChipInfo answer; ///< to every find
    QStringList lookups; ///< "first|second" of every find

    static DeviceDouble& instance();
};

#endif
