#include "synthesis_fixture.h"

#include <norvosyn/request_keys.h>

#include <QtTest>

using namespace NorvoSyn;

namespace {

/// A memory written with one clock and read with another, as a capture buffer is.
constexpr char kMemory[] = R"(module qx_oxa #(
    parameter WIDTH = %1, parameter DEPTH = %2, parameter BITS = $clog2(DEPTH)
) (
    input wclk, rclk, we, re, input [BITS-1:0] wa, ra,
    input [WIDTH-1:0] wd, output reg [WIDTH-1:0] rd
);
    (* ram_style = "%3" *) reg [WIDTH-1:0] memory [0:DEPTH-1];
    always @(posedge wclk) if (we) memory[wa] <= wd;
    always @(posedge rclk) if (re) rd <= memory[ra];
endmodule
)";

struct MemoryRow {
    const char *what, *device, *style;
    int width, depth, blocks, shadowBlocks;
};

constexpr MemoryRow kMemories[] = {
    {"16 kbit at 8",          "QX2A-18",  "block",       8,  2048,  1, 0},
    {"18 kbit at 9",          "QX2A-18",  "block",       9,  2048,  1, 0},
    {"no ninth bits at 1",    "QX2A-18",  "block",       1,  16384, 1, 0},
    {"36 bits of 512",        "QX2A-18",  "block",       36, 512,   1, 0},
    {"two blocks wide",       "QX2A-18",  "block",       40, 128,   2, 0},
    {"two blocks deep",       "QX2A-18",  "block",       8,  4096,  2, 0},
    {"small blocks",          "QX3A-20A", "block",       9,  2048,  2, 0},
    {"one small block",       "QX3A-20A", "block",       36, 256,   1, 0},
    {"shadow SRAM",           "QX2A-18",  "distributed", 7,  32,    0, 4},
    {"registers",             "QX2A-18",  "registers",   4,  8,     0, 0},
    {"a device nobody knows", "QX0-0",    "block",       9,  2048,  1, 0},
};

}

class TestSynthesis : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void memories_data();
    void memories();
};

void TestSynthesis::memories_data()
{
    QTest::addColumn<int>("index");
    for (size_t i = 0; i < std::size(kMemories); ++i)
        QTest::newRow(kMemories[i].what) << int(i);
}

void TestSynthesis::memories()
{
    QFETCH(int, index);
    const MemoryRow& row = kMemories[index];
    SynthesisFixture fixture;
    fixture.setDevice("", row.device);
    fixture.addSource(
        "memory.v", QString(kMemory).arg(row.width).arg(row.depth).arg(row.style).toUtf8());

    QCOMPARE(fixture.run(), 0);
    QCOMPARE(fixture.messages(), QString());
    QCOMPARE(fixture.cells("QX_BSRAM"), row.blocks);
    QCOMPARE(fixture.cells("QX_SSRAM"), row.shadowBlocks);
}

QTEST_GUILESS_MAIN(TestSynthesis)
#include "test_synthesis.moc"
