// SPDX-License-Identifier: Apache-2.0
// A processor of 16 bits: 16 registers, 256 words of memory, no pipeline.
//
// An instruction is four hexadecimal digits: the operation, and registers a, b and d or a byte nn.
//
//   0a00  leds   ra          the lower byte of ra to the LEDs
//   1dnn  li     rd, nn      rd = nn
//   2dnn  hi     rd, nn      the upper byte of rd = nn, the lower one is unchanged
//   3dnn  addi   rd, nn      rd = rd + nn, nn from -128 to 127
//   4dab  add    rd, ra, rb  rd = ra + rb
//   5dab  sub    rd, ra, rb  rd = ra - rb
//   6d0b  load   rd, (rb)    rd = the word at rb
//   7a0b  store  ra, (rb)    the word at rb = ra
//   8ann  bz     ra, nn      to nn when ra is 0
//   9ann  bnz    ra, nn      to nn when ra is not 0
//   Aann  bneg   ra, nn      to nn when ra is negative
//   B0nn  jump   nn          to nn
//   Cdnn  call   rd, nn      rd = the next address, to nn
//   Da00  ret    ra          to ra
//   Ea00  send   ra          sends the lower byte of ra
//   Fa00  send2  ra          sends the upper byte of ra, then the lower one
//
// A byte is sent in a cycle in which send_valid and send_ready are 1.
`default_nettype none

module cpu (
    input  wire         clk,
    input  wire         rst,

    output logic [7:0]  address,
    output logic        write,
    output logic [15:0] write_data,
    input  wire  [15:0] read_data, // for the address of the cycle before

    output logic        send_valid,
    output logic [7:0]  send_data,
    input  wire         send_ready,

    output logic [7:0]  leds
);
    localparam LEDS = 4'h0, LI = 4'h1, HI = 4'h2, ADDI = 4'h3, ADD = 4'h4, SUB = 4'h5, LOAD = 4'h6,
               STORE = 4'h7, BZ = 4'h8, BNZ = 4'h9, BNEG = 4'hA, JUMP = 4'hB, CALL = 4'hC,
               RET = 4'hD, SEND = 4'hE, SEND2 = 4'hF;

    typedef enum logic [2:0] {
        FETCH,     // the memory reads the instruction
        DECODE,    // the registers read its operands
        EXECUTE,
        LOADED,    // the memory has read the word of a load
        SEND_HIGH, // the upper byte of send2
        SEND_LOW   // the lower byte of send2, or the byte of send
    } state_t;

    state_t      state;
    logic [7:0]  pc;
    logic [15:0] instruction;
    logic [15:0] a, b; // operands

    // Parts of the instruction and of ra
    logic [3:0]  opcode, d;
    logic [7:0]  nn, a_low;
    logic [15:0] offset;
    logic        a_negative;
    assign {opcode, d, nn} = instruction;
    assign offset = {{8{nn[7]}}, nn};
    assign a_low = a[7:0];
    assign a_negative = a[15];

    // Registers: `add` and `sub` have ra in the third digit, all others in the second.
    logic [15:0] registers [0:15];
    logic [3:0]  a_index;
    logic        result_valid;
    logic [15:0] result;

    assign a_index = read_data[15:12] == ADD || read_data[15:12] == SUB ? read_data[7:4]
                                                                        : read_data[11:8];
    always_ff @(posedge clk)
        if (state == DECODE) begin
            instruction <= read_data;
            a <= registers[a_index];
            b <= registers[read_data[3:0]];
        end

    always_ff @(posedge clk)
        if (result_valid)
            registers[d] <= result;

    always_comb begin
        result_valid = state == EXECUTE;
        case (opcode)
        LI:   result = {8'h00, nn};
        HI:   result = {nn, a_low};
        ADDI: result = a + offset;
        ADD:  result = a + b;
        SUB:  result = a - b;
        CALL: result = {8'h00, pc};
        default: begin
            result = read_data;
            result_valid = state == LOADED;
        end
        endcase
    end

    // Memory
    assign address = state == FETCH ? pc : b[7:0];
    assign write = state == EXECUTE && opcode == STORE;
    assign write_data = a;

    // Next address
    logic taken;
    always_comb
        case (opcode)
        BZ:      taken = a == 0;
        BNZ:     taken = a != 0;
        BNEG:    taken = a_negative;
        JUMP:    taken = 1;
        CALL:    taken = 1;
        default: taken = 0;
        endcase

    always_ff @(posedge clk)
        if (rst)
            pc <= 0;
        else if (state == FETCH)
            pc <= pc + 1'b1;
        else if (state == EXECUTE && opcode == RET)
            pc <= a_low;
        else if (state == EXECUTE && taken)
            pc <= nn;

    always_ff @(posedge clk)
        if (rst)
            leds <= 0;
        else if (state == EXECUTE && opcode == LEDS)
            leds <= a_low;

    always_ff @(posedge clk)
        if (rst) begin
            state <= FETCH;
            send_valid <= 0;
            send_data <= 0;
        end else begin
            send_valid <= 0;
            case (state)
            FETCH: state <= DECODE;
            DECODE: state <= EXECUTE;
            EXECUTE:
                case (opcode)
                LOAD:    state <= LOADED;
                SEND:    state <= SEND_LOW;
                SEND2:   state <= SEND_HIGH;
                default: state <= FETCH;
                endcase
            SEND_HIGH: if (send_ready) begin
                send_valid <= 1;
                send_data <= a[15:8];
                state <= SEND_LOW;
            end
            SEND_LOW: if (send_ready) begin
                send_valid <= 1;
                send_data <= a_low;
                state <= FETCH;
            end
            default: state <= FETCH; // LOADED
            endcase
        end
endmodule

`default_nettype wire
