#ifndef OXAUTILS_GENERATE_UART_DEFINES_H
#define OXAUTILS_GENERATE_UART_DEFINES_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// Of the UART link of an analyzer.
struct UartRates {
    int clockHz = 0; ///< of the clock that it runs from
    int baud = 115200; ///< bits a second at which its port starts
};

/// Writes the file that the Verilog of a UART link includes into the work directory. False, with
/// `error`, when the clock is too slow for the rate: a bit takes at least 8 cycles, and a character
/// may end a sixth of a bit early or late.
OXAUTILS_EXPORT bool writeUartDefines(
    const QString& workDir, const UartRates& rates, QString* error);

}

#endif
