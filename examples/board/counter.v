// SPDX-License-Identifier: Apache-2.0
// A first design for a board: two counters, each value of which follows from the one before.
module counter (
    input  wire clk,
    output wire led
);
    reg [7:0] count = 8'd0;
    reg [11:0] noise = 12'd0;
    always @(posedge clk) begin
        count <= count + 1'b1;
        noise <= {noise[10:0], ~(noise[11] ^ noise[5] ^ noise[3] ^ noise[0])};
    end
    assign led = count[7] ^ noise[11];
endmodule
