// SPDX-License-Identifier: Apache-2.0
// 256 words of 16 bits for program and data: one block RAM of an iCE40.
//
// A word is read in one cycle and valid in the next; a cycle that writes does not read.
`default_nettype none

module memory #(
    parameter PROGRAM = "program.hex"
) (
    input  wire         clk,
    input  wire  [7:0]  address,
    input  wire         write,
    input  wire  [15:0] write_data,
    output logic [15:0] read_data
);
    logic [15:0] words [0:255];

    initial $readmemh(PROGRAM, words);

    always_ff @(posedge clk)
        if (write)
            words[address] <= write_data;
        else
            read_data <= words[address];
endmodule

`default_nettype wire
