// SPDX-License-Identifier: Apache-2.0
// Runs the system and prints what it sends.
//
//   iverilog -g2012 -o soc.vvp examples/soc/tb.v examples/soc/*.sv && vvp -n soc.vvp
//
// `vvp -n soc.vvp +vcd` also writes the waveform soc.vcd. The run ends after ROUNDS tables.
`default_nettype none

module tb;
    timeunit 1ns;
    timeprecision 1ns;

    parameter ROUNDS = 1;
    localparam CLOCKS_PER_BIT = 8; // as in soc

    reg        clk = 0;
    reg        uart_clk = 0;
    reg        rst = 1;
    wire       txd;
    wire [7:0] leds;

    soc soc(.clk(clk), .uart_clk(uart_clk), .rst(rst), .txd(txd), .leds(leds));

    // 25 MHz and 7.46 MHz; never a rising edge of both at once
    always #20 clk = !clk;
    always #67 uart_clk = !uart_clk;

    initial begin
        if ($test$plusargs("vcd")) begin
            $dumpfile("soc.vcd");
            $dumpvars(0, tb);
        end
        repeat (4) @(negedge uart_clk);
        rst = 0;
    end

    // The receiving UART: the middle of a bit is half a bit after its start.
    reg [7:0] character;
    integer   i;
    integer   lines = 0;

    initial begin
        @(negedge rst);
        while (lines < 2 * ROUNDS) begin
            @(negedge txd);
            repeat (CLOCKS_PER_BIT / 2) @(negedge uart_clk);
            for (i = 0; i < 8; i = i + 1) begin
                repeat (CLOCKS_PER_BIT) @(negedge uart_clk);
                character[i] = txd;
            end
            repeat (CLOCKS_PER_BIT) @(negedge uart_clk);
            $write("%c", character);
            if (character == "\n")
                lines = lines + 1;
        end
        $finish;
    end
endmodule

`default_nettype wire
