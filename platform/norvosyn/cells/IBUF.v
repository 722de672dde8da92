// SPDX-License-Identifier: Apache-2.0
// Input pad buffer: I is the pad, O follows it into the device.
`default_nettype none
module IBUF (
    output wire O,
    input wire I
);
    assign O = I;
endmodule
`default_nettype wire
