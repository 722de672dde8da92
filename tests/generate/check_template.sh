#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# `oxa generate --template` of awkward names writes the files that are expected, tools read them, and
# the instances in them connect what they say.
#
#   check_template.sh OXA DIRECTORY     the program, and the directory of this script
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

instance() { # what FILE has to paste, in comments that begin with MARK
    sed -n "\\:^$2     .*u_oxa_analyzer:,\\:^$2  *);:s:^$2 ::p" "$1"
}

"$1" generate "$2/template.oxa" --part QX1N-9LV-QFN88-C6 --work-dir "$work/w" --no-synthesis \
    --simulation --template >"$work/list" 2>"$work/log" || { cat "$work/log"; exit 1; }
for name in qx_oxa_template.v qx_oxa_template.vhd; do
    if [ "${OXA_UPDATE_GOLDEN-}" ]; then cp "$work/w/$name" "$2/golden/template"; fi
    diff "$2/golden/template/$name" "$work/w/$name"
done
cd "$work"
verilator --lint-only -f list
yosys -q -p "read_verilog $(sed -n 's/^+incdir+/-I/p' list | tr '\n' ' ') $(grep -v '^+' list | tr '\n' ' ')
    hierarchy -check -top oxa_analyzer; proc; check -assert" >log 2>&1 || { tail -5 log; exit 1; }

# Instances with a signal under each name that they contain, and the wrapper's ports behind the Verilog.
{
    echo 'module bench;'
    sed -n 's/^    \(input\|output\)  *\(wire .*[a-z0-9]\),*$/    \2;/p' w/qx_oxa_template.v | grep -v gaps
    echo '    wire full = 1; wire [2:0] irq = 0; wire [5:0] Gaps = 6'"'"'b100100; wire [7:7] zero; wire [0:0] host;'
    echo '    assign count = 6'"'"'b101100, soc_rev = 3'"'"'b100, line = 2'"'"'b01, a_b_c_3_2 = 1;'
    instance w/qx_oxa_template.v //
    cat <<'END'
    `define w u_oxa_analyzer.u_qx_oxa
    initial #1 $display("%b %b %b %b %b %b", {`w.\count[9] , `w.\count[8] , `w.\count[4] },
        {`w.\soc/rev[2] , `w.\soc/rev[4] }, {`w.\line[0] , `w.\line[1] }, {`w.full, `w.\irq[2] },
        {`w.\Gaps[5] , `w.\Gaps[3] , `w.\Gaps[2] }, {`w.\a.b/c[3] , `w.\a/b/c[3] });
endmodule
END
} >bench.v
iverilog -g2005 -c list -o bench.vvp bench.v 2>&1
vvp -n bench.vvp >said
echo '100 10 01 10 101 z1' | diff - said

{
    echo 'library ieee; use ieee.std_logic_1164.all; use work.oxa_template.all;'
    echo 'entity bench is end; architecture pasted of bench is'
    sed -n 's/^            \([a-z_0-9]*\) : \(in \|out\) \([^;]*\);*$/    signal \1 : \3;/p' \
        w/qx_oxa_template.vhd | grep -v gaps
    echo 'signal full : std_logic; signal Gaps, irq, zero, host : std_logic_vector(7 downto 0); begin'
    instance w/qx_oxa_template.vhd --
    echo 'end;'
} >bench.vhd
ghdl -a --std=93 w/qx_oxa_template.vhd bench.vhd
ghdl --synth --out=verilog bench >from_vhdl 2>log || { cat log; exit 1; }
sed '1,/^endmodule/d' from_vhdl >from_vhdl.v # without the component as an empty module
iverilog -g2005 -t null -c list from_vhdl.v
