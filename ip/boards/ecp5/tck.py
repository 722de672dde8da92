# SPDX-License-Identifier: Apache-2.0
# For nextpnr-ecp5 --pre-pack: TCK of the analyzer is a clock of its own, of 20 MHz, which is faster
# than most adapters. nextpnr takes clocks for asynchronous to each other.
for name, net in ctx.nets:
    if net.driver.cell is not None and net.driver.cell.type == "JTAGG" and net.driver.port == "JTCK":
        ctx.addClock(name, 20)
