// SPDX-License-Identifier: Apache-2.0
`default_nettype none

// The wrapper of cross_trigger.oxa, and what its cores have of their last triggers: the sample's
// number in the run, and whether another core forced it.
module cross_trigger (
    input  wire        clk0,
    input  wire        clk1,
    input  wire        t0,
    input  wire        t1,
    output wire        trigger0,
    output wire        trigger1,
    output wire [32:0] events0,
    output wire [32:0] events1
);
    qx_oxa u_oxa (
        .clk0(clk0), .clk1(clk1), .t0(t0), .t1(t1), .trigger0_o(trigger0), .trigger1_o(trigger1),
        .tck_pad_i(1'b0), .tms_pad_i(1'b1), .tdi_pad_i(1'b0), .tdo_pad_o()
    );
    assign events0 = u_oxa.u_la0_top.events;
    assign events1 = u_oxa.u_la1_top.events;
endmodule
`default_nettype wire
