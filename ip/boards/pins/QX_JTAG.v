// SPDX-License-Identifier: Apache-2.0
`default_nettype none

// A test access port (IEEE 1149.1) on four pins, for devices without a JTAG port of the design's.
//
//   instruction   code     data register
//   ER1           5'h08    the analyzer, behind tdo_er1_i
//   BYPASS        others   1 bit, selected by reset; there is no IDCODE
//
// State and instruction change at rising edges of TCK, TDO at falling ones. The standard changes the
// instruction at the falling edge in Update-IR; here it changes at the rising edge after that, at
// which the next scan cannot have begun. So no path into the analyzer is half a period long. TDO is
// driven always: an ordinary output behind OBUF cannot float. Five TCK cycles with TMS high reset.
module QX_JTAG (
    input  wire tms_pad_i,
    input  wire tck_pad_i,
    input  wire tdi_pad_i,
    output wire tdo_pad_o,
    output wire tck_o,
    output wire test_logic_reset_o,
    output wire run_test_idle_er1_o,
    output wire run_test_idle_er2_o,
    output wire shift_dr_capture_dr_o,
    output wire update_dr_o,
    output wire pause_dr_o,
    output wire enable_er1_o,
    output wire enable_er2_o,
    output wire tdi_o,
    input  wire tdo_er1_i,
    input  wire tdo_er2_i
);
    localparam [4:0] IR_ER1 = 5'h08;

    // Codes that make small logic: bit 3 is 0 in the column of the instruction register, bit 2 from
    // Shift to Exit2, the others are the same in both columns. Registers start as 0, which is
    // Test-Logic-Reset.
    localparam [3:0] RESET = 0, CAPTURE_IR = 1, SELECT_IR = 2, UPDATE_IR = 3, SHIFT_IR = 4, PAUSE_IR = 5,
        EXIT2_IR = 6, EXIT1_IR = 7, IDLE = 8, CAPTURE_DR = 9, SELECT_DR = 10, UPDATE_DR = 11,
        SHIFT_DR = 12, PAUSE_DR = 13, EXIT2_DR = 14, EXIT1_DR = 15;

    (* fsm_encoding = "none" *) reg [3:0] state_q = RESET;
    function [3:0] following(input [3:0] state, input tms);
        case (state)
            RESET:      following = tms ? RESET     : IDLE;
            IDLE:       following = tms ? SELECT_DR : IDLE;
            SELECT_DR:  following = tms ? SELECT_IR : CAPTURE_DR;
            CAPTURE_DR: following = tms ? EXIT1_DR  : SHIFT_DR;
            SHIFT_DR:   following = tms ? EXIT1_DR  : SHIFT_DR;
            EXIT1_DR:   following = tms ? UPDATE_DR : PAUSE_DR;
            PAUSE_DR:   following = tms ? EXIT2_DR  : PAUSE_DR;
            EXIT2_DR:   following = tms ? UPDATE_DR : SHIFT_DR;
            UPDATE_DR:  following = tms ? SELECT_DR : IDLE;
            SELECT_IR:  following = tms ? RESET     : CAPTURE_IR;
            CAPTURE_IR: following = tms ? EXIT1_IR  : SHIFT_IR;
            SHIFT_IR:   following = tms ? EXIT1_IR  : SHIFT_IR;
            EXIT1_IR:   following = tms ? UPDATE_IR : PAUSE_IR;
            PAUSE_IR:   following = tms ? EXIT2_IR  : PAUSE_IR;
            EXIT2_IR:   following = tms ? UPDATE_IR : SHIFT_IR;
            UPDATE_IR:  following = tms ? SELECT_DR : IDLE;
        endcase
    endfunction

    wire is_dr = state_q[3];
    wire between_scans = ~state_q[2];
    wire shifts = state_q[2:0] == SHIFT_IR[2:0];

    // One register for both columns: bit 4 is the bypass register. The standard wants 01 at the end of
    // a captured instruction and 0 in the bypass register.
    reg [4:0] ir_q = 5'd0;
    // Follows ir_q in the column of the instruction register. That begins at Select-IR, where ir_q has
    // no instruction, so a reset needs no more.
    reg er1_q = 1'b0;
    always @(posedge tck_pad_i) begin
        state_q <= following(state_q, tms_pad_i);
        if (between_scans) ir_q <= 5'b00001;
        else if (shifts) ir_q <= {tdi_pad_i, ir_q[4:1]};
        if (~is_dr) er1_q <= ir_q == IR_ER1;
    end

    reg tdo_q = 1'b0;
    always @(negedge tck_pad_i) tdo_q <= ~is_dr ? ir_q[0] : er1_q ? tdo_er1_i : ir_q[4];

    assign tdo_pad_o = tdo_q;
    assign tck_o = tck_pad_i;
    assign tdi_o = tdi_pad_i;
    assign test_logic_reset_o = 1'b0;  // enable_er1_o is low there
    assign run_test_idle_er1_o = state_q == IDLE & er1_q;
    assign run_test_idle_er2_o = 1'b0;
    assign shift_dr_capture_dr_o = state_q == CAPTURE_DR | state_q == SHIFT_DR;
    assign update_dr_o = state_q == UPDATE_DR;
    assign pause_dr_o = state_q == PAUSE_DR;
    assign enable_er1_o = er1_q;
    assign enable_er2_o = 1'b0;
endmodule

`default_nettype wire
