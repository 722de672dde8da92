# SPDX-License-Identifier: Apache-2.0
# For nextpnr-ice40 --pre-pack: TCK is a clock of its own, of 20 MHz, which is faster than most
# adapters. nextpnr takes clocks for asynchronous to each other.
ctx.addClock("tck_pad_i", 20)
