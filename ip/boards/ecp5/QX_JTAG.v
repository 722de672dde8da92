// SPDX-License-Identifier: Apache-2.0
`default_nettype none

// The analyzer's access to the JTAG port of an ECP5 device: JTAGG (Lattice FPGA Libraries Reference
// Guide; the port is in TN1260). It offers no instruction, only this:
//
//   JTDI     TDI, registered at the rising edge of TCK: a cycle late
//   JSHIFT   in Shift-DR, JUPDATE in Update-DR, whatever the instruction
//   JCE1     in Capture-DR and Shift-DR of the instruction ER1
//   JTDO1    goes to TDO through a register at the falling edge of TCK
//
// The analyzer runs at falling edges of TCK. There JTDI has the bit that the port took half a cycle
// before, the strobes of half a cycle more before that are those of this bit, and nothing changes that
// could miss its hold time. TDO is one bit later than it would be at rising edges, which clients allow.
//
// But the analyzer has taken a bit more when a scan stops for Pause-DR than before the next bit of a
// scan that goes on: so the first bit of TDO after a pause is the one before, last_q. The pins are the
// device's own, which the tools connect.
module QX_JTAG (
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
    wire tck, shift, update, no_reset, active;
    wire tdo;
    JTAGG #(
        .ER1("ENABLED"),
        .ER2("DISABLED")
    ) u_primitive (
        .JTCK   (tck),
        .JTDI   (tdi_o),
        .JSHIFT (shift),
        .JUPDATE(update),
        .JRSTN  (no_reset),
        .JCE1   (active),
        .JRTI1  (run_test_idle_er1_o),
        .JTDO1  (tdo),
        .JTDO2  (1'b0)
    );
    assign tck_o = ~tck;

    reg reset_q = 1'b0;
    reg active_q = 1'b0;
    reg shift_q = 1'b0;
    reg update_q = 1'b0;
    reg er1_q = 1'b0;  // from the capture to the update: the scan is ER1's
    reg last_q = 1'b0;
    always @(posedge tck_o) begin
        reset_q <= ~no_reset;
        active_q <= active;
        shift_q <= shift;
        update_q <= update;
        er1_q <= active | (er1_q & ~update_q);
        if (~er1_q) last_q <= 1'b0;
        else if (shift_q) last_q <= tdo_er1_i;
    end
    assign tdo = shift_q ? tdo_er1_i : last_q;

    assign test_logic_reset_o = reset_q;
    assign shift_dr_capture_dr_o = active_q;
    assign update_dr_o = update_q;
    assign enable_er1_o = er1_q;

    // What the primitive does not tell, and the analyzer does not use
    assign pause_dr_o = 1'b0;
    assign run_test_idle_er2_o = 1'b0;
    assign enable_er2_o = 1'b0;
    assign tdo_pad_o = 1'b0;
endmodule

`default_nettype wire
