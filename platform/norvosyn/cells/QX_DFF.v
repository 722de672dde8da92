// SPDX-License-Identifier: Apache-2.0
// Flip-flop with clock enable.
//
//   INIT      Q after power-up
//   FALLING   0: Q takes D with the rising edge of CLK, 1: with the falling edge
//   CE        1: Q takes D, 0: Q stays
`default_nettype none
module QX_DFF #(
    parameter [0:0] INIT = 1'b0,
    parameter [0:0] FALLING = 1'b0
) (
    output reg Q,
    input wire D,
    input wire CLK,
    input wire CE
);
    wire edge_clk = CLK ^ FALLING;

    initial Q = INIT;
    always @(posedge edge_clk)
        if (CE) Q <= D;
endmodule
`default_nettype wire
