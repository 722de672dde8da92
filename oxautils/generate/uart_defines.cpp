// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/uart_defines.h"

#include "files/fail.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/verilog_file.h"

#include <cstdlib>

namespace OXA {

namespace {

constexpr int kLeastCycles = 8; // of a bit
constexpr int kExactness = 64; // a bit may be so small a part of its length off

bool reaches(const UartRates& rates)
{
    const qint64 baud = rates.baud;
    const qint64 cycles = (rates.clockHz + baud / 2) / baud;
    return cycles >= kLeastCycles
        && std::llabs(rates.clockHz - cycles * baud) <= rates.clockHz / kExactness;
}

}

bool writeUartDefines(const QString& workDir, const UartRates& rates, QString* error)
{
    if (!reaches(rates))
        return fail(error,
            QString("a clock of %1 Hz does not divide into bits for %2 bits a second: choose a"
                    " lower rate")
                .arg(QString::number(rates.clockHz), QString::number(rates.baud)));
    if (writeVerilogFile(workDir, UART_DEFINE_FILE_NAME, [rates](QTextStream& out) {
            out << "`define OXA_UART_CLOCK_HZ " << rates.clockHz << "\n`define OXA_UART_BAUD "
                << rates.baud << '\n';
        }))
        return true;
    return fail(error, QString("%1/%2: cannot be written").arg(workDir, UART_DEFINE_FILE_NAME));
}

}
