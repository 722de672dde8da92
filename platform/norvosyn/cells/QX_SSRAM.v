// SPDX-License-Identifier: Apache-2.0
// Shadow SRAM of 64 bits: 16 words of 4, written at a clock edge, read combinationally.
//
//   INIT     contents after power-up, word a at INIT[4*a +: 4]; default: zeros
//   WE = 1   WDATA is written at the rising edge of WCLK
//   RDATA    the word at RADDR, combinational
`default_nettype none
module QX_SSRAM #(
    parameter [63:0] INIT = 64'd0
) (
    input wire WCLK,
    input wire WE,
    input wire [3:0] WADDR,
    input wire [3:0] WDATA,
    input wire [3:0] RADDR,
    output wire [3:0] RDATA
);
    reg [63:0] bits;

    initial bits = INIT;
    always @(posedge WCLK)
        if (WE) bits[{WADDR, 2'b00} +: 4] <= WDATA;

    assign RDATA = bits[{RADDR, 2'b00} +: 4];
endmodule
`default_nettype wire
