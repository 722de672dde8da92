// SPDX-License-Identifier: Apache-2.0
#include "oxautils/resource/capture_memory.h"
#include "platform/norvosyn/synthesis_fixture.h"
#include "support/files.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

namespace {

struct Memory {
    int width, depth;

    QString instance() const { return QString("m_%1_%2").arg(width).arg(depth); }
};

// Lite cores alone have such depths as the last two.
constexpr Memory kMemories[] = {
    {1,  8192},
    {2,  8192},
    {8,  2048},
    {9,  2048},
    {9,  4096},
    {36, 256 },
    {36, 4096},
    {37, 256 },
    {72, 256 },
    {72, 8192},
    {37, 300 },
    {16, 1100}
};

constexpr char kDesign[] = R"(
module memory #(parameter WIDTH = 1, DEPTH = 1) (
    input wire wclk, we, rclk,
    input wire [13:0] waddr, raddr,
    input wire [71:0] wdata,
    output wire parity
);
    localparam BITS = $clog2(DEPTH);
    (* ram_style = "block" *) reg [WIDTH-1:0] words[0:DEPTH-1];
    reg [WIDTH-1:0] word;
    always @(posedge wclk) if (we) words[waddr[BITS-1:0]] <= wdata[WIDTH-1:0];
    always @(posedge rclk) word <= words[raddr[BITS-1:0]];
    assign parity = ^word;
endmodule
module qx_oxa(input wire wclk, we, rclk, input wire [13:0] waddr, raddr,
    input wire [71:0] wdata, output wire [%1:0] parity);
)";

/// How many blocks each memory becomes on `device`, by instance; they are in one design.
QHash<QString, int> mappedBlocks(const char* device)
{
    QString design = QString(kDesign).arg(int(std::size(kMemories)) - 1);
    int number = 0;
    for (const Memory& memory : kMemories)
        design
            += QString("memory #(%1, %2) %3 (wclk, we, rclk, waddr, raddr, wdata, parity[%4]);\n")
                   .arg(QString::number(memory.width), QString::number(memory.depth),
                       memory.instance(), QString::number(number++));
    SynthesisFixture fixture;
    fixture.addSource("memories.v", (design + "endmodule\n").toUtf8());
    fixture.setDevice(device);
    if (fixture.run() != 0)
        qWarning().noquote() << fixture.messages();
    const QRegularExpression block("QX_BSRAM #\\([^;]*?\\) \\\\?(m_\\d+_\\d+)");
    QHash<QString, int> counts;
    for (auto it = block.globalMatch(fixture.read("out.v")); it.hasNext();)
        ++counts[it.next().captured(1)];
    return counts;
}

/// A line for every memory of which the rule for `device` says another number than `mapped`.
QString differences(const QString& device, int widest, const QHash<QString, int>& mapped)
{
    QString lines;
    for (const Memory& memory : kMemories) {
        const int estimate
            = OXA_TOOL::captureMemory(memory.width, memory.depth, false, device).blockSram;
        const int blocks = mapped.value(memory.instance());
        if (memory.width <= widest && estimate != blocks)
            lines += QString("| %1 | %2 | %3 | %4 | %5 |\n")
                         .arg(device, QString::number(memory.depth), QString::number(memory.width),
                             QString::number(estimate), QString::number(blocks));
    }
    return lines;
}

}

/// Compares the estimates' rules with synthesis of the same memories.
class TestBlockSramMapping : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void differencesAreThoseDocumented();
};

// One device of each rule.
void TestBlockSramMapping::differencesAreThoseDocumented()
{
    const QHash<QString, int> large = mappedBlocks("QX2A-18");
    const QHash<QString, int> small = mappedBlocks("QX3A-10A");
    QCOMPARE(large.size(), int(std::size(kMemories))); // all are in blocks
    QCOMPARE(small.size(), large.size());
    const QString table
        = "| device | samples | width | estimate | mapped |\n|---|---|---|---|---|\n"
        + differences("QX2A-18", 72, large) + differences("QX1N-9C", 2, large)
        + differences("QX3A-10A", 72, small);
    const QString page = QString::fromUtf8(bytesOf(OXA_SOURCE_DIR "/docs/estimates.md"));
    if (page.contains(table))
        return;
    const QString path = writeFile(QDir::tempPath() + "/estimate-differences.md", table.toUtf8());
    QFAIL(qPrintable("docs/estimates.md does not hold the table in " + path));
}

QTEST_GUILESS_MAIN(TestBlockSramMapping)
#include "test_block_sram_mapping.moc"
