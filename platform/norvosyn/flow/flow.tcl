# SPDX-License-Identifier: Apache-2.0
# From Verilog to a netlist of the cells in cells/. Variables set before:
#
#   files, includes   the sources in their order, and the directories of their `include files
#   top               the module that becomes the netlist
#   block_bits        18432 or 9216: the size of a block SRAM of the device
#   shadow_sram       1 where the device has shadow SRAM
#   insert_pads       1 to insert pad buffers at the ports of the top
#
# It runs in a directory with cells/ and flow/ and writes netlist.v and usage.json there.

proc stage {percent text} {
    yosys log "@stage $percent $text"
}

stage 0 "reading sources"
yosys read_verilog -lib {*}[lsort [glob cells/*.v]]
set include_options {}
foreach directory $includes {
    lappend include_options "-I$directory"
}
# One command is one compilation unit: a `define of a file is valid in those after it.
yosys read_verilog {*}$include_options {*}$files

stage 10 "elaborating"
yosys hierarchy -check -top $top
yosys proc
yosys flatten
yosys opt_clean

stage 20 "optimizing"
yosys opt
# Not earlier: open nets of disabled features are removed before. Not later: the next steps treat an
# open net as any value, and the netlist would not show it.
yosys check -assert
yosys wreduce
yosys peepopt
yosys opt -full

stage 35 "mapping memories"
yosys memory -nomap
yosys opt_clean
set libraries {-lib flow/block_sram.txt}
if {$shadow_sram} {
    lappend libraries -lib flow/shadow_sram.txt
}
if {$block_bits == 9216} {
    lappend libraries -D SMALL_BLOCKS
}
yosys memory_libmap -no-auto-distributed {*}$libraries
yosys techmap -D BLOCK_BITS=$block_bits -map flow/memory_map.v
yosys memory_map
yosys opt -full

stage 50 "mapping registers"
yosys alumacc
yosys opt
yosys techmap
yosys opt -fast
yosys dfflegalize -cell {$_DFFE_?P_} 01 -cell {$_DFFE_?P?P_} 01 -cell {$_SDFFE_?P?P_} 01
yosys opt_merge

stage 65 "mapping logic"
yosys abc -lut 4
yosys opt_lut
yosys techmap -map flow/logic_map.v
if {$insert_pads} {
    yosys iopadmap -bits -inpad IBUF O:I -outpad OBUF I:O
}
yosys clean -purge

stage 90 "checking the netlist"
yosys check -mapped -assert
yosys setundef -zero
# For partly initialized blocks, write the contents without padding, because simulators limit the
# length of numbers.
yosys setundef -zero -params t:QX_BSRAM
yosys tee -q -o usage.json stat -json

stage 95 "writing the netlist"
yosys write_verilog -noattr netlist.v
