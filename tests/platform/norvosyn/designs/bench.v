// SPDX-License-Identifier: Apache-2.0
// Drives qx_oxa with 1500 random steps of its clocks and prints what it shows after each.
module bench;
    reg wclk = 0, rclk = 0, reset = 0, we = 0, re = 0;
    reg [10:0] wa = 0, ra = 0;
    reg [31:0] wd = 0;
    wire [109:0] dump;
    integer step, seed;

    qx_oxa dut(wclk, rclk, reset, we, re, wa, ra, wd, dump);

    initial begin
        seed = 7;
        for (step = 0; step < 1500; step = step + 1) begin
            #1 reset = ($random(seed) & 15) == 0;
            we = $random(seed);
            re = $random(seed);
            wd = $random(seed);
            wa = $random(seed) & 11'h41f;
            ra = (step & 63) ? $random(seed) & 11'h41f : $random(seed);
            #1 if ($random(seed) & 1) wclk = ~wclk; else rclk = ~rclk;
            #1 $display("%b", dump);
        end
        $finish;
    end
endmodule
