// SPDX-License-Identifier: Apache-2.0
// Flip-flop with clock enable and synchronous reset.
//
//   INIT          Q after power-up
//   RESET_VALUE   Q after an edge of CLK with RST = 1, independent of CE
//   FALLING       0: at the rising edge of CLK, 1: at the falling edge
`default_nettype none
module QX_DFFR #(
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
    always @(posedge edge_clk)
        if (RST) Q <= RESET_VALUE;
        else if (CE) Q <= D;
endmodule
`default_nettype wire
