// SPDX-License-Identifier: Apache-2.0
// From the memories of memory_libmap to cells. BLOCK_BITS is the device's block size.

module \$__OXA_BSRAM (...);
    parameter PORT_W_WIDTH = 36;
    parameter PORT_R_WIDTH = 36;
    parameter [`BLOCK_BITS-1:0] INIT = {`BLOCK_BITS{1'bx}};
    localparam ADDRESS_BITS = (`BLOCK_BITS == 9216) ? 13 : 14;

    input PORT_W_CLK;
    input PORT_W_WR_EN;
    input [ADDRESS_BITS-1:0] PORT_W_ADDR;
    input [PORT_W_WIDTH-1:0] PORT_W_WR_DATA;
    input PORT_R_CLK;
    input PORT_R_RD_EN;
    input [ADDRESS_BITS-1:0] PORT_R_ADDR;
    output [PORT_R_WIDTH-1:0] PORT_R_RD_DATA;

    wire [13:0] waddr = PORT_W_ADDR;
    wire [13:0] raddr = PORT_R_ADDR;
    wire [35:0] wdata = PORT_W_WR_DATA;
    wire [35:0] rdata;
    assign PORT_R_RD_DATA = rdata[PORT_R_WIDTH-1:0];

    // Undefined contents are the cell's default and omitted in the netlist.
    generate
        if (INIT === {`BLOCK_BITS{1'bx}})
            QX_BSRAM #(
                .BITS(`BLOCK_BITS), .WRITE_WIDTH(PORT_W_WIDTH), .READ_WIDTH(PORT_R_WIDTH)
            ) _TECHMAP_REPLACE_ (
                .WCLK(PORT_W_CLK), .WE(PORT_W_WR_EN), .WADDR(waddr), .WDATA(wdata),
                .RCLK(PORT_R_CLK), .RE(PORT_R_RD_EN), .RADDR(raddr), .RDATA(rdata)
            );
        else
            QX_BSRAM #(
                .BITS(`BLOCK_BITS), .WRITE_WIDTH(PORT_W_WIDTH), .READ_WIDTH(PORT_R_WIDTH),
                .INIT(INIT)
            ) _TECHMAP_REPLACE_ (
                .WCLK(PORT_W_CLK), .WE(PORT_W_WR_EN), .WADDR(waddr), .WDATA(wdata),
                .RCLK(PORT_R_CLK), .RE(PORT_R_RD_EN), .RADDR(raddr), .RDATA(rdata)
            );
    endgenerate
endmodule

module \$__OXA_SSRAM (...);
    parameter [63:0] INIT = {64{1'bx}};

    input PORT_W_CLK;
    input PORT_W_WR_EN;
    input [3:0] PORT_W_ADDR;
    input [3:0] PORT_W_WR_DATA;
    input [3:0] PORT_R_ADDR;
    output [3:0] PORT_R_RD_DATA;

    QX_SSRAM #(.INIT(INIT)) _TECHMAP_REPLACE_ (
        .WCLK(PORT_W_CLK), .WE(PORT_W_WR_EN), .WADDR(PORT_W_ADDR), .WDATA(PORT_W_WR_DATA),
        .RADDR(PORT_R_ADDR), .RDATA(PORT_R_RD_DATA)
    );
endmodule
