#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# The time of `oxa simulate` for waveforms of 100 MB whose trigger is near the end, beside that of the
# trigger model alone, which reads the same waveform.
#
#   measure.sh BUILD
set -eu
oxa=$1/bin/oxa
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export OXA_REMEMBER=0 OXA_PROGRESS=0 XDG_CACHE_HOME="$work/cache"

waveform() { # BUSES: how many there are that no core watches
    awk -v buses="$1" -v limit=100000000 '
        function put(line) { print line; size += length(line) + 1 }
        function bits(words, text) {
            for (text = ""; words > 0; --words) text = text nibble[int(16 * rand())]
            return text
        }
        BEGIN {
            srand(1)
            for (i = 0; i < 16; ++i)
                nibble[i] = int(i / 8) int(i / 4) % 2 int(i / 2) % 2 i % 2
            print "$timescale 1 ns $end\n$scope module top $end\n$var wire 1 ! clk $end"
            print "$var wire 1 \" t $end\n$var wire 32 # n [31:0] $end"
            for (i = 0; i < buses; ++i) print "$var wire 16 o" i " other" i " [15:0] $end"
            print "$upscope $end\n$enddefinitions $end\n#0\n0!\n0\""
            for (cycle = 0; size < limit; ++cycle) {
                put("#" 10 * cycle + 5 "\n1!\nb" bits(8) " #")
                for (i = 0; i < buses; ++i) if (rand() < 0.5) put("b" bits(4) " o" i)
                if (!triggered && size > 0.99 * limit) { put("1\""); triggered = 1 }
                put("#" 10 * cycle + 10 "\n0!")
            }
        }'
}

# The milliseconds of a command; the best of RUNS.
milliseconds() { # RUNS COMMAND...
    runs=$1
    shift
    for run in $(seq "$runs"); do
        start=$(date +%s%N)
        "$@" >/dev/null
        echo $((($(date +%s%N) - start) / 1000000))
    done | sort -n | head -n 1
}

row() { # WHAT MILLISECONDS MODEL
    awk -v what="$1" -v time="$2" -v model="$3" \
        'BEGIN { printf "  %-36s %6.1f s   %5.2f times\n", what, time / 1000, time / model }'
}

report() { # WHAT BUSES
    waveform "$2" >"$work/wave.vcd"
    rm -rf "$work"/c.oxa* "$XDG_CACHE_HOME"
    $oxa add "$work/c.oxa" --clock top/clk --data top/t top/n --trigger top/t --samples 1024 \
        --position 512 --wave "$work/wave.vcd" >/dev/null
    $oxa set "$work/c.oxa" --unit "M0=T0 == 1" >/dev/null
    cp "$work/c.oxa" "$work/other.oxa"
    $oxa set "$work/other.oxa" --position 500 >/dev/null
    simulate() { # NAME OUTPUT OPTIONS...
        name=$1 output=$2
        shift 2
        $oxa simulate "$work/$name.oxa" --part QX1N-9LV-QFN88-C6 --stimulus "$work/wave.vcd" \
            -o "$work/$output.csv" "$@"
    }
    model=$(milliseconds 3 simulate c model --model)
    echo "$1, $(grep -c '^1!' "$work/wave.vcd") periods"
    row "the model" "$model" "$model"
    row "Verilator, the first time" "$(milliseconds 1 simulate other other --simulator verilator)" "$model"
    row "Verilator, another analyzer" "$(milliseconds 1 simulate c v --simulator verilator)" "$model"
    row "Verilator, the same analyzer" "$(milliseconds 3 simulate c v --simulator verilator)" "$model"
    row "Icarus" "$(milliseconds 1 simulate c i --simulator icarus)" "$model"
    cmp "$work/model.csv" "$work/v.csv"
    cmp "$work/model.csv" "$work/i.csv"
}

report "40 other buses of 16 bits" 40
report "the watched signals only" 0
