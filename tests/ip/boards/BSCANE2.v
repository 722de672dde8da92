// SPDX-License-Identifier: Apache-2.0
// BSCANE2, with the pins that it has in a chip: the bench's. Macros choose a device (TWO_DIES) and what
// the manuals leave open: GATED strobes are low unless SEL, FALLING ones change half a cycle late.
`ifdef TWO_DIES
`define IR_BITS 12
`define USER1 12'h924
`else
`define IR_BITS 6
`define USER1 6'h02
`endif
module BSCANE2 #(
    parameter DISABLE_JTAG = "FALSE",
    parameter JTAG_CHAIN   = 1
) (
    output wire CAPTURE, DRCK, RESET, RUNTEST, SEL, SHIFT, TCK, TDI, TMS, UPDATE,
    input  wire TDO
);
    wire [`IR_BITS-1:0] instruction;
    wire [4:0] now;
    wire tdo;
    assign SEL = instruction == (JTAG_CHAIN == 1 ? `USER1 : `USER1 + 1);
    assign {TCK, TDI, TMS} = {counter_bench.tck, counter_bench.tdi, counter_bench.tms};
    chip_tap #(.IR_BITS(`IR_BITS), .IDCODE(9)) tap (.tck(TCK), .tms(TMS), .tdi(TDI), .tdo(tdo),
        .instruction(instruction), .user(SEL), .user_tdo(TDO),
        .reset(now[4]), .idle(now[3]), .capture(now[2]), .shift(now[1]), .update(now[0]));
    assign counter_bench.tdo = tdo;

`ifdef FALLING
    reg [4:0] told = 5'b10000;
    always @(negedge TCK) told <= now;
`else
    wire [4:0] told = now;
`endif
`ifdef GATED
    wire gate = SEL;
`else
    wire gate = 1'b1;
`endif
    assign {RESET, RUNTEST, CAPTURE, SHIFT, UPDATE} = told & {2'b11, {3{gate}}};
    assign DRCK = TCK & SEL & (CAPTURE | SHIFT);
endmodule
