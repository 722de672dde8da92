// SPDX-License-Identifier: Apache-2.0
// Waivers for Verilator's warnings in generated files; empty for other tools. Has to be before
// those files in a list.
`ifdef VERILATOR
`verilator_config
// A Lite wrapper leaves the control core's buses of cores 1 to 15 open.
lint_off -rule PINMISSING -file "*/qx_oxa_top.v"
// A module to instantiate has the ranges of the design.
lint_off -rule LITENDIAN -file "*/qx_oxa_template.v"
`verilog
`endif
