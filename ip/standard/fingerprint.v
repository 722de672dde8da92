// SPDX-License-Identifier: Apache-2.0
    // A checksum of what the core was built from (docs/jtag-protocol.md)
    /* verilator lint_off WIDTH */
    localparam REGISTER_WORDS = (DATA_OUT_SHIFT_WIDTH + 31) / 32;

    // Extends `crc` by the words of one initial register value
    function [31:0] fingerprint_register;
        input [31:0] crc;
        input [DATA_OUT_SHIFT_WIDTH-1:0] value;
        integer i;
        begin
            fingerprint_register = crc;
            for (i = 0; i < REGISTER_WORDS; i = i + 1)
                fingerprint_register = fingerprint_step(fingerprint_register, value >> 32 * i);
        end
    endfunction

    function [31:0] fingerprint_parameters;
        input [31:0] crc;
        reg [31:0] sum;
`ifdef AO_STORES
        integer i;
`endif
        begin
            sum = fingerprint_step(crc, DATA_OUT_SHIFT_WIDTH);
            sum = fingerprint_step(sum, MEM_DATA_WIDTH);
            sum = fingerprint_step(sum, SIG_PORT_WIDTH);
            sum = fingerprint_step(sum, CAPTURE_DATA);
            sum = fingerprint_step(sum, TRIG_OUT_EN);
            sum = fingerprint_step(sum, MAX_TRIG_LEVELS);
            sum = fingerprint_step(sum, NUM_TRIG_PORTS);
            sum = fingerprint_step(sum, STORAGE_DEPTH);
            sum = fingerprint_step(sum, TRIG_TYPE);
//@repeat U 16
            sum = fingerprint_step(sum, CAPTURE_TRIG_@U@);
            sum = fingerprint_step(sum, TRIG_PORT_WIDTH_@U@);
//@end U
//@repeat U 16
            sum = fingerprint_step(sum, MATCH_EN_@U@);
            sum = fingerprint_step(sum, MATCH_CNT_WIDTH_@U@);
            sum = fingerprint_step(sum, MATCH_TYPE_@U@);
            sum = fingerprint_step(sum, MATCHER_@U@);
//@end U
`ifdef AO_STORES
            sum = fingerprint_step(sum, STORE_GAP_BITS);
            sum = fingerprint_step(sum, STORE_LIMIT);
            for (i = 0; i < (SIG_PORT_WIDTH + 31) / 32; i = i + 1)
                sum = fingerprint_step(sum, WATCH >> 32 * i);
`endif
            if (SOURCES > 0) sum = fingerprint_step(sum, FORCING);
            fingerprint_parameters = sum;
        end
    endfunction

    function [31:0] fingerprint_init;
        input [31:0] crc;
        reg [31:0] sum;
        begin
            sum = fingerprint_step(crc, TRIG_LEVELS_INIT);
            sum = fingerprint_step(sum, MAX_DATA_DEPTH_INIT);
            sum = fingerprint_step(sum, DATA_DEPTH_INIT);
            sum = fingerprint_step(sum, NUM_WINDOWS_INIT);
//@repeat U 16
            sum = fingerprint_register(sum, MATCH@U@_REG_M0_INIT);
            sum = fingerprint_register(sum, MATCH@U@_REG_M1_INIT);
            sum = fingerprint_register(sum, MATCH@U@_REG_M2_INIT);
            sum = fingerprint_register(sum, MATCH@U@_REG_CTRL_INIT);
            sum = fingerprint_register(sum, MATCH@U@_TRIG_CNT_INIT);
//@end U
            fingerprint_init = sum;
        end
    endfunction

`ifdef AO_DYNAMIC
    localparam TABLE_WORDS = UNITS > 5 ? 1 << (UNITS - 5) : 1;

    localparam [(1<<TABLE_ADDRESS_BITS)-1:0] TABLE_WHEN = `AO_TABLE_WHEN;
//@repeat U 16
    localparam [(1<<TABLE_ADDRESS_BITS)-1:0] TABLE_@U@ = LEVELS > @U@ ? EXPRESSION@U@_INIT : 0;
//@end U

    function [31:0] fingerprint_table;
        input [31:0] crc;
        input [32*TABLE_WORDS-1:0] values;
        integer i;
        begin
            fingerprint_table = crc;
            for (i = 0; i < TABLE_WORDS; i = i + 1)
                fingerprint_table = fingerprint_step(fingerprint_table, values[32*i+:32]);
        end
    endfunction

    function [31:0] fingerprint_expressions;
        input [31:0] crc;
        begin
            fingerprint_expressions = crc;
//@repeat U 16
            if (LEVELS > @U@)
                fingerprint_expressions
                    = fingerprint_table(fingerprint_expressions, TABLE_@U@);
//@end U
            if (KEEP == 2)
                fingerprint_expressions = fingerprint_table(fingerprint_expressions, TABLE_WHEN);
        end
    endfunction
`else
    /* verilator lint_off UNUSED */ // an expression uses only some units
//@repeat U 16
    function static_value_@U@;
        input [15:0] match;
        begin
            static_value_@U@ = `AO_EXPRESSION_@U@;
        end
    endfunction
//@end U
    function static_value_when;
        input [15:0] match;
        begin
            static_value_when = `AO_WHEN;
        end
    endfunction
    /* verilator lint_on UNUSED */

    // Outputs for row r of the tables that represent static expressions
    function [15:0] static_outputs;
        input [5:0] r;
        integer i, n;
        reg [95:0] masks;
        begin
            masks = {6'd28, 6'd26, 6'd25, 6'd22, 6'd21, 6'd19, 6'd14, 6'd13, 6'd11, 6'd7,
                     6'd32, 6'd16, 6'd8, 6'd4, 6'd2, 6'd1};
            n = 0;
            static_outputs = 16'd0;
            for (i = 0; i < 16; i = i + 1) begin
                if (unit_bits(i) > 0) begin
                    static_outputs[i] = ^(r & masks[6*n+:6]);
                    n = n + 1;
                end
            end
        end
    endfunction

    function [31:0] fingerprint_expressions;
        input [31:0] crc;
        integer r;
        reg [15:0] outputs;
        reg [17*64-1:0] tables;  // the qualifier's after those of the levels
        begin
            tables = 0;
            for (r = 0; r < 64; r = r + 1) begin
                outputs = static_outputs(r);
//@repeat U 16
                if (LEVELS > @U@) tables[64*@U@+r] = static_value_@U@(outputs);
//@end U
                if (KEEP == 2) tables[64*LEVELS+r] = static_value_when(outputs);
            end
            fingerprint_expressions = crc;
            for (r = 0; r < 2 * (LEVELS + (KEEP == 2)); r = r + 1)
                fingerprint_expressions
                    = fingerprint_step(fingerprint_expressions, tables[32*r+:32]);
        end
    endfunction
`endif

    localparam [3:0] EVENT_OPTIONS = {FORCING != 0, STAMPS, TRIGGER_OUT, PULSES};

    function [31:0] fingerprint;
        input unused;
        begin
            fingerprint = fingerprint_step(32'd0, 32'd1);
            fingerprint = fingerprint_parameters(fingerprint);
            fingerprint = fingerprint_init(fingerprint);
            fingerprint = fingerprint_expressions(fingerprint);
            fingerprint = fingerprint_step(fingerprint, PORTS_PRESENT);
            fingerprint = fingerprint_step(fingerprint, DYNAMIC);
            fingerprint = fingerprint_step(fingerprint, `AO_TABLE_STYLE_CODE);
            fingerprint = fingerprint_step(fingerprint, `AO_STYLE_CODE);
            fingerprint = fingerprint_step(fingerprint, `AO_FALLING);
            fingerprint = fingerprint_step(fingerprint, ARMED);
            fingerprint = fingerprint_step(fingerprint, `AO_ZV1);
            if (KEEP != 0) fingerprint = fingerprint_step(fingerprint, KEEP);
            if (EVENT_OPTIONS != 0) fingerprint = fingerprint_step(fingerprint, {12'd0, EVENT_OPTIONS, 16'd0});
        end
    endfunction
    localparam [31:0] FINGERPRINT = fingerprint(1'b0);
    /* verilator lint_on WIDTH */
