`default_nettype none

// Simulation model of the input pad's buffer.
module IBUF (
    input  wire I,
    output wire O
);
    assign O = I;
endmodule

`default_nettype wire
