// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_UART_DEFINES_H
#define OXAUTILS_GENERATE_UART_DEFINES_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// Bits a second of a UART link: at which it starts, unless it is generated for others, and what
/// serial ports are made for.
constexpr int kUsualBaud = 115200;
constexpr int kLeastBaud = 300; ///< bits a second
constexpr int kMostBaud = 4000000; ///< bits a second

/// Of the UART link of an analyzer.
struct UartRates {
    int clockHz = 0; ///< of the clock that it runs from
    int baud = kUsualBaud; ///< bits a second at which its port starts
};

/// Writes the file that the Verilog of a UART link includes into the work directory. False, with
/// `error`, when the clock is too slow for the rate: a bit takes at least 8 cycles, and a character
/// may end a sixth of a bit early or late.
OXAUTILS_EXPORT bool writeUartDefines(
    const QString& workDir, const UartRates& rates, QString* error);

}

#endif
