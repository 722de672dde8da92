// SPDX-License-Identifier: Apache-2.0
// A processor that sends text: a small system with two clocks.
//
//   clk:       cpu, memory and the write side of the FIFO
//   uart_clk:  the read side of the FIFO, and the transmitter
//
// rst is 1 for at least four cycles of the slower clock.
`default_nettype none

module soc #(
    parameter PROGRAM = "examples/soc/program.hex",
    parameter CLOCKS_PER_BIT = 8, // cycles of uart_clk
    parameter FIFO_ADDRESS_BITS = 4
) (
    input  wire        clk,
    input  wire        uart_clk,
    input  wire        rst,
    output logic       txd,
    output logic [7:0] leds
);
    logic cpu_rst, uart_rst;
    synchronizer cpu_reset(.clk(clk), .value(rst), .synchronized(cpu_rst));
    synchronizer uart_reset(.clk(uart_clk), .value(rst), .synchronized(uart_rst));

    logic [7:0]  address;
    logic        write;
    logic [15:0] write_data, read_data;
    memory #(.PROGRAM(PROGRAM)) memory(
        .clk(clk),
        .address(address),
        .write(write),
        .write_data(write_data),
        .read_data(read_data));

    logic       send_valid, send_ready;
    logic [7:0] send_data;
    cpu cpu(
        .clk(clk),
        .rst(cpu_rst),
        .address(address),
        .write(write),
        .write_data(write_data),
        .read_data(read_data),
        .send_valid(send_valid),
        .send_data(send_data),
        .send_ready(send_ready),
        .leds(leds));

    logic       empty, take;
    logic [7:0] data;
    fifo #(.ADDRESS_BITS(FIFO_ADDRESS_BITS)) fifo(
        .wr_clk(clk),
        .wr_rst(cpu_rst),
        .wr_valid(send_valid),
        .wr_data(send_data),
        .wr_ready(send_ready),
        .rd_clk(uart_clk),
        .rd_rst(uart_rst),
        .rd_take(take),
        .rd_data(data),
        .rd_empty(empty));

    transmitter #(.CLOCKS_PER_BIT(CLOCKS_PER_BIT)) tx(
        .clk(uart_clk),
        .rst(uart_rst),
        .empty(empty),
        .data(data),
        .take(take),
        .txd(txd));
endmodule

`default_nettype wire
