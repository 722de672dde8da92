// SPDX-License-Identifier: Apache-2.0
`default_nettype none

// Simulation model of the JTAG primitive: an IEEE 1149.1 test access port with two user data
// registers.
//
//   instruction   code     data register
//   IDCODE        5'h01    32 bits, selected by reset
//   ER1           5'h08    the user's, connected to tdo_er1_i
//   ER2           5'h09    the user's, connected to tdo_er2_i
//   BYPASS        others   1 bit
//
// The state changes at rising edges of TCK, the instruction and TDO at falling edges. TDO floats
// outside of the shift states. Outputs to the user follow the state: a rising edge of tck_o with
// shift_dr_capture_dr_o high captures when it is the first of a scan, and shifts after that. There
// is no TRST: five TCK cycles with TMS high reset, as power-up does.
module QX_JTAG #(
    parameter [31:0] IDCODE = 32'h10a0_affd
) (
    input  wire tms_pad_i,
    input  wire tck_pad_i,
    input  wire tdi_pad_i,
    output wire tdo_pad_o,
    output wire tck_o,
    output wire test_logic_reset_o,     // in Test-Logic-Reset
    output wire run_test_idle_er1_o,    // in Run-Test/Idle, instruction ER1
    output wire run_test_idle_er2_o,
    output wire shift_dr_capture_dr_o,  // in Capture-DR or Shift-DR, for any instruction
    output wire update_dr_o,            // in Update-DR
    output wire pause_dr_o,             // in Pause-DR
    output wire enable_er1_o,           // instruction ER1
    output wire enable_er2_o,
    output wire tdi_o,
    input  wire tdo_er1_i,
    input  wire tdo_er2_i
);
    localparam [4:0] IR_IDCODE = 5'h01, IR_ER1 = 5'h08, IR_ER2 = 5'h09;
    localparam [4:0] IR_CAPTURE = 5'b00001;  // the standard requires 01 at the end

    localparam [3:0] RESET = 0, IDLE = 1, SELECT_DR = 2, CAPTURE_DR = 3, SHIFT_DR = 4, EXIT1_DR = 5,
        PAUSE_DR = 6, EXIT2_DR = 7, UPDATE_DR = 8, SELECT_IR = 9, CAPTURE_IR = 10, SHIFT_IR = 11,
        EXIT1_IR = 12, PAUSE_IR = 13, EXIT2_IR = 14, UPDATE_IR = 15;

    reg [3:0] state_q = RESET;
    // A function, because an `always @*` does not run at the start of a simulation without changes:
    // SystemVerilog initializes variables, such as a bench's `reg tms = 1`, before.
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

    reg [4:0] instruction_q = IR_IDCODE;
    reg [4:0] ir_q = 0;
    wire is_idcode = instruction_q == IR_IDCODE;
    wire is_er1 = instruction_q == IR_ER1;
    wire is_er2 = instruction_q == IR_ER2;

    // Simulators run the following at every edge of TCK. In the middle of a user's scan, it only
    // passes TDO on.
    reg tdo_enable_q = 1'b0;
    wire still = state_q == SHIFT_DR && ~tms_pad_i && (is_er1 || is_er2) && tdo_enable_q;
    reg [31:0] idcode_q = 0;
    reg bypass_q = 0;
    always @(posedge tck_pad_i) begin
        if (!still) begin
            state_q <= following(state_q, tms_pad_i);
            case (state_q)
                CAPTURE_IR: ir_q <= IR_CAPTURE;
                SHIFT_IR:   ir_q <= {tdi_pad_i, ir_q[4:1]};
                CAPTURE_DR: begin
                    idcode_q <= IDCODE;
                    bypass_q <= 1'b0;
                end
                SHIFT_DR: begin
                    idcode_q <= {tdi_pad_i, idcode_q[31:1]};
                    bypass_q <= tdi_pad_i;
                end
                default: ;
            endcase
        end
    end

    wire tdo = state_q == SHIFT_IR ? ir_q[0]
             : is_er1 ? tdo_er1_i : is_er2 ? tdo_er2_i : is_idcode ? idcode_q[0] : bypass_q;
    reg tdo_q = 1'b0;
    always @(negedge tck_pad_i) begin
        tdo_q <= tdo;
        if (!still) begin
            tdo_enable_q <= state_q == SHIFT_IR || state_q == SHIFT_DR;
            if (state_q == RESET) instruction_q <= IR_IDCODE;
            if (state_q == UPDATE_IR) instruction_q <= ir_q;
        end
    end

    assign tdo_pad_o = tdo_enable_q ? tdo_q : 1'bz;
    assign tck_o = tck_pad_i;
    assign tdi_o = tdi_pad_i;
    assign test_logic_reset_o = state_q == RESET;
    assign run_test_idle_er1_o = state_q == IDLE && is_er1;
    assign run_test_idle_er2_o = state_q == IDLE && is_er2;
    assign shift_dr_capture_dr_o = state_q == CAPTURE_DR || state_q == SHIFT_DR;
    assign update_dr_o = state_q == UPDATE_DR;
    assign pause_dr_o = state_q == PAUSE_DR;
    assign enable_er1_o = is_er1;
    assign enable_er2_o = is_er2;
endmodule

`default_nettype wire
