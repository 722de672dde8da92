// SPDX-License-Identifier: Apache-2.0
`default_nettype none

// The analyzer's access to the JTAG port of a 7 series, UltraScale or UltraScale+ device: BSCANE2
// (AMD UG953 and UG974; UG470 and UG570 describe the port).
//
//   JTAG_CHAIN   1 to 4: the instruction USER1 to USER4 takes the place of ER1. Change it here when the
//                design has another BSCANE2 with the same one, and the instruction in openocd.cfg
//
// BSCANE2's strobes follow the port's state, whatever the instruction; SEL says that it is the user's.
// Its DRCK stands still outside of Capture-DR and Shift-DR, so that it cannot end a scan. There are no
// pads: the pins are the device's own.
module QX_JTAG #(
    parameter JTAG_CHAIN = 1
) (
    input  wire tms_pad_i,
    input  wire tck_pad_i,
    input  wire tdi_pad_i,
    output wire tdo_pad_o,
    output wire tck_o,
    output wire test_logic_reset_o,
    output wire run_test_idle_er1_o,
    output wire run_test_idle_er2_o,
    output wire shift_dr_capture_dr_o,
    output wire update_dr_o,
    output wire pause_dr_o,
    output wire enable_er1_o,
    output wire enable_er2_o,
    output wire tdi_o,
    input  wire tdo_er1_i,
    input  wire tdo_er2_i
);
    wire tck, idle, capture, shift, selected;
    BSCANE2 #(
        .JTAG_CHAIN(JTAG_CHAIN)
    ) u_primitive (
        .CAPTURE(capture),
        .DRCK   (),
        .RESET  (test_logic_reset_o),
        .RUNTEST(idle),
        .SEL    (selected),
        .SHIFT  (shift),
        .TCK    (tck),
        .TDI    (tdi_o),
        .TMS    (),
        .UPDATE (update_dr_o),
        .TDO    (tdo_er1_i)
    );
    BUFG u_clock_buffer (
        .I(tck),
        .O(tck_o)
    );

    assign run_test_idle_er1_o = idle & selected;
    assign shift_dr_capture_dr_o = capture | shift;
    assign enable_er1_o = selected;

    // What the primitive does not tell, and the analyzer does not use
    assign pause_dr_o = 1'b0;
    assign run_test_idle_er2_o = 1'b0;
    assign enable_er2_o = 1'b0;
    assign tdo_pad_o = 1'b0;
endmodule

`default_nettype wire
