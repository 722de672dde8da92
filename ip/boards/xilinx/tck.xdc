# SPDX-License-Identifier: Apache-2.0
# TCK of the analyzer in a 7 series or UltraScale device: a clock of its own, asynchronous to all
# others. 20 ns is faster than most adapters, and as fast as UltraScale's port.
create_clock -name oxa_tck -period 20.000 [get_pins -filter {REF_PIN_NAME == TCK} -of_objects [get_cells -hierarchical -filter {REF_NAME == BSCANE2 && NAME =~ *u_qx_jtag*}]]

# Bits that cross together may arrive one edge of the receiving clock apart, but no more
# (docs/analyzer-cores.md, Crossings). Therefore paths between the clocks are bounded by its period:
# 20 ns into TCK, and 5 ns into sample clocks of up to 200 MHz. Read this file after the design's
# clocks: set_property PROCESSING_ORDER LATE.
set_max_delay -datapath_only -from [get_clocks oxa_tck] -to [get_clocks -filter {NAME != oxa_tck}] 5.000
set_max_delay -datapath_only -from [get_clocks -filter {NAME != oxa_tck}] -to [get_clocks oxa_tck] 20.000

# The signal between two cores of which one forces the other: a single bit, at any time. When it takes
# longer than a period of the forced core's clock, that core's trigger is a sample later.
set_max_delay -quiet -datapath_only -from [get_cells -quiet -hierarchical -filter {NAME =~ *u_events*pulse_q_reg}] -to [get_cells -quiet -hierarchical -filter {NAME =~ *u_pulse_sync*hops_q_reg*}] 5.000
