#!/bin/bash
# SPDX-License-Identifier: Apache-2.0
# The analyzer on an iCE40 HX8K: look-up tables, flip-flops, block RAMs, clock rates.
#
#   bench/cores/measure.sh BUILD
#
# A row for each configuration: Lite and Standard cores of 8 and 32 signals x 1024 samples and larger
# ones, including wrapper, control core and a JTAG port on four pins; the last row is this port alone.
# Probes come from a shift register. Rates are the median of three seeds of the placer.
set -eu
build=$(realpath "$1")
oxa=$build/bin/oxa
export OXA_REMEMBER=0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

probes() { # COUNT
    for ((i = 0; i < $1; i++)); do echo "<Signal capture_enable=\"true\">p$i</Signal>"; done
}

lite() { # SIGNALS
    echo "<OXA_CONFIG><Version>3.0</Version><Mode>Lite</Mode>
<AoCore_Lite index=\"0\" sample_clock=\"clk\" trig_type=\"0\" capture_amount=\"1024\" implemention=\"0\"
 input_register_enabled=\"0\" capture_init_data_enabled=\"0\" module_name=\"\"><SignalList>$(probes "$1")
</SignalList></AoCore_Lite><OXA_ID>0000000000000000</OXA_ID></OXA_CONFIG>"
}

ports() { # SIGNALS PORTS PORT_SIGNALS
    for ((p = 0; p < $2; p++)); do
        echo "<Trigger index=\"$p\"><SignalList>"
        for ((i = p * $3; i < (p + 1) * $3; i++)); do
            echo "<Signal capture_enable=\"true\">p$((i % $1))</Signal>"
        done
        echo "</SignalList></Trigger>"
    done
}

# With PORT_SIGNALS, each unit has a port of its own, with so many of the signals.
core() { # INDEX SIGNALS UNITS MATCH_TYPE LEVELS WINDOWS [MORE [PORT_SIGNALS]]
    echo "<AoCore index=\"$1\" sample_clock=\"clk\" trig_type=\"0\" storage_depth=\"1024\" window_num=\"$6\"
 capture_amount=\"$((1024 / $6))\" implementation=\"0\" trigger_pos=\"100\" module_name=\"\"
 force_trigger_by_falling_edge=\"false\" capture_init_data_enabled=\"false\">
<SignalList>$(probes "$2")</SignalList>
<Triggers>"
    if [ -n "${8:-}" ]; then ports "$2" "$3" "$8"; else ports "$2" 1 "$2"; fi
    echo "</Triggers><MatchUnits>"
    for ((i = 0; i < $3; i++)); do
        echo "<MatchUnit index=\"$i\" enabled=\"1\" match_type=\"$4\" counter_enable=\"0\" counter_width=\"2\"
 counter=\"2\" countinuous=\"0\" func=\"0\" value0=\"10\" value1=\"\" trigger=\"$((${8:+1} + 0 ? i : 0))\"/>"
    done
    echo "</MatchUnits><Expressions type=\"Static\">"
    for ((i = 0; i < $5; i++)); do echo "<Expression>M$((i % $3))</Expression>"; done
    echo "</Expressions>${7:-}</AoCore>"
}

cores() {
    echo "<OXA_CONFIG><Version>3.0</Version><Mode>Standard</Mode>"
    cat
    echo "<OXA_ID>0000000000000000</OXA_ID></OXA_CONFIG>"
}

standard() { core 0 "$@" | cores; } # SIGNALS UNITS MATCH_TYPE LEVELS WINDOWS [MORE [PORT_SIGNALS]]

pair() { # MORE of both, with the other one's index for @
    { core 0 32 1 0 1 1 "${1//@/1}"; core 1 32 1 0 1 1 "${1//@/0}"; } | cores
}

# A design with the wrapper and its probes
around() {
    echo "module around(input clk, probe, tck, tms, tdi, output tdo);"
    echo "reg [$(($1 - 1)):0] p; always @(posedge clk) p <= {p, probe}; qx_oxa analyzer("
    for ((i = 0; i < $1; i++)); do echo ".p$i(p[$i]),"; done
    echo ".clk(clk), .tms_pad_i(tms), .tck_pad_i(tck), .tdi_pad_i(tdi), .tdo_pad_o(tdo)); endmodule"
}

# Maximum frequency of the clock net that begins with $1, of the last placement
rate() {
    sed -n "s/.*Max frequency for clock *'$1[^']*': \([0-9.]*\) MHz.*/\1/p" pnr.log | tail -1
}

median() { sort -g | sed -n 2p; }

cells() { # PATTERN
    sed -n "s/^ *$1 *\([0-9]*\)$/\1/p" stat.txt | awk '{ n += $1 } END { print n + 0 }'
}

measure() { # WHAT SIGNALS, the configuration on standard input
    cat >core.oxa
    "$oxa" generate core.oxa --for ice40 --work-dir oxa --force \
        >files 2>generate.log || { cat generate.log; exit 1; }
    around "$2" >around.v
    yosys -q -p "read_verilog around.v
        read_verilog $(sed -n 's/^+incdir+/-I/p' files | tr '\n' ' ') $(grep -v '^+' files | tr '\n' ' ')
        synth_ice40 -top around -json around.json; tee -q -o stat.txt stat" >yosys.log 2>&1
    : >clk; : >tck
    for seed in 1 2 3; do
        nextpnr-ice40 --hx8k --package ct256 --freq 100 --seed $seed --json around.json \
            --timing-allow-fail -q --log pnr.log >/dev/null 2>&1
        rate clk >>clk
        rate tck >>tck
    done
    printf '%-36s %5d %5d %6d %8.1f %8.1f\n' "$1" "$(cells SB_LUT4)" "$(cells 'SB_DFF[A-Z]*')" \
        "$(cells SB_RAM40_4K)" "$(median <clk)" "$(median <tck)"
}

printf '%-36s %5s %5s %6s %8s %8s\n' "iCE40 HX8K, x 1024 samples" LUT4 FF RAM4K "clk MHz" "tck MHz"
lite 8 | measure "Lite, 8 signals" 8
lite 32 | measure "Lite, 32 signals" 32
standard 8 1 0 1 1 | measure "Basic unit, 8 signals" 8
standard 32 1 0 1 1 | measure "Basic unit, 32 signals" 32
standard 32 1 0 1 4 | measure "the same, 4 windows" 32
standard 32 1 0 1 1 '<Storage keep="changes" gap_bits="16" limit="0"/>' \
    | measure "the same, 1 window, stores changes" 32
standard 32 1 0 1 1 '<Storage keep="when" when="M0" gap_bits="0" limit="0"/>' \
    | measure "the same, stores by an expression" 32
pair '' | measure "two Basic cores, 32 signals" 32
pair '<Events forced_by="@"/>' | measure "the same, each forces the other" 32
pair '<Events forced_by="@" stamps="true"/>' | measure "the same, with stamps" 32
standard 32 4 2 1 1 | measure "4 Extended units, 32 signals" 32
standard 32 16 5 16 1 | measure "16 Range w/edges units, 16 levels" 32
standard 32 16 5 16 1 '' 8 | measure "the same, each on a port of 8" 32
yosys -q -p "read_verilog oxa/board/QX_JTAG.v; synth_ice40 -top QX_JTAG; tee -q -o stat.txt stat" >yosys.log 2>&1
printf '%-36s %5d %5d %6d\n' "the JTAG port on four pins" "$(cells SB_LUT4)" "$(cells 'SB_DFF[A-Z]*')" 0
