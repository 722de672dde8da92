// SPDX-License-Identifier: Apache-2.0
#include "link_options.h"

using namespace OXA_CAPTURE;

namespace {

constexpr int kLeastScanBits = 16;
constexpr int kMostScanBits = 4096;

}

ChipAddress usualChip()
{
    ChipAddress chip;
    chip.openocd = kOpenOcdAddress;
    chip.tapOption = "--tap";
    return chip;
}

void addLinkOptions(Command& command, ChipAddress& chip)
{
    command.text("--openocd", chip.openocd, "OpenOCD's Tcl server (default: 127.0.0.1:6666)")
        .typeName("HOST:PORT");
    command
        .text("--tap", chip.tap,
            "The chip's name in the chain, when OpenOCD's configuration does not name it")
        .typeName("NAME");
    command
        .number("--scan-bits", chip.scanBits,
            "Most bits in one scan, for adapters that cut off long ones; without the option, 255"
            " when answers are damaged")
        .between(kLeastScanBits, kMostScanBits);
    const Option serial = command
                              .text("--serial", chip.serial,
                                  "The serial port of an analyzer that was generated with --link "
                                  "uart, instead of OpenOCD")
                              .typeName("DEVICE")
                              .excludes("--openocd")
                              .excludes("--tap")
                              .excludes("--scan-bits");
    command
        .number("--baud", chip.baud,
            "Bits a second at which the analyzer's port starts, as it was generated (default:"
            " 115200); the rate is then raised as far as both ends can follow")
        .between(OXA::kLeastBaud, OXA::kMostBaud)
        .needs(serial);
}
