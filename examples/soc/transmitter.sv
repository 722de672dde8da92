// SPDX-License-Identifier: Apache-2.0
// A UART transmitter, 8 data bits, no parity, one stop bit: sends the bytes of a FIFO.
//
//   data is the oldest byte, one cycle after empty fell; it is read in the cycle in which take is 1.
`default_nettype none

module transmitter #(
    parameter CLOCKS_PER_BIT = 8 // 2 to 256
) (
    input  wire        clk,
    input  wire        rst,
    input  wire        empty,
    input  wire  [7:0] data,
    output logic       take,
    output logic       txd
);
    typedef enum logic [2:0] {IDLE, LOAD, START, DATA, STOP} state_t;

    localparam LAST_CLOCK = CLOCKS_PER_BIT - 1;

    state_t     state;
    logic [7:0] shift;
    logic [2:0] bit_count;
    logic [7:0] clock_count;
    logic       tick;

    assign take = state == LOAD;
    assign tick = clock_count == LAST_CLOCK[7:0];

    always_ff @(posedge clk)
        if (rst || state == IDLE || state == LOAD || tick)
            clock_count <= 0;
        else
            clock_count <= clock_count + 1'b1;

    always_ff @(posedge clk)
        if (rst) begin
            state <= IDLE;
            txd <= 1;
        end else
            case (state)
            IDLE:
                if (!empty)
                    state <= LOAD;
            LOAD: begin
                state <= START;
                shift <= data;
                txd <= 0;
            end
            START:
                if (tick) begin
                    state <= DATA;
                    bit_count <= 0;
                    shift <= shift >> 1;
                    txd <= shift[0];
                end
            DATA:
                if (tick) begin
                    bit_count <= bit_count + 1'b1;
                    shift <= shift >> 1;
                    txd <= bit_count == 7 || shift[0];
                    if (bit_count == 7)
                        state <= STOP;
                end
            default: // STOP
                if (tick)
                    state <= IDLE;
            endcase
endmodule

`default_nettype wire
