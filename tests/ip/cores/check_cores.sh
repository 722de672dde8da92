#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# What other tools say about the cores that a configuration builds.
#
#   check_cores.sh lint       CONFIGURATION   Verilator is silent
#   check_cores.sh synthesis  CONFIGURATION   Yosys infers block RAM, and neither divides nor multiplies
#   check_cores.sh names      CONFIGURATION   each of three tools takes the names that were generated, and not
#                                             the neutral file beside the cores
#   check_cores.sh estimate   CONFIGURATION   synthesis comes to the estimate, as near as that promises
#   check_cores.sh proof      CONFIGURATION   match units do what their functions mean, and the dynamic
#                                             expression of core 1 what the static one of core 0 does;
#                                             for 16 samples, what is stored tells those that are not
#   check_cores.sh handshake  CONFIGURATION   for 32 changes of two clocks, no core says that it is
#                                             at rest and moves, and a stop withdraws a force
#   check_cores.sh bound      CONFIGURATION   a core forces another one within the bound, for 10,000
#                                             random clocks
#   check_cores.sh crossings  CONFIGURATION   no signal gets from a clock's domain into another's but through
#                                             ao_sync and memories
#
# OXA is the program, SHARE the directory with ip/ and sim/, HERE that of this script.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
configuration=$2
if [ "$1" = handshake ]; then # a run that ends within few edges, and the longest way into a Lite core
    configuration=$work/short.oxa
    sed 's/\(storage_depth\|capture_amount\)="[0-9]*"/\1="2"/g; s/trigger_pos="[0-9]*"/trigger_pos="0"/
        s/window_num="[0-9]*"/window_num="1"/; s/trig_type="1"/trig_type="0"/
        s/input_register_enabled="[0-9]*"/input_register_enabled="1"/' "$2" >"$configuration"
fi
"$OXA" generate "$configuration" --part QX1N-9LV-QFN88-C6 --work-dir "$work/oxa" --no-synthesis \
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
    ice40= # which takes long for all kinds
    ! grep -q AoCore_Lite "$configuration" || ice40="design -load elaborated
        synth_ice40 -top qx_oxa -run begin:map_gates; select -assert-min 1 t:SB_RAM40_4K"
    yosys -q -p "read_verilog -lib $models; read_verilog $(echo $includes) $(echo $sources)
        hierarchy -check -top qx_oxa; design -save elaborated
        proc; flatten; opt; check -assert
        select -assert-none t:\$div t:\$mod t:\$mul t:\$divfloor t:\$modfloor
        design -load elaborated; synth_ecp5 -top qx_oxa -run begin:map_gates
        select -assert-min 1 t:DP16KD
        $ice40" >"$work/log" 2>&1 || { tail -5 "$work/log"; exit 1; }
    ;;
names)
    sums=$(sed -n 's/^`define OXA_NAMES_0 //p' "$work/oxa/qx_oxa_names.v")
    cd "$work"
    iverilog -g2005 -E -o icarus -c files
    verilator -E -f files >verilator
    yosys -p "read_verilog -ppdump $(echo $includes) $(echo $sources)" >yosys
    for tool in icarus verilator yosys; do
        grep -qF "NAMES = $sums;" "$tool" || { echo "$tool takes other names"; exit 1; }
    done
    ;;
estimate)
    part=QX2A-18LV-LQFP144-C8
    "$OXA" generate "$2" --part $part --work-dir "$work/oxa" >"$work/netlist" 2>"$work/log" \
        || { cat "$work/log"; exit 1; }
    "$OXA" estimate "$2" --part $part >"$work/estimate"
    awk 'function off(is, promised) { return is < (1 - promised) * built || is > (1 + promised) * built }
         $2 == "QX_LUT4" { tables = $1 }
         $2 ~ /^QX_DFF/ { registers += $1 }
         / look-up tables / { built = tables; bad += off($4, 0.15); rows++ }
         $1 == "registers" { built = registers; bad += off($2, 0.05); rows++ }
         END { print tables, registers; exit bad || rows != 2 }' "$work/netlist" "$work/estimate" \
        || { cat "$work/netlist" "$work/estimate"; exit 1; }
    ;;
proof)
    prove="proc; flatten; memory -nordff; opt_clean; sat -verify -prove ok_o 1 -seq 6 -prove-skip 4"
    {
        echo "read_verilog $(echo $includes) $HERE/proofs.v $(echo $sources); design -save read"
        for type in 0 1 2 3 4 5 "2 -set AT_ONCE 2" "5 -set AT_ONCE 2"; do
            echo "chparam -set TYPE $type match_proof; hierarchy -top match_proof"
            echo "$prove match_proof; design -load read"
        done
        echo "hierarchy -top table_proof; $prove table_proof; design -load read"
        echo "hierarchy -top store_proof; proc; flatten; opt_clean"
        echo "sat -verify -prove ok_o 1 -seq 16 -set-init-zero store_proof"
    } >"$work/proofs.ys"
    yosys -q "$work/proofs.ys" >"$work/log" 2>&1 || { tail -30 "$work/log"; exit 1; }
    ;;
crossings)
    # In a Lite core with its synchronizers inside, the ways through them have to be found.
    for boxes in "blackbox ao_sync_*" ""; do
        yosys -q -p "read_verilog -lib $models; read_verilog $(echo $includes) $(echo $sources)
            $boxes; hierarchy -check -top qx_oxa; proc; flatten; opt_expr; opt_clean
            opt -nodffe -nosdff; opt; memory -nomap; opt_clean; write_json $work/net.json" \
            >"$work/log" 2>&1 || { tail -5 "$work/log"; exit 1; }
        "$HERE/crossings.py" "$work/net.json" qx_oxa >"$work/found" || [ -z "$boxes" ] \
            || { cat "$work/found"; exit 1; }
        case $sources in */OXA/*) exit 0 ;; esac
    done
    grep -q "^[1-9][0-9]* bits, [1-9]" "$work/found" || { cat "$work/found"; exit 1; }
    ;;
bound)
    bench=cross_trigger
    verilator --cc --exe --build -O3 -CFLAGS -O1 --relative-includes --Mdir "$work/built" \
        "$SHARE/sim/verilator.v" --top-module $bench $models -f "$work/files" "$HERE/$bench.v" "$HERE/$bench.cpp" \
        >"$work/log" 2>&1 || { tail -30 "$work/log"; exit 1; }
    "$work/built/V$bench" 10000
    ;;
handshake)
    for top in $(echo "$sources" | grep '/qx_ao_top\.v$'); do
        cores=$(dirname "$top")
        position=${cores##*_}
        case $top in
        */OXA_LITE/*)
            core=ao_top
            sizes="-D STAGES=5 -D STATE=2"
            memory=u_top.u_mem_ctrl
            nets="connect -nounset -set waiting 1'0; connect -nounset -set force_now 1'0
                connect -nounset -set write $memory.write
                connect -nounset -set state u_top.full,u_top.position
                connect -nounset -set stages $memory.u_arm_sync.moving.hops_q,$memory.take_q,$memory.running_q"
            ;;
        *)
            core=ao_top_$position
            sizes="-D STAGES=6 -D STATE=506"
            nets="connect -nounset -set waiting u_top.waiting
                connect -nounset -set force_now u_top.force_now
                connect -nounset -set write u_top.keep
                connect -nounset -set state u_top.pulse,u_top.events[0],u_top.state_tck
                connect -nounset -set stages u_top.u_sample_sync.moving.hops_q[2],u_top.arm,u_top.take2_q,u_top.take,u_top.kept_q,u_top.running_q"
            ;;
        esac
        sed "s/@P@/$position/; s/@CORE@/$core/" "$HERE/handshake.v.in" >"$work/handshake.v"
        # The first core without the flag that follows a stop has to fail.
        sed "s/stop_tck_q != stopped_tck_i/1'b0/" "$top" >"$work/old_top.v"
        for proof in "verify 32 $top" "falsify 26 $work/old_top.v"; do
            [ "$proof" = "verify 32 $top" ] || [ "$position" = 0 ] || continue
            # shellcheck disable=SC2086 # three words
            set -- $proof
            yosys -q -p "read_verilog -formal $sizes $work/handshake.v
                read_verilog -nooverwrite $(echo $includes) $cores/qx_ao_m*.v $3
                hierarchy -check -top handshake_proof; proc; flatten
                cd handshake_proof
                connect -nounset -set arm_tck u_top.arm_tck
                connect -nounset -set force_tck u_top.force_tck
                connect -nounset -set rest u_top.rest
                $nets
                select -set shifted w:u_top.u_command.command_q %ci1:+\$dff[Q] w:* %d
                select -assert-count 1 @shifted; delete @shifted  # a command comes at once
                cd; memory -nordff; opt_clean; clk2fflogic; opt_clean
                sat -$1 -prove ok_o 1 -seq $2 handshake_proof" >"$work/log" 2>&1 \
                || { echo "$proof"; tail -30 "$work/log"; exit 1; }
        done
    done
    ;;
esac
