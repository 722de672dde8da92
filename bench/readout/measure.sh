#!/bin/bash
# How long OpenOCD takes to read a core's memory from the simulated target.
#
#   bench/readout/measure.sh BUILD
#
# A row for 1024 samples of 8 and of 32 random signals: least and median of 30 read-outs, each of one
# address and one scan of the data.
set -eu
build=$(realpath "$1")
here=$(dirname "$(realpath "$0")")
work=$(mktemp -d)
simulator=
finish() {
    [ -z "$simulator" ] || kill "$simulator" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT

names() { # SIGNALS
    for ((i = 0; i < $1; i++)); do echo "<Signal capture_enable=\"true\">p$i</Signal>"; done
}

configuration() { # SIGNALS
    echo "<OXA_CONFIG><Version>3.0</Version><Mode>Standard</Mode>
<AoCore index=\"0\" sample_clock=\"clk\" trig_type=\"0\" storage_depth=\"1024\" window_num=\"1\"
 capture_amount=\"1024\" implementation=\"0\" trigger_pos=\"0\" module_name=\"\"
 force_trigger_by_falling_edge=\"false\" capture_init_data_enabled=\"true\">
<SignalList>$(names "$1")</SignalList>
<Triggers><Trigger index=\"0\"><SignalList>$(names 1)</SignalList></Trigger></Triggers><MatchUnits>
<MatchUnit index=\"0\" enabled=\"1\" match_type=\"0\" counter_enable=\"0\" counter_width=\"2\"
 counter=\"2\" countinuous=\"0\" func=\"0\" value0=\"X\" value1=\"\" trigger=\"0\"/>
</MatchUnits><Expressions type=\"Static\"><Expression>M0</Expression></Expressions>
</AoCore><OXA_ID>0000000000000000</OXA_ID></OXA_CONFIG>"
}

waveform() { # SIGNALS
    awk -v signals="$1" 'BEGIN {
        print "$timescale 1ns $end $scope module top $end $var wire 1 c clk $end"
        for (i = 0; i < signals; i++) print "$var wire 1 s" i " p" i " $end"
        print "$upscope $end $enddefinitions $end"
        for (t = 0; t < 1100; t++) {
            print "#" 10 * t "\n0c"
            for (i = 0; i < signals; i++) print int(2 * rand()) "s" i
            print "#" 10 * t + 5 "\n1c"
        }
    }'
}

# Plays the waveform into the target that listens for its player at $1.
play() {
    exec 3<>"/dev/tcp/127.0.0.1/$1"
    echo "run 2200" >&3
    read -r _ <&3
}

measure() { # SIGNALS
    configuration "$1" >"$work/core.oxa"
    waveform "$1" >"$work/wave.vcd"
    rm -rf "$work/kept" "$work/port"
    "$build/bin/oxa" simulate "$work/core.oxa" --part QX1N-9LV-QFN88-C6 --stimulus "$work/wave.vcd" \
        --keep-work "$work/kept" >/dev/null 2>"$work/log" || { cat "$work/log"; exit 1; }
    control=$((20000 + RANDOM % 20000))
    vvp -n -M "$build/lib/oxautils" -m oxa_target "$work/kept/target.vvp" +oxa_jtag=tcp:0 \
        "+oxa_control=tcp:$control" "+oxa_stimulus=$work/kept/stimulus.txt" >"$work/port" &
    simulator=$!
    until grep -qs port "$work/port"; do sleep 0.1; done
    play "$control"
    openocd -c "adapter driver remote_bitbang; remote_bitbang host 127.0.0.1
        remote_bitbang port $(sed 's/.* //' "$work/port")
        jtag newtap fpga tap -irlen 5 -expected-id 0x10a0affd
        gdb_port disabled; tcl_port disabled; telnet_port disabled; init
        source $here/read_memory.tcl
        irscan fpga.tap 8
        for {set i 0} {\$i < 30} {incr i} {
            set from [clock microseconds]
            read_memory [expr {1024 * ($1 + 1)}]
            echo \"took [expr {[clock microseconds] - \$from}]\"
        }
        shutdown" 2>&1 | sed -n 's/^took //p' | sort -n >"$work/times"
    printf '1024 x %-2d   least %5.1f ms, median %5.1f ms\n' "$1" \
        "$(awk 'NR == 1 { print $1 / 1000 }' "$work/times")" \
        "$(awk 'NR == 15 { print $1 / 1000 }' "$work/times")"
    exec 3>&- # ends the simulator
    wait "$simulator" 2>/dev/null || true
    simulator=
}

measure 8
measure 32
