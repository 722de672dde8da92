// SPDX-License-Identifier: Apache-2.0
#include <dev/device_db.h>

int main() { return DEV::DeviceDb::instance().find("", "QX1N-9").name == "QX1N-9" ? 0 : 1; }
