#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Prints a design of 100,000 nets: 200 instances of 50 modules, with 499 nets each.
awk 'BEGIN {
    for (m = 0; m < 50; ++m) {
        printf "module block%d(input clk, input [7:0] d, output [7:0] q);\n", m
        for (i = 0; i < 248; ++i) {
            from = i ? sprintf("r%d", i - 1) : "d"
            printf "wire [7:0] w%d = %s + %d;\nreg [7:0] r%d;\n", i, from, m + i, i
            printf "always @(posedge clk) if (w%d[0]) r%d <= w%d ^ %s;\n", i, i, i, from
        }
        print "assign q = r247;\nendmodule"
    }
    print "module top(input clk, input [7:0] d, output [7:0] q);\nwire [7:0] c0 = d;\nassign q = c200;"
    for (i = 0; i < 200; ++i) {
        printf "wire [7:0] c%d;\n", i + 1
        printf "block%d b%d(.clk(clk), .d(c%d), .q(c%d));\n", i % 50, i, i, i + 1
    }
    print "endmodule"
}'
