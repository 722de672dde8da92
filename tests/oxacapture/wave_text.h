// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_CAPTURE_WAVE_TEXT_H
#define TESTS_CAPTURE_WAVE_TEXT_H

// In a file of its own, for moc cannot read quotes in a raw literal.
// clk rises at 10, 30 and 50; `count` changes with it, `late` after it.
inline constexpr char kHeader[] = R"($timescale 1ns $end
$scope module tb $end
$var wire 1 ! clk $end
$scope module dut $end
$var wire 1 ! clk $end
$var reg 4 " count [3:0] $end
$var wire 1 # bits [0] $end
$var wire 1 $ bits [1] $end
$var real 64 % level $end
$upscope $end
$scope module other $end
$var wire 4 & count [0:3] $end
$var wire 1 ' \late/one  $end
$upscope $end
$upscope $end
$enddefinitions $end
)";

inline constexpr char kChanges[] = R"($dumpvars
0!
b101 "
x#
1$
r1.5 %
b0001 &
z'
$end
#10
1!
b110 "
#11
1'
#20
0!
#30
bx1 "
0#
1!
#40
0!
#50
1!
)";

#endif
