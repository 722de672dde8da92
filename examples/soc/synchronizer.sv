// SPDX-License-Identifier: Apache-2.0
// Transfers a value to another clock domain, with two registers for each bit.
//
// The bits of a value may arrive in different cycles, so at most one of several bits may change at
// a time.
`default_nettype none

module synchronizer #(
    parameter WIDTH = 1
) (
    input  wire              clk,
    input  wire  [WIDTH-1:0] value,
    output logic [WIDTH-1:0] synchronized
);
    for (genvar i = 0; i < WIDTH; i = i + 1) begin : bits
        logic first, second;

        always_ff @(posedge clk) begin
            first <= value[i];
            second <= first;
        end
        assign synchronized[i] = second;
    end
endmodule

`default_nettype wire
