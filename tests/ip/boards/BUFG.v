// SPDX-License-Identifier: Apache-2.0
module BUFG (
    input  wire I,
    output wire O
);
    assign O = I;
endmodule
