// SPDX-License-Identifier: Apache-2.0
// JTAGG, with the pins that it has in a chip: the bench's. Macros choose what the manuals leave open:
// with GATED, JSHIFT and JUPDATE are low for instructions that are not the user's; with SKEWED, JTCK
// comes after JTDI, and the strobes after JTCK.
module JTAGG #(
    parameter ER1 = "ENABLED",
    parameter ER2 = "ENABLED"
) (
    input  wire TCK, TMS, TDI, JTDO2, JTDO1,
    output wire TDO, JTDI, JTCK, JRTI2, JRTI1, JSHIFT, JUPDATE, JRSTN, JCE2, JCE1
);
    wire tck = counter_bench.tck;
    wire [7:0] instruction;
    wire reset, idle, capture, shift, update;
    wire er1 = instruction == 8'h32 && ER1 == "ENABLED";
    wire er2 = instruction == 8'h38 && ER2 == "ENABLED";
    chip_tap #(.IR_BITS(8), .IDCODE(8'he0)) tap (.tck(tck), .tms(counter_bench.tms),
        .tdi(counter_bench.tdi), .tdo(TDO), .instruction(instruction), .user(er1 | er2),
        .user_tdo(er1 ? JTDO1 : JTDO2), .reset(reset), .idle(idle), .capture(capture), .shift(shift),
        .update(update));
    assign counter_bench.tdo = TDO;

    reg late_tdi = 0, no_reset = 0;
    always @(posedge tck) late_tdi <= counter_bench.tdi;
    always @(negedge tck) no_reset <= ~reset;
`ifdef GATED
    wire gate = er1 | er2;
`else
    wire gate = 1'b1;
`endif
    wire [2:0] strobes = {shift & gate, update & gate, er1 & (capture | shift)};
`ifdef SKEWED
    reg tck_1 = 0, tck_2 = 0;
    reg [2:0] strobes_1 = 0, strobes_2 = 0;
    always @(tck) tck_1 <= tck;
    always @(tck_1) tck_2 <= tck_1;
    always @(strobes) strobes_1 <= strobes;
    always @(strobes_1) strobes_2 <= strobes_1;
    assign {JTCK, JSHIFT, JUPDATE, JCE1} = {tck_2, strobes_2};
`else
    assign {JTCK, JSHIFT, JUPDATE, JCE1} = {tck, strobes};
`endif
    assign {JTDI, JRSTN, JRTI1} = {late_tdi, no_reset, er1 & idle};
    assign {JCE2, JRTI2} = {2{er2}} & {capture | shift, idle};
endmodule
