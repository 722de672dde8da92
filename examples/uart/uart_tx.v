// SPDX-License-Identifier: Apache-2.0
// A UART transmitter, 8 data bits, no parity, one stop bit: the design that the examples watch.
//
//   start_i is taken in a cycle in which busy_o is 0; data_i goes out least significant bit first.
`default_nettype none

module uart_tx #(
    parameter CLOCKS_PER_BIT = 8 // at least 2
) (
    input  wire       clk,
    input  wire       rst,
    input  wire       start,
    input  wire [7:0] data,
    output reg        tx,
    output wire       busy
);
    localparam IDLE = 2'd0, START = 2'd1, DATA = 2'd2, STOP = 2'd3;

    reg [1:0]  state;
    reg [2:0]  bit_count;
    reg [7:0]  shift;
    reg [15:0] baud_count;

    wire baud_tick = baud_count == CLOCKS_PER_BIT - 1;

    assign busy = state != IDLE;

    always @(posedge clk)
        if (rst || !busy || baud_tick)
            baud_count <= 0;
        else
            baud_count <= baud_count + 1;

    always @(posedge clk)
        if (rst) begin
            state <= IDLE;
            bit_count <= 0;
            shift <= 0;
            tx <= 1;
        end else
            case (state)
            IDLE: if (start) begin
                state <= START;
                shift <= data;
                tx <= 0;
            end
            START: if (baud_tick) begin
                state <= DATA;
                bit_count <= 0;
                tx <= shift[0];
            end
            DATA: if (baud_tick) begin
                shift <= shift >> 1;
                bit_count <= bit_count + 1;
                tx <= bit_count == 7 ? 1'b1 : shift[1];
                if (bit_count == 7)
                    state <= STOP;
            end
            STOP: if (baud_tick)
                state <= IDLE;
            endcase
endmodule

`default_nettype wire
