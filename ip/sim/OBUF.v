`default_nettype none

// Simulation model of the output pad's buffer.
module OBUF (
    input  wire I,
    output wire O
);
    assign O = I;
endmodule

`default_nettype wire
