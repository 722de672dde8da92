// SPDX-License-Identifier: Apache-2.0
// The test access port of a chip, as IEEE 1149.1 has it: instructions IDCODE (selected by reset), those
// of the user, and BYPASS for all others. States have the numbers of the standard's example.
module chip_tap #(
    parameter IR_BITS = 8,
    parameter [IR_BITS-1:0] IDCODE = 1
) (
    input  wire tck,
    input  wire tms,
    input  wire tdi,
    output wire tdo,
    output reg  [IR_BITS-1:0] instruction,
    input  wire user,      // the instruction is one of the user's
    input  wire user_tdo,
    output wire reset,
    output wire idle,
    output wire capture,
    output wire shift,
    output wire update
);
    localparam [63:0] AFTER_0 = 64'hcacc_baba_62ce_3232, AFTER_1 = 64'hf977_89dd_417f_0155;
    reg [3:0] state = 4'hf;
    assign {reset, idle, capture, shift, update}
        = {state == 4'hf, state == 4'hc, state == 4'h6, state == 4'h2, state == 4'h5};
    initial instruction = IDCODE;

    reg [IR_BITS-1:0] ir = 0;
    reg [31:0] id = 0;
    reg bypass = 0;
    always @(posedge tck) begin
        state <= tms ? AFTER_1[4*state +: 4] : AFTER_0[4*state +: 4];
        case (state)
            4'he: ir <= 1;
            4'ha: ir <= {tdi, ir[IR_BITS-1:1]};
            4'h6: {id, bypass} <= {32'h0ddba11d, 1'b0};
            4'h2: {id, bypass} <= {tdi, id[31:1], tdi};
        endcase
    end

    reg tdo_q = 0, drives = 0;
    always @(negedge tck) begin
        if (reset) instruction <= IDCODE;
        if (state == 4'hd) instruction <= ir;
        tdo_q <= state == 4'ha ? ir[0] : user ? user_tdo : instruction == IDCODE ? id[0] : bypass;
        drives <= state == 4'ha || shift;
    end
    assign tdo = drives ? tdo_q : 1'bz;
endmodule
