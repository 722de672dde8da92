// SPDX-License-Identifier: Apache-2.0
// Bytes from one clock domain to another, in order, at most 2^ADDRESS_BITS.
//
//   A byte is written in a cycle of wr_clk in which wr_valid and wr_ready are 1.
//   rd_data is the oldest byte, one cycle of rd_clk after rd_empty fell or rd_take removed another.
//
// A pointer crosses in Gray code, where one bit changes at a time. It arrives late, so each side
// may see the FIFO fuller or emptier than it is, but never overwrites an unread byte.
`default_nettype none

module fifo #(
    parameter ADDRESS_BITS = 4
) (
    input  wire        wr_clk,
    input  wire        wr_rst,
    input  wire        wr_valid,
    input  wire  [7:0] wr_data,
    output logic       wr_ready,

    input  wire        rd_clk,
    input  wire        rd_rst,
    input  wire        rd_take,
    output logic [7:0] rd_data,
    output logic       rd_empty
);
    localparam DEPTH = 1 << ADDRESS_BITS;

    logic [7:0] bytes [0:DEPTH-1];

    // Pointers have one bit more than addresses, to distinguish full from empty.
    logic [ADDRESS_BITS:0] wr_pointer, wr_next, wr_gray, wr_gray_seen;
    logic [ADDRESS_BITS:0] rd_pointer, rd_next, rd_gray, rd_gray_seen;

    // Write side
    logic [ADDRESS_BITS:0] rd_pointer_seen, wr_count;
    logic                  full;

    assign wr_count = wr_pointer - rd_pointer_seen;
    assign full = wr_count == DEPTH[ADDRESS_BITS:0];
    assign wr_ready = !full;
    assign wr_next = wr_pointer + 1'b1;

    always_ff @(posedge wr_clk)
        if (wr_rst) begin
            wr_pointer <= 0;
            wr_gray <= 0;
        end else if (wr_valid && wr_ready) begin
            wr_pointer <= wr_next;
            wr_gray <= wr_next ^ wr_next >> 1;
        end

    always_ff @(posedge wr_clk)
        if (wr_valid && wr_ready)
            bytes[wr_pointer[ADDRESS_BITS-1:0]] <= wr_data;

    synchronizer #(.WIDTH(ADDRESS_BITS + 1)) to_wr(
        .clk(wr_clk), .value(rd_gray), .synchronized(rd_gray_seen));

    for (genvar i = 0; i <= ADDRESS_BITS; i = i + 1) begin : decode
        assign rd_pointer_seen[i] = ^rd_gray_seen[ADDRESS_BITS:i];
    end

    // Read side
    assign rd_empty = wr_gray_seen == rd_gray;
    assign rd_next = rd_pointer + 1'b1;

    always_ff @(posedge rd_clk)
        if (rd_rst) begin
            rd_pointer <= 0;
            rd_gray <= 0;
        end else if (rd_take && !rd_empty) begin
            rd_pointer <= rd_next;
            rd_gray <= rd_next ^ rd_next >> 1;
        end

    always_ff @(posedge rd_clk)
        rd_data <= bytes[rd_pointer[ADDRESS_BITS-1:0]];

    synchronizer #(.WIDTH(ADDRESS_BITS + 1)) to_rd(
        .clk(rd_clk), .value(wr_gray), .synchronized(wr_gray_seen));
endmodule

`default_nettype wire
