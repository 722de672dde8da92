// SPDX-License-Identifier: Apache-2.0
    // Widths, and positions in the settings register (docs/jtag-protocol.md). Generated values have
    // their own widths.
    /* verilator lint_off WIDTH */
    localparam LEVELS = MAX_TRIG_LEVELS;
    localparam LEVEL_BITS = LEVELS > 1 ? LEVELS : 1;
    // Values of the tables: the expressions', and the qualifier's
    localparam VALUES = LEVEL_BITS + (`AO_IS_DYNAMIC && `AO_KEEP == 2);
    // Cores that force this one; bits of a window's word about its trigger
    localparam SOURCES = 32'd0
//@repeat U 16
        + FORCING[@U@]
//@end U
        ;
    localparam EVENTS = (SOURCES > 0 ? 1 : 0) + (STAMPS ? 32 : 0);
    localparam ADDRESS_BITS = STORAGE_DEPTH > 2 ? $clog2(STORAGE_DEPTH) : 1;
    localparam [31:0] AMOUNT = MAX_DATA_DEPTH_INIT;
    localparam [31:0] WINDOWS = NUM_WINDOWS_INIT;  // less one
    localparam WINDOW_BITS = WINDOWS > 0 ? $clog2(WINDOWS + 1) : 0;

    // DATA_DEPTH_INIT is counted from the trigger, minus the delay between a trigger and its sample
    // in memory. It is one lower for devices with one more stage there, which leaves nothing to
    // count at the last position of a window.
`ifdef AO_DYNAMIC
    localparam [31:0] BEHIND = DATA_DEPTH_INIT + 3;
`else
    localparam [31:0] BEHIND = DATA_DEPTH_INIT + 2;
`endif
    localparam [31:0] POST = &BEHIND ? 32'd0 : BEHIND;

    function integer port_width;
        input integer k;
        begin
            case (k)
//@repeat U 16
                @U@: port_width = TRIG_PORT_WIDTH_@U@;
//@end U
                default: port_width = 0;
            endcase
        end
    endfunction

    function integer port_at;
        input integer k;
        integer i;
        begin
            port_at = 0;
            for (i = 0; i < k; i = i + 1) port_at = port_at + port_width(i);
        end
    endfunction

    localparam PORT_BITS = port_at(16);
//@repeat U 16
    localparam ON_@U@ = MATCH_EN_@U@ != 0;
    localparam TYPE_@U@ = MATCH_TYPE_@U@;
    localparam PORT_AT_@U@ = port_at(MATCHER_@U@);
    localparam PORT_WIDTH_@U@ = port_width(MATCHER_@U@);
    localparam COUNTER_@U@ = ON_@U@ ? MATCH_CNT_WIDTH_@U@ : 0;
    localparam FUNCTION_@U@ = (TYPE_@U@ % 2 ? 3 : 2) * PORT_WIDTH_@U@;  // its position in the unit's
    localparam FUNCTION_BITS_@U@ = TYPE_@U@ >= 2 ? 3 : 1;
    localparam UNIT_BITS_@U@ = ON_@U@ ? FUNCTION_@U@ + FUNCTION_BITS_@U@
            + (COUNTER_@U@ > 0 ? COUNTER_@U@ + 1 : 0) : 0;
//@end U

    function integer unit_bits;
        input integer k;
        begin
            case (k)
//@repeat U 16
                @U@: unit_bits = UNIT_BITS_@U@;
//@end U
                default: unit_bits = 0;
            endcase
        end
    endfunction

    localparam POST_AT = ADDRESS_BITS;
    localparam WINDOWS_AT = POST_AT + ADDRESS_BITS;
    localparam LAST_AT = WINDOWS_AT + WINDOW_BITS;
    localparam SOURCES_AT = LAST_AT + (LEVELS > 1 ? LEVELS : 0);
    localparam UNITS_AT = SOURCES_AT + SOURCES;

    function integer unit_at;
        input integer k;
        integer i;
        begin
            unit_at = UNITS_AT;
            for (i = 0; i < k; i = i + 1) unit_at = unit_at + unit_bits(i);
        end
    endfunction

    // Enabled units below k
    function integer rank;
        input integer k;
        integer i;
        begin
            rank = 0;
            for (i = 0; i < k; i = i + 1) if (unit_bits(i) > 0) rank = rank + 1;
        end
    endfunction

    localparam SETTINGS = unit_at(16);
    localparam UNITS = rank(16);
    localparam TABLE_ADDRESS_BITS = UNITS > 1 ? UNITS : 1;
//@repeat U 16
    localparam AT_@U@ = unit_at(@U@);
    localparam RANK_@U@ = rank(@U@);
//@end U

    // `value`, cut to `bits`, from bit `at` on
    function [SETTINGS-1:0] placed;
        input [SETTINGS-1:0] value;
        input integer bits;
        input integer at;
        begin
            placed = (value & ~({SETTINGS{1'b1}} << bits)) << at;
        end
    endfunction

    function [SETTINGS-1:0] settings_at_power_up;
        input unused;
        begin
            settings_at_power_up = placed(AMOUNT, ADDRESS_BITS, 0)
                | placed(POST, ADDRESS_BITS, POST_AT)
                | placed(WINDOWS, WINDOW_BITS, WINDOWS_AT);
            if (LEVELS > 1)
                settings_at_power_up = settings_at_power_up
                    | placed(1 << (LEVELS - 1), LEVELS, LAST_AT);
            settings_at_power_up = settings_at_power_up
                | placed({SETTINGS{1'b1}}, SOURCES, SOURCES_AT);
//@repeat U 16
            if (ON_@U@) begin
                settings_at_power_up = settings_at_power_up
                    | placed(MATCH@U@_REG_M0_INIT, PORT_WIDTH_@U@, AT_@U@)
                    | placed(MATCH@U@_REG_M1_INIT, PORT_WIDTH_@U@, AT_@U@ + PORT_WIDTH_@U@)
                    | placed(MATCH@U@_REG_CTRL_INIT, FUNCTION_BITS_@U@, AT_@U@ + FUNCTION_@U@);
                if (TYPE_@U@ % 2)
                    settings_at_power_up = settings_at_power_up
                        | placed(MATCH@U@_REG_M2_INIT, PORT_WIDTH_@U@, AT_@U@ + 2 * PORT_WIDTH_@U@);
                if (COUNTER_@U@ > 0)
                    settings_at_power_up = settings_at_power_up
                        | placed(MATCH@U@_REG_CTRL_INIT >> 3, 1,
                            AT_@U@ + FUNCTION_@U@ + FUNCTION_BITS_@U@)
                        | placed(MATCH@U@_TRIG_CNT_INIT, COUNTER_@U@,
                            AT_@U@ + FUNCTION_@U@ + FUNCTION_BITS_@U@ + 1);
            end
//@end U
        end
    endfunction
    // Without power-up capture a client writes them first. Registers that begin with 0 need no inverters
    // on devices that have no others.
    localparam [SETTINGS-1:0] SETTINGS_INIT = ARMED ? settings_at_power_up(1'b0) : {SETTINGS{1'b0}};

    localparam [63:0] WORDS_NEEDED = (AMOUNT + 64'd1) * (WINDOWS + 64'd1);
    generate
`ifndef AO_NUMBERED
        `AO_STOP(impossible_core_@P@__a_core_has_a_number_from_0_to_15)
`endif
        if (STORAGE_DEPTH < 1) `AO_STOP(impossible_core_@P@__a_core_has_at_least_one_word_of_memory)
        if (MEM_DATA_WIDTH != SIG_PORT_WIDTH + 1)
            `AO_STOP(impossible_core_@P@__a_word_of_memory_is_a_sample_and_its_mark)
        if (TRIG_TYPE != 0 && TRIG_TYPE != 1) `AO_STOP(impossible_core_@P@__the_trigger_clock_type_is_0_or_1)
        if (GAP_BITS > 32 || (KEEP == 1 && GAP_BITS == 0))
            `AO_STOP(impossible_core_@P@__a_gap_has_from_1_to_32_bits)
        if (FORCING[@P@]) `AO_STOP(impossible_core_@P@__another_core_forces_it)
        if (LEVELS > 16) `AO_STOP(impossible_core_@P@__a_core_has_at_most_16_expressions)
        if (&AMOUNT) `AO_STOP(impossible_core_@P@__a_window_has_at_least_one_sample)
        if (&WINDOWS) `AO_STOP(impossible_core_@P@__a_core_takes_at_least_one_window)
        if (WORDS_NEEDED > STORAGE_DEPTH) `AO_STOP(impossible_core_@P@__the_memory_holds_all_windows)
        if (POST > AMOUNT) `AO_STOP(impossible_core_@P@__the_trigger_position_lies_within_the_window)
//@repeat U 16
        if (ON_@U@) begin : checks_of_m@U@
            if (TYPE_@U@ > 5) `AO_STOP(impossible_core_@P@__m@U@_has_a_match_type_from_0_to_5)
            if ((MATCH@U@_REG_CTRL_INIT & 7) >= (TYPE_@U@ < 2 ? 2 : TYPE_@U@ < 4 ? 6 : 8))
                `AO_STOP(impossible_core_@P@__m@U@_has_a_function_of_its_match_type)
            if (MATCH@U@_TRIG_CNT_INIT >> COUNTER_@U@ != 0)
                `AO_STOP(impossible_core_@P@__the_counter_of_m@U@_fits_its_width)
        end
//@end U
    endgenerate
    /* verilator lint_on WIDTH */
