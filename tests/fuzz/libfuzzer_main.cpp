// SPDX-License-Identifier: Apache-2.0
// What libFuzzer calls.
#include "fuzz_support.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // What the library logs about bad input is not needed.
    static const auto before
        = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    Q_UNUSED(before)
    fuzz(QByteArray(reinterpret_cast<const char*>(data), int(size)));
    return 0;
}
