#!/bin/sh
# What other tools say about the cores that a configuration builds.
#
#   check_cores.sh lint       CONFIGURATION   Verilator is silent
#   check_cores.sh synthesis  CONFIGURATION   Yosys infers block RAM, and neither divides nor multiplies
#   check_cores.sh list       CONFIGURATION   the list for simulators is complete, for each of three tools
#   check_cores.sh proof      CONFIGURATION   match units do what their functions mean, and the dynamic
#                                             expression of core 1 what the static one of core 0 does
#
# OXA is the program, SHARE the directory with ip/ and sim/, HERE that of this script.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$OXA" generate "$2" --part QX1N-9LV-QFN88-C6 --work-dir "$work/oxa" --no-synthesis \
    >"$work/files" 2>"$work/log" || { cat "$work/log"; exit 1; }

sources=$(grep -v '^+' "$work/files")
includes=$(sed -n 's/^+incdir+/-I/p' "$work/files")
models="$SHARE/sim/IBUF.v $SHARE/sim/OBUF.v $SHARE/sim/QX_JTAG.v"

# shellcheck disable=SC2086 # lists of files
case $1 in
lint)
    verilator --lint-only -Wall "$HERE/waivers.vlt" --top-module qx_oxa $models -f "$work/files"
    ;;
synthesis)
    yosys -q -p "read_verilog -lib $models; read_verilog $(echo $includes) $(echo $sources)
        hierarchy -check -top qx_oxa; design -save elaborated
        proc; flatten; opt; check -assert
        select -assert-none t:\$div t:\$mod t:\$mul t:\$divfloor t:\$modfloor
        design -load elaborated; synth_ice40 -top qx_oxa -run begin:map_gates
        select -assert-min 1 t:SB_RAM40_4K
        design -load elaborated; synth_ecp5 -top qx_oxa -run begin:map_gates
        select -assert-min 1 t:DP16KD" >"$work/log" 2>&1 || { tail -5 "$work/log"; exit 1; }
    ;;
list)
    "$OXA" generate "$2" --part QX1N-9LV-QFN88-C6 --work-dir "$work/oxa" --no-synthesis --simulation \
        >"$work/list" 2>"$work/log" || { cat "$work/log"; exit 1; }
    iverilog -g2005 -t null -c "$work/list"
    verilator --lint-only -f "$work/list"
    yosys -q -p "read_verilog $(echo $includes) $(grep -v '^+' "$work/list" | tr '\n' ' ')
        hierarchy -check -top qx_oxa"
    ;;
proof)
    read="read_verilog $(echo $includes) $HERE/proofs.v $(echo $sources)"
    prove="proc; flatten; memory -nordff; opt_clean; sat -verify -prove ok_o 1 -seq 6 -prove-skip 4"
    for type in 0 1 2 3 4 5; do
        yosys -q -p "$read; chparam -set TYPE $type match_proof; hierarchy -top match_proof
            $prove match_proof" >"$work/log" 2>&1 \
            || { tail -30 "$work/log"; exit 1; }
    done
    yosys -q -p "$read; hierarchy -top table_proof; $prove table_proof" \
        >"$work/log" 2>&1 || { tail -30 "$work/log"; exit 1; }
    ;;
esac
