# SPDX-License-Identifier: Apache-2.0
# TCK, of an analyzer with a JTAG port on four pins: a clock of its own, asynchronous to all others.
# 20 MHz is faster than most adapters. Where the port has another name, change it here.
create_clock -name tck -period 50 [get_ports tck_pad_i]
set_clock_groups -asynchronous -group [get_clocks tck]
# Where cores of two clocks force each other, these clocks have to be asynchronous as well: add such a
# line for them when the design has none.
