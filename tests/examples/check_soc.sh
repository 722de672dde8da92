#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# examples/soc prints what its README shows, and without its fault the whole table. Verilator is
# silent about it, and Yosys infers block RAM.
#
#   check_soc.sh EXAMPLES
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$1" "$work/examples"
cd "$work"

prints() { # the lines of a file
    iverilog -g2012 -o soc.vvp examples/soc/tb.v examples/soc/*.sv
    vvp -n soc.vvp >said
    diff -b "$1" said
}

verilator --lint-only -Wall --top-module soc examples/soc/*.sv
yosys -q -p "read_verilog -sv examples/soc/*.sv; synth_ice40 -top soc -run begin:map_gates
    check -assert; select -assert-min 3 t:SB_RAM40_4K" >log 2>&1 || { tail -5 log; exit 1; }

sed -n '/^Primes:/,/^```/p' examples/soc/README.md | sed '$d' >shown
prints shown
sed -i 's/SEND_LOW: if (send_ready)/SEND_LOW: if (send_ready \&\& !send_valid)/' examples/soc/cpu.sv
sed 's/ 1 17/ 13 17/' shown >whole
prints whole
