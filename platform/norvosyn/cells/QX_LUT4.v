// SPDX-License-Identifier: Apache-2.0
// Look-up table of four inputs.
//
//   O = INIT[{I3, I2, I1, I0}], combinational
//
// An unknown input makes O unknown only where O depends on it.
`default_nettype none
module QX_LUT4 #(
    parameter [15:0] INIT = 16'h0000
) (
    output wire O,
    input wire I0,
    input wire I1,
    input wire I2,
    input wire I3
);
    wire [7:0] of_i3 = I3 ? INIT[15:8] : INIT[7:0];
    wire [3:0] of_i2 = I2 ? of_i3[7:4] : of_i3[3:0];
    wire [1:0] of_i1 = I1 ? of_i2[3:2] : of_i2[1:0];
    assign O = I0 ? of_i1[1] : of_i1[0];
endmodule
`default_nettype wire
