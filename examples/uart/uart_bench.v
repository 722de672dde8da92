// SPDX-License-Identifier: Apache-2.0
// Sends a line of text and records the signals: the stimulus of the examples.
//
//   iverilog -o uart_bench uart_bench.v uart_tx.v && vvp -n uart_bench    writes uart.vcd
`timescale 1ns/1ns
`default_nettype none

module uart_bench;
    reg        clk = 0;
    reg        rst = 1;
    reg        start = 0;
    reg  [7:0] data = 0;
    wire       tx;
    wire       busy;

    uart_tx uart_tx(.clk(clk), .rst(rst), .start(start), .data(data), .tx(tx), .busy(busy));

    always #10 clk = !clk;

    task send(input [7:0] character);
        begin
            @(negedge clk);
            while (busy)
                @(negedge clk);
            data = character;
            start = 1;
            @(negedge clk);
            start = 0;
        end
    endtask

    integer i;
    reg [8*13-1:0] text = "Hello, FPGA!\n";

    initial begin
        $dumpfile("uart.vcd");
        $dumpvars(0, uart_bench);
        repeat (3) @(negedge clk);
        rst = 0;
        for (i = 12; i >= 0; i = i - 1)
            send(text[8*i +: 8]);
        @(negedge clk);
        while (busy)
            @(negedge clk);
        repeat (20) @(negedge clk);
        $finish;
    end
endmodule

`default_nettype wire
