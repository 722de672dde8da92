// What Verilator is not to stop at in generated files; other tools read nothing here. It has to stand before
// those files in a list.
`ifdef VERILATOR
`verilator_config
// A Lite wrapper leaves the control core's buses of cores 1 to 15 open.
lint_off -rule PINMISSING -file "*/qx_oxa_top.v"
// A module to instantiate has ranges as the design has them.
lint_off -rule LITENDIAN -file "*/qx_oxa_template.v"
`verilog
`endif
