// SPDX-License-Identifier: Apache-2.0
// From the engine's look-up tables and flip-flops to cells.

module \$lut (A, Y);
    parameter WIDTH = 0;
    parameter LUT = 0;
    input [WIDTH-1:0] A;
    output Y;

    // A table with fewer inputs repeats over the missing inputs.
    localparam [15:0] TABLE = (WIDTH == 1) ? {8{LUT[1:0]}}
        : (WIDTH == 2) ? {4{LUT[3:0]}}
        : (WIDTH == 3) ? {2{LUT[7:0]}}
        : LUT[15:0];
    wire [3:0] in = A;
    QX_LUT4 #(.INIT(TABLE)) _TECHMAP_REPLACE_ (
        .O(Y), .I0(in[0]), .I1(in[1]), .I2(in[2]), .I3(in[3])
    );
    wire _TECHMAP_FAIL_ = WIDTH > 4;
endmodule

(* techmap_celltype = "$_DFFE_[PN]P_" *)
module oxa_dff (D, C, E, Q);
    parameter _TECHMAP_CELLTYPE_ = "";
    parameter _TECHMAP_WIREINIT_Q_ = 1'bx;
    input D, C, E;
    output Q;

    // Position from the right: E's polarity 1, C's 2.
    localparam FALLING = _TECHMAP_CELLTYPE_[2*8 +: 8] == "N";
    QX_DFF #(.INIT(_TECHMAP_WIREINIT_Q_ === 1'b1), .FALLING(FALLING)) _TECHMAP_REPLACE_ (
        .Q(Q), .D(D), .CLK(C), .CE(E)
    );
    wire _TECHMAP_REMOVEINIT_Q_ = 1'b1;
endmodule

(* techmap_celltype = "$_DFFE_[PN]P[01]P_ $_SDFFE_[PN]P[01]P_" *)
module oxa_dff_reset (D, C, R, E, Q);
    parameter _TECHMAP_CELLTYPE_ = "";
    parameter _TECHMAP_WIREINIT_Q_ = 1'bx;
    input D, C, R, E;
    output Q;

    // Position from the right: E's polarity 1, the reset value 2, R's polarity 3, C's 4; then the
    // underscore and the letters of the type.
    localparam FALLING = _TECHMAP_CELLTYPE_[4*8 +: 8] == "N";
    localparam RESET_VALUE = _TECHMAP_CELLTYPE_[2*8 +: 8] == "1";
    localparam SYNCHRONOUS = _TECHMAP_CELLTYPE_[10*8 +: 8] == "S";
    localparam INIT = (_TECHMAP_WIREINIT_Q_ === 1'bx) ? RESET_VALUE : _TECHMAP_WIREINIT_Q_;
    generate
        if (SYNCHRONOUS)
            QX_DFFR #(.INIT(INIT), .RESET_VALUE(RESET_VALUE), .FALLING(FALLING)) _TECHMAP_REPLACE_ (
                .Q(Q), .D(D), .CLK(C), .CE(E), .RST(R)
            );
        else
            QX_DFFC #(.INIT(INIT), .RESET_VALUE(RESET_VALUE), .FALLING(FALLING)) _TECHMAP_REPLACE_ (
                .Q(Q), .D(D), .CLK(C), .CE(E), .RST(R)
            );
    endgenerate
    wire _TECHMAP_REMOVEINIT_Q_ = 1'b1;
endmodule
