`default_nettype none

// The output pad's buffer as a simulator sees it.
module OBUF (
    input  wire I,
    output wire O
);
    assign O = I;
endmodule

`default_nettype wire
