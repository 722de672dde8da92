// SPDX-License-Identifier: Apache-2.0
`default_nettype none

// The analyzer behind a serial port: takes the place of the JTAG primitive, and uses three of its four
// pads.
//
//   tck_pad_i   a clock of the board, CLOCK_HZ
//   tdi_pad_i   the line from the client
//   tdo_pad_o   the line to the client
//   tms_pad_i   not used
`include "qx_uart_define.v"
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
    oxa_uart_bridge #(
        .CLOCK_HZ (`OXA_UART_CLOCK_HZ),
        .BAUD     (`OXA_UART_BAUD)
    ) u_bridge (
        .clk_i    (tck_pad_i),
        .rx_i     (tdi_pad_i),
        .tx_o     (tdo_pad_o),
        .tdi_o    (tdi_o),
        .shift_o  (shift_dr_capture_dr_o),
        .update_o (update_dr_o),
        .tdo_i    (tdo_er1_i)
    );
    assign tck_o = tck_pad_i;
    assign test_logic_reset_o = 1'b0;
    assign run_test_idle_er1_o = 1'b0;
    assign run_test_idle_er2_o = 1'b0;
    assign pause_dr_o = 1'b0;
    assign enable_er1_o = 1'b1;
    assign enable_er2_o = 1'b0;
endmodule

`default_nettype wire
