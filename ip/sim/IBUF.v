`default_nettype none

// The input pad's buffer as a simulator sees it.
module IBUF (
    input  wire I,
    output wire O
);
    assign O = I;
endmodule

`default_nettype wire
