#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Verilator is silent about examples/soc, and Yosys infers block RAM.
#
#   check_soc.sh EXAMPLES
set -eu
cd "$1/.."
verilator --lint-only -Wall --top-module soc examples/soc/*.sv
yosys -q -p "read_verilog -sv examples/soc/*.sv; synth_ice40 -top soc -run begin:map_gates
    check -assert; select -assert-min 3 t:SB_RAM40_4K"
