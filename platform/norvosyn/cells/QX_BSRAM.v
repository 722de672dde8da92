// SPDX-License-Identifier: Apache-2.0
// Block SRAM: one write port, one read port, a clock each.
//
//   BITS          18432, or 9216 on devices with small blocks (the top address bit is then 0)
//   WRITE_WIDTH   1, 2, 4, 9, 18 or 36, like READ_WIDTH; they may differ
//   INIT          contents after power-up, row r at INIT[9*r +: 9]; default: zeros
//
// The memory is rows of nine bits. An address counts bits of a row's lower eight: row WADDR / 8,
// bit WADDR % 8. Ports of 1, 2 and 4 bits use only those eight; ports of 9, 18 and 36 use one, two
// and four whole rows, the lowest first, and ignore the address bits below.
//
//   WE = 1   WDATA is written at the rising edge of WCLK
//   RE = 1   RDATA is the word at RADDR after the rising edge of RCLK; its old value when it is
//            written at the same edge
`default_nettype none
// Narrower ports leave bits of addresses and data unused; INIT is as wide as the memory.
/* verilator lint_off UNUSEDSIGNAL */
/* verilator lint_off WIDTHCONCAT */
module QX_BSRAM #(
    parameter integer BITS = 18432,
    parameter integer WRITE_WIDTH = 36,
    parameter integer READ_WIDTH = 36,
    parameter [BITS-1:0] INIT = {BITS{1'b0}}
) (
    input wire WCLK,
    input wire WE,
    input wire [13:0] WADDR,
    input wire [35:0] WDATA,
    input wire RCLK,
    input wire RE,
    input wire [13:0] RADDR,
    output reg [35:0] RDATA
);
    localparam integer ROWS = BITS / 9;
    localparam integer ROW_BITS = (ROWS == 2048) ? 11 : 10;
    localparam integer WRITE_ROWS = (WRITE_WIDTH < 9) ? 1 : WRITE_WIDTH / 9;
    localparam integer READ_ROWS = (READ_WIDTH < 9) ? 1 : READ_WIDTH / 9;

    reg [8:0] rows[0:ROWS-1];
    wire [ROW_BITS-1:0] wrow = WADDR[3 +: ROW_BITS] & ~(WRITE_ROWS[ROW_BITS-1:0] - 1'b1);
    wire [ROW_BITS-1:0] rrow = RADDR[3 +: ROW_BITS] & ~(READ_ROWS[ROW_BITS-1:0] - 1'b1);

    wire [35:0] word;
    initial RDATA = 36'd0;
    always @(posedge RCLK)
        if (RE) RDATA <= word;

    genvar k;
    generate
        // In pieces, because a simulator copies the number for every part selected from it.
        for (k = 0; k < ROWS; k = k + 64) begin : contents
            localparam [9*64-1:0] PIECE = INIT[9*k +: 9*64];
            integer r;
            initial
                for (r = 0; r < 64; r = r + 1)
                    rows[k + r] = PIECE[9*r +: 9];
        end

        if (WRITE_WIDTH < 9) begin : narrow_write
            wire [3:0] wbit = {1'b0, WADDR[2:0] & ~(WRITE_WIDTH[2:0] - 3'd1)};
            always @(posedge WCLK)
                if (WE) rows[wrow][wbit +: WRITE_WIDTH] <= WDATA[WRITE_WIDTH-1:0];
        end else begin : wide_write
            for (k = 0; k < WRITE_ROWS; k = k + 1) begin : row
                always @(posedge WCLK)
                    if (WE) rows[wrow | k] <= WDATA[9*k +: 9];
            end
        end

        if (READ_WIDTH < 9) begin : narrow_read
            wire [3:0] rbit = {1'b0, RADDR[2:0] & ~(READ_WIDTH[2:0] - 3'd1)};
            wire [8:0] row = rows[rrow];
            assign word = {{(36-READ_WIDTH){1'b0}}, row[rbit +: READ_WIDTH]};
        end else begin : wide_read
            for (k = 0; k < 4; k = k + 1) begin : row
                assign word[9*k +: 9] = (k < READ_ROWS) ? rows[rrow | k] : 9'd0;
            end
        end
    endgenerate
endmodule
/* verilator lint_on WIDTHCONCAT */
/* verilator lint_on UNUSEDSIGNAL */
`default_nettype wire
