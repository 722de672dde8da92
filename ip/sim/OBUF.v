// SPDX-License-Identifier: Apache-2.0
`default_nettype none

// The output pad's buffer: synthesis puts the device's own at a pin.
module OBUF (
    input  wire I,
    output wire O
);
    assign O = I;
endmodule

`default_nettype wire
