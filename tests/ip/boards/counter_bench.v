// SPDX-License-Identifier: Apache-2.0
// The design with its analyzer, DUT, at whose pads OpenOCD captures. A step of the simulator's is a
// change of a pad; the sample clock is slower than TCK.
`timescale 1ps / 1ps
module counter_bench;
    reg tck = 0, tms = 1, tdi = 0, clk = 0;
    wire tdo;
    reg values = 0, clocks = 0;  // of a recorded waveform; there is none
    initial $oxa_target(tck, tms, tdi, tdo, values, clocks);
    always #3 clk = ~clk;
`ifdef NO_PADS  // a model of the device's primitive has them
    `DUT dut (.clk(clk), .led());
`else
    `DUT dut (.clk(clk), .led(),
        .tms_pad_i(tms), .tck_pad_i(tck), .tdi_pad_i(tdi), .tdo_pad_o(tdo));
`endif
endmodule
