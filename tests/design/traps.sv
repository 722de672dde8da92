// SPDX-License-Identifier: Apache-2.0
// What makes the names of a design hard: each line of it is a trap.
package states;
    typedef enum logic [1:0] {IDLE, RUN = 2'd2, STOP} state_t;
endpackage

module leaf #(parameter WIDTH = 4) (input clk, input [WIDTH-1:0] d, output reg [WIDTH-1:0] q);
    reg [WIDTH-1:0] \odd.name ; // "a; exec false" and bind in a comment
    always @(posedge clk) begin
        q <= d;
        \odd.name <= ~d;
    end
endmodule

(* keep_hierarchy *)
module middle(input clk, input [7:0] x, output [7:0] y, output neg);
    generate
        for (genvar i = 0; i < 12; i = i + 1) begin : lane
            wire [3:0] inner;
            leaf #(.WIDTH(4)) u(.clk(clk), .d(x[3:0] + i[3:0]), .q(inner));
        end
        if (1) begin : always_there
            reg n;
            always @(negedge clk) n <= x[0];
        end
    endgenerate
    function copy(input bit_i); copy = bit_i; endfunction
    assign neg = copy(always_there.n);
    assign y = {lane[1].inner, lane[0].inner};
    reg [7:0] words [0:15];
    always @(posedge clk) words[x[3:0]] <= x;
    wire [0:3] rev = words[x[7:4]];
    wire signed [5:2] off = x[3:0];
endmodule

module top #(parameter N = 1) (input clk, input clk2, input [7:0] a, output [7:0] b, output z,
    inout pad);
    middle m(.clk(clk), .x(a), .y(b), .neg(z));
    states::state_t state;
    wire [N-1:0] sized;
    assign sized = a;
    always_ff @(posedge clk2)
        if (a == `GO) state <= states::RUN;
        else state <= states::IDLE;
    foreign box(.clk(clk)); hollow shell(.clk(clk));
endmodule

bind leaf observer c();

(* blackbox *) module hollow(input clk); endmodule

`define B_IDLE 8'h2_A
package states;
    localparam [7:0] B_RUN = 8'b101, /* ; B_NO = 1; */ B_X = 8'hx;
endpackage
