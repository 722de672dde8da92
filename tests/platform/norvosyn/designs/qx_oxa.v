// SPDX-License-Identifier: Apache-2.0
// Every kind of memory and flip-flop, and logic: the netlist has to behave as this source.
//
//   dump   all that a cycle made
`default_nettype none
module qx_oxa (
    input wire wclk,
    input wire rclk,
    input wire reset,
    input wire we,
    input wire re,
    input wire [10:0] wa,
    input wire [10:0] ra,
    input wire [31:0] wd,
    output wire [109:0] dump
);
    // Both clocks, contents of its own, ninth bits.
    reg [8:0] filled [0:2047];
    reg [8:0] filled_q;
    integer i;
    initial for (i = 0; i < 2048; i = i + 1) filled[i] = 9'd37 * i[8:0] + 9'd5;
    always @(posedge wclk) if (we) filled[wa] <= wd[8:0];
    always @(posedge rclk) if (re) filled_q <= filled[ra];

    // Several blocks side by side, a port narrower than a row, no enable at the read port.
    (* ram_style = "block" *) reg [19:0] wide [0:1023];
    (* ram_style = "block" *) reg [1:0] narrow [0:4095];
    reg [19:0] wide_q;
    reg [1:0] narrow_q;
    always @(posedge wclk) begin
        if (we) wide[wa[9:0]] <= wd[19:0];
        if (we) narrow[{wa, wd[31]}] <= wd[1:0];
    end
    always @(posedge rclk) begin
        wide_q <= wide[ra[9:0]];
        if (re) narrow_q <= narrow[{ra, 1'b1}];
    end

    // One clock: a word that is being written reads as it was.
    (* ram_style = "block" *) reg [31:0] same [0:511];
    reg [31:0] same_q;
    always @(posedge wclk) begin
        if (we) same[wa[8:0]] <= wd;
        if (re) same_q <= same[ra[8:0]];
    end

    // Read without a clock.
    (* ram_style = "distributed" *) reg [6:0] shadow [0:31];
    always @(posedge wclk) if (we) shadow[wa[4:0]] <= wd[6:0];

    // Made of flip-flops.
    (* ram_style = "registers" *) reg [3:0] few [0:7];
    always @(posedge wclk) if (we) few[wa[2:0]] <= wd[3:0];

    // A table nobody writes.
    reg [7:0] table_q;
    reg [7:0] rom [0:255];
    initial for (i = 0; i < 256; i = i + 1) rom[i] = i[7:0] * i[7:0] + 8'd3;
    always @(posedge rclk) table_q <= rom[ra[7:0]];

    // Flip-flops: both resets with both values, both edges, enables, values of power-up.
    reg [7:0] count_async, count_sync;
    reg [3:0] falling = 4'b1010;
    reg [7:0] plain;
    always @(posedge wclk or posedge reset)
        if (reset) count_async <= 8'h5a;
        else if (we) count_async <= count_async + 8'd3;
    always @(posedge rclk)
        if (!reset) count_sync <= 8'hc3;
        else if (re) count_sync <= count_sync - 8'd7;
    always @(negedge rclk) if (re) falling <= {falling[2:0], ^wd};
    always @(negedge wclk or negedge reset)
        if (!reset) plain <= 8'h0f;
        else plain <= (wd[7:0] > wd[15:8]) ? wd[7:0] * wd[10:8] : plain ^ wd[23:16];

    assign dump = {filled_q, wide_q, narrow_q, same_q, shadow[ra[4:0]], few[ra[2:0]], table_q,
        count_async, count_sync, falling, plain};
endmodule
`default_nettype wire
