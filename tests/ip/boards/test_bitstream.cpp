// SPDX-License-Identifier: Apache-2.0
#include "board_target.h"

#include "support/files.h"

#include <QtTest>

namespace {

constexpr char kBuild[] = R"(set -e
yosys -q -p "read_verilog $0; script work/attach.ys; synth_ice40 -top counter -json c.json
    select -assert-min 2 t:SB_RAM40_4K"
nextpnr-ice40 -q --hx1k --package tq144 --pcf pins.pcf --pre-pack work/board/tck.py --freq 50 \
    --json c.json --asc c.asc
icepack c.asc c.bin
iceunpack c.bin back.asc
icebox_vlog -s -n counter -p pins.pcf back.asc >back.v
cp $(dirname $(command -v yosys))/../share/yosys/ice40/cells_sim.v .
)";

}

// A design with its analyzer as an iCE40 has it: from the bitstream back to Verilog, in Icarus.
class TestBitstream : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void captures();
};

void TestBitstream::captures()
{
    BoardTarget target;
    QCOMPARE(target.attach(512, {"--for", "ice40"}), QString());
    writeFile(target.path("pins.pcf"),
        "set_io clk 21\nset_io led 99\nset_io tms_pad_i 78\nset_io tdi_pad_i 79\n"
        "set_io tdo_pad_o 80\nset_io tck_pad_i 81\n");
    QCOMPARE(target.run("bash", {"-c", kBuild, BoardTarget::design()}), QString());
    QCOMPARE(target.start("counter", {"-DNO_ICE40_DEFAULT_ASSIGNMENTS", "back.v", "cells_sim.v"}),
        QString());
    for (const int value : {0, 0xa5})
        QCOMPARE(target.capture(value), QString());
}

QTEST_GUILESS_MAIN(TestBitstream)
#include "test_bitstream.moc"
