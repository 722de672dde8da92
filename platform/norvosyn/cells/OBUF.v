// SPDX-License-Identifier: Apache-2.0
// Output pad buffer: O is the pad and follows I.
`default_nettype none
module OBUF (
    output wire O,
    input wire I
);
    assign O = I;
endmodule
`default_nettype wire
