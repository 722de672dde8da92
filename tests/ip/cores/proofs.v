// SPDX-License-Identifier: Apache-2.0
`default_nettype none

// ok_o unless a match unit of TYPE differs from what its function means.
module match_proof #(
    parameter TYPE = 5,
    parameter AT_ONCE = 16
) (
    input  wire       clk_i,
    input  wire [2:0] value_i,
    input  wire       first_i,  // the sample before value_i is the first one of a run
    output wire       ok_o
);
    // Whatever they begin with, registers keep
    reg [2:0] m0_q, m1_q, m2_q, func_q;
    always @(posedge clk_i) {m0_q, m1_q, m2_q, func_q} <= {m0_q, m1_q, m2_q, func_q};

    reg [2:0] now_q, prev1_q, prev2_q, changed1_q;
    reg first1_q;
    always @(posedge clk_i) begin
        {now_q, prev1_q, prev2_q} <= {value_i, now_q, prev1_q};
        {first1_q, changed1_q} <= {first_i, (now_q ^ prev1_q) & {3{~first_i}}};
    end

    wire built = TYPE < 2 ? func_q < 2 : TYPE < 4 ? func_q < 6 : 1'b1;
    wire match;
    ao_match_0 #(.TYPE(TYPE), .WIDTH(3), .AT_ONCE(AT_ONCE)) u_match (
        .clk_i(clk_i), .now_i(now_q), .not_now_i(~now_q), .not_prev1_i(~prev1_q), .changed_i(changed1_q),
        .m0_i(m0_q), .m1_i(m1_q), .m2_i(m2_q), .function_i(func_q), .match_o(match)
    );

    integer i;
    reg wanted, rose, fell;
    reg meant;
    always @* begin
        wanted = 1'b1;
        for (i = 0; i < 3; i = i + 1) begin
            rose = ~first1_q & prev1_q[i] & ~prev2_q[i];
            fell = ~first1_q & ~prev1_q[i] & prev2_q[i];
            case ({m0_q[i], m1_q[i], m2_q[i] & TYPE % 2 == 1})
                3'b010: if (prev1_q[i]) wanted = 1'b0;
                3'b110: if (~prev1_q[i]) wanted = 1'b0;
                3'b001: if (~rose) wanted = 1'b0;
                3'b101: if (~fell) wanted = 1'b0;
                3'b011: if (~rose & ~fell) wanted = 1'b0;
                3'b111: if (rose | fell) wanted = 1'b0;
                default: ;
            endcase
        end
        case (func_q)
            0: meant = wanted;
            1: meant = !wanted;
            2: meant = prev1_q > m0_q;
            3: meant = prev1_q < m1_q;
            4: meant = prev1_q >= m0_q;
            5: meant = prev1_q <= m1_q;
            6: meant = m0_q <= prev1_q && prev1_q <= m1_q;
            default: meant = prev1_q < m0_q || prev1_q > m1_q;
        endcase
    end
    reg meant_q;
    always @(posedge clk_i) meant_q <= meant;
    assign ok_o = ~built | match == meant_q;
endmodule

// ok_o unless the table of core 1's expression differs from the same static one of core 0.
`include "ao_0/qx_ao_expression.v"
module table_proof (
    input  wire       clk_i,
    input  wire [2:0] outputs_i,
    output wire       ok_o
);
`include "ao_1/qx_ao_init.v"
    wire values;
    ao_table_1 #(.UNITS(3), .EXPRESSIONS(1), .INIT_0(EXPRESSION0_INIT)) u_table (
        .tck_i(clk_i), .write_i(1'b0), .last_i(1'b0), .bit_i(1'b0), .word_i(3'd0),
        .clk_i(clk_i), .outputs_i(outputs_i), .values_o(values)
    );
    wire [15:0] match = {13'd0, outputs_i};
    reg value_q;
    always @(posedge clk_i) value_q <= `CORE0_DF_AO_EXPRESSION_0;
    assign ok_o = values == value_q;
endmodule

// ok_o while what can be told of the samples of a run is true: a sample that is not stored has the
// value of the stored one before it, and a gap is the number of these samples.
module store_proof (
    input  wire       clk_i,
    input  wire       arm_i,      // any arming and stop
    input  wire [1:0] value_i,
    input  wire       trigger_i,  // the sample is stored in any case
    input  wire       ends_i,     // and ends a window
    output wire       ok_o
);
    reg arm_q = 1'b0, take_q = 1'b0;
    reg [1:0] data0_q = 0, data1_q = 0, data2_q = 0;
    always @(posedge clk_i) begin
        {take_q, arm_q} <= {arm_q, arm_i};
        {data2_q, data1_q, data0_q} <= {data1_q, data0_q, value_i};
    end
    wire is_last = take_q & ~arm_q;
    wire store, stores = store | trigger_i;
    wire [1:0] gap;
    ao_store_0 #(.KEEP(1), .WIDTH(2), .WATCH(2'b11), .GAP_BITS(2), .STAGES(2)) u_store (
        .clk_i(clk_i), .clear_i(arm_q & ~take_q), .now_i(data0_q), .before_i(data1_q),
        .qualifies_i(1'b0), .active_i(take_q), .is_last_i(is_last), .stores_i(stores),
        .ends_i(stores & ends_i), .store_o(store), .gap_o(gap)
    );

    reg first_q = 1'b1, ended_q = 1'b0, stored_q = 1'b0;
    reg [1:0] value_q = 0;                   // stored last
    reg [2:0] passed_q = 0, expected_q = 0;  // since; in front of the last one
    always @(posedge clk_i) begin
        first_q <= ~take_q;
        ended_q <= take_q & stores & ends_i;
        stored_q <= take_q & stores;
        expected_q <= passed_q;
        if (take_q & stores) value_q <= data2_q;
        passed_q <= ~take_q | stores ? 0 : passed_q + 1'b1;
    end
    wire passes = take_q & ~stores;
    assign ok_o = (~passes | (data2_q == value_q & passed_q < 3 & ~first_q & ~ended_q & ~is_last))
        & (~stored_q | gap == expected_q);
endmodule

`default_nettype wire
