// SPDX-License-Identifier: Apache-2.0
`default_nettype none

// A serial port in the place of a test access port: moves scans of the analyzer cores' data register
// over two pins. docs/uart-protocol.md describes the frames.
//
// The cores' TCK is clk_i itself. A character has 8 data bits, the lowest first, no parity, and one
// stop bit; a client sends two, so that an answer is never slower than its request. The line starts
// at BAUD bits a second. A frame can set BAUD times 2 to 128; a framing error or a break returns to
// BAUD.
module oxa_uart_bridge #(
    parameter CLOCK_HZ = 12000000,
    parameter BAUD     = 115200
) (
    input  wire clk_i,
    input  wire rx_i,
    output wire tx_o,
    // The control core's side
    output wire tdi_o,
    output wire shift_o,   // the first cycle of a scan captures, each later one moves a bit
    output wire update_o,  // the scan ends
    input  wire tdo_i
);
    localparam [7:0] SYNC = 8'ha7;

    // Clock cycles of a bit at BAUD << rate; 0 when the clock is too slow for it: a bit takes at
    // least 8 cycles, and a character ends less than a sixth of a bit early or late.
    function integer cycles(input integer rate);
        integer wanted, difference;
        begin
            wanted = BAUD << rate;
            cycles = (CLOCK_HZ + wanted / 2) / wanted;
            difference = CLOCK_HZ - cycles * wanted;
            if (difference < 0) difference = -difference;
            if (cycles < 8 || difference > CLOCK_HZ / 64) cycles = 0;
        end
    endfunction
    localparam DIVIDER_BITS = $clog2(CLOCK_HZ / BAUD + 2);
    function [DIVIDER_BITS-1:0] last_cycle_at(input integer rate);
        integer last;
        begin
            last = cycles(rate) - 1;
            last_cycle_at = last[DIVIDER_BITS-1:0];
        end
    endfunction
    localparam [7:0] POSSIBLE = {cycles(7) != 0, cycles(6) != 0, cycles(5) != 0, cycles(4) != 0,
                                 cycles(3) != 0, cycles(2) != 0, cycles(1) != 0, cycles(0) != 0};
    generate
        if (!POSSIBLE[0])
`ifdef VERILATOR  // requires all modules, also those that are not used
            $error("the clock is too slow for the baud rate");
`else
            impossible_uart__the_clock_is_too_slow_for_the_baud_rate u_stop ();
`endif
    endgenerate

    reg [2:0] rate_q = 3'd0;
    reg [DIVIDER_BITS-1:0] last_cycle;
    always @* begin
        case (rate_q)
            3'd0: last_cycle = last_cycle_at(0);
            3'd1: last_cycle = last_cycle_at(1);
            3'd2: last_cycle = last_cycle_at(2);
            3'd3: last_cycle = last_cycle_at(3);
            3'd4: last_cycle = last_cycle_at(4);
            3'd5: last_cycle = last_cycle_at(5);
            3'd6: last_cycle = last_cycle_at(6);
            3'd7: last_cycle = last_cycle_at(7);
        endcase
    end

    function [15:0] crc16(input [15:0] crc, input b);
        crc16 = {1'b0, crc[15:1]} ^ ({16{crc[0] ^ b}} & 16'h8408);
    endfunction

    // Received characters: rx_bit_q counts start bit, data bits, stop bit
    (* ASYNC_REG = "TRUE" *) reg [1:0] rx_sync_q = 2'b11;
    always @(posedge clk_i) rx_sync_q <= {rx_sync_q[0], rx_i};
    wire rx = rx_sync_q[1];

    localparam [3:0] IDLE = 4'd0, STOP_BIT = 4'd10;
    reg [3:0] rx_bit_q = IDLE;
    reg [DIVIDER_BITS-1:0] rx_cycle_q = 0;
    wire rx_sample = rx_bit_q != IDLE & rx_cycle_q == 0;
    wire rx_data = rx_sample & rx_bit_q != 4'd1 & rx_bit_q != STOP_BIT;
    wire rx_stop = rx_sample & rx_bit_q == STOP_BIT;
    wire rx_byte = rx_stop & rx;
    always @(posedge clk_i) begin
        if (rx_bit_q == IDLE) begin
            rx_cycle_q <= {1'b0, last_cycle[DIVIDER_BITS-1:1]};
            if (!rx) rx_bit_q <= 4'd1;
        end else if (rx_sample) begin
            rx_cycle_q <= last_cycle;
            rx_bit_q <= rx_stop | (rx_bit_q == 4'd1 & rx) ? IDLE : rx_bit_q + 4'd1;
        end else begin
            rx_cycle_q <= rx_cycle_q - 1'b1;
        end
    end

    // The frame: the parts of a request, then its answer
    localparam [2:0] HUNT = 0, CONTROL = 1, COUNTS = 2, ZEROS = 3, LITERALS = 4, CHECK_LOW = 5,
        CHECK_HIGH = 6, ANSWER = 7;
    reg [2:0] part_q = HUNT;
    reg ends_q = 1'b0, quiet_q = 1'b0, sets_rate_q = 1'b0;
    reg [3:0] literals_q = 4'd0;
    reg [11:0] zeros_q = 12'd0;
    reg [7:0] byte_q = 8'd0;   // what was received; of literals, the bits that came back
    reg [7:0] hold_q = 8'd0;   // what is to be sent
    reg full_q = 1'b0;
    reg [15:0] rx_crc_q = 16'd0;
    wire literal = part_q == LITERALS;

    // Sent characters
    localparam [1:0] HELD = 0, LIVE = 1, CRC_LOW = 2, CRC_HIGH = 3;
    reg [1:0] kind_q = HELD;
    reg [3:0] tx_bit_q = IDLE;
    reg [DIVIDER_BITS-1:0] tx_cycle_q = 0;
    reg tx_q = 1'b1;
    reg [15:0] tx_crc_q = 16'd0;
    wire silent = quiet_q & kind_q == LIVE;
    wire tx_tick = tx_bit_q != IDLE & (tx_cycle_q == 0 | silent);
    wire tx_data = tx_tick & tx_bit_q != 4'd9 & tx_bit_q != STOP_BIT;
    wire live = tx_data & kind_q == LIVE;
    wire [7:0] held = {hold_q[6:0], hold_q[7]};  // tx_bit_q is 1 for the first bit
    wire tx_bit = kind_q == HELD ? held[tx_bit_q[2:0]] : kind_q == LIVE ? tdo_i : tx_crc_q[0];
    wire answers = part_q == ANSWER;
    wire sent = tx_tick & tx_bit_q == STOP_BIT & kind_q == CRC_HIGH;
    wire runs = answers & !sets_rate_q & zeros_q != 0;
    always @(posedge clk_i) begin
        if (tx_bit_q == IDLE) begin
            tx_cycle_q <= last_cycle;
            if (full_q | answers) begin
                kind_q <= full_q ? HELD : runs ? LIVE : kind_q == CRC_LOW ? CRC_HIGH : CRC_LOW;
                tx_bit_q <= 4'd1;
                tx_q <= ~full_q & runs & quiet_q;
            end
        end else if (tx_tick) begin
            tx_cycle_q <= last_cycle;
            tx_q <= tx_bit | silent | ~tx_data;
            tx_bit_q <= tx_bit_q == STOP_BIT ? IDLE : tx_bit_q + 4'd1;
        end else begin
            tx_cycle_q <= tx_cycle_q - 1'b1;
        end
        if (part_q == CONTROL) tx_crc_q <= 16'hffff;
        else if (tx_data & ~silent) tx_crc_q <= crc16(tx_crc_q, tx_bit);
    end

    always @(posedge clk_i) begin
        if (rx_data) begin
            byte_q <= {literal ? tdo_i : rx, byte_q[7:1]};
            rx_crc_q <= crc16(rx_crc_q, rx);
        end
        if (part_q == HUNT) rx_crc_q <= 16'hffff;
        if (tx_tick & tx_bit_q == STOP_BIT & kind_q == HELD) full_q <= 1'b0;
        if (rx_byte) begin
            case (part_q)
                HUNT: if (byte_q == SYNC) part_q <= CONTROL;
                CONTROL: begin
                    {ends_q, quiet_q, sets_rate_q} <= byte_q[7:5];
                    hold_q <= byte_q;
                    full_q <= 1'b1;
                    part_q <= COUNTS;
                end
                COUNTS: begin
                    {literals_q, zeros_q[11:8]} <= byte_q;
                    part_q <= ZEROS;
                end
                ZEROS: begin
                    zeros_q[7:0] <= byte_q;
                    part_q <= literals_q == 0 ? CHECK_LOW : LITERALS;
                end
                LITERALS: begin
                    hold_q <= byte_q;
                    full_q <= ~quiet_q;
                    literals_q <= literals_q - 1'b1;
                    if (literals_q == 4'd1) part_q <= CHECK_LOW;
                end
                CHECK_LOW: part_q <= CHECK_HIGH;
                CHECK_HIGH: part_q <= rx_crc_q == 0 ? ANSWER : HUNT;
                default: ;
            endcase
        end
        if (live & tx_bit_q == 4'd8) zeros_q <= zeros_q - 1'b1;
        if (sent) begin
            part_q <= HUNT;
            if (sets_rate_q & POSSIBLE[zeros_q[2:0]]) rate_q <= zeros_q[2:0];
        end
        if (rx_stop & ~rx) begin
            rate_q <= 3'd0;
            part_q <= HUNT;
        end
    end

    assign tx_o = tx_q;
    assign tdi_o = literal & rx;
    assign shift_o = (literal & rx_data) | live;
    assign update_o = sent & ends_q;
endmodule

`default_nettype wire
