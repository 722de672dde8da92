// SPDX-License-Identifier: Apache-2.0
// Flip-flop with clock enable and asynchronous reset.
//
//   INIT          Q after power-up
//   RESET_VALUE   Q while RST = 1, independent of CLK
//   FALLING       0: at the rising edge of CLK, 1: at the falling edge
`default_nettype none
module QX_DFFC #(
    parameter [0:0] INIT = 1'b0,
    parameter [0:0] RESET_VALUE = 1'b0,
    parameter [0:0] FALLING = 1'b0
) (
    output reg Q,
    input wire D,
    input wire CLK,
    input wire CE,
    input wire RST
);
    wire edge_clk = CLK ^ FALLING;

    initial Q = INIT;
    always @(posedge edge_clk or posedge RST)
        if (RST) Q <= RESET_VALUE;
        else if (CE) Q <= D;
endmodule
`default_nettype wire
