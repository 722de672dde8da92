#include "oxautils/resource/capture_memory.h"
#include "platform/norvosyn/synthesis_fixture.h"
#include "support/files.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

namespace {

struct Point {
    int width;
    int depth;
};

constexpr int kWidths[] = {1, 2, 4, 8, 9, 16, 18, 19, 32, 36, 37, 72};
constexpr int kDepths[] = {16, 256, 512, 1024, 2048, 4096, 8192};

// Depths that only Lite cores have.
constexpr Point kOddPoints[] = {
    {37, 300 },
    {16, 1100},
    {9,  2000},
    {36, 2000}
};

struct Device {
    const char* name;
    int widest; // data width that is of interest
};

struct BlockSize {
    const char* synthesizedFor; // one of the devices that have it
    QList<Device> devices; // one of each rule
};

const BlockSize kBlockSizes[] = {
    {"QX2A-18",  {{"QX2A-18", 72}, {"QX1N-9C", 2}}},
    {"QX3A-10A", {{"QX3A-10A", 72}}               },
};

constexpr char kMemory[] = R"(
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
)";

QList<Point> points()
{
    QList<Point> all;
    for (const int depth : kDepths) {
        for (const int width : kWidths)
            all.append({width, depth});
    }
    for (const Point& point : kOddPoints)
        all += point;
    return all;
}

QString instanceOf(const Point& point)
{
    return QString("m_%1_%2").arg(point.width).arg(point.depth);
}

/// A design with a memory for every point.
QString design()
{
    QStringList outputs;
    QString instances;
    for (const Point& point : points()) {
        const QString name = instanceOf(point);
        outputs += "output wire p_" + name;
        instances
            += QString("    memory #(%1, %2) %3 (wclk, we, rclk, waddr, raddr, wdata, p_%3);\n")
                   .arg(QString::number(point.width), QString::number(point.depth), name);
    }
    return QString(kMemory)
        + "module qx_oxa(input wire wclk, we, rclk, input wire [13:0] waddr, raddr,\n"
          "    input wire [71:0] wdata,\n    "
        + outputs.join(",\n    ") + ");\n" + instances + "endmodule\n";
}

/// How many blocks each memory of a netlist of the design became, by instance.
QHash<QString, int> mappedBlocks(const QString& netlist)
{
    const QRegularExpression block("QX_BSRAM #\\([^;]*?\\) \\\\?(m_\\d+_\\d+)");
    QHash<QString, int> counts;
    for (auto it = block.globalMatch(netlist); it.hasNext();)
        ++counts[it.next().captured(1)];
    return counts;
}

/// A line for every point at which the rule for `device` says another number than `mapped`.
QString differences(const Device& device, const QHash<QString, int>& mapped)
{
    QString lines;
    for (const Point& point : points()) {
        const int estimate
            = OXA_TOOL::captureMemory(point.width, point.depth, false, device.name).blockSram;
        const int blocks = mapped.value(instanceOf(point));
        if (point.width <= device.widest && estimate != blocks)
            lines += QString("| %1 | %2 | %3 | %4 | %5 |\n")
                         .arg(device.name)
                         .arg(point.depth)
                         .arg(point.width)
                         .arg(estimate)
                         .arg(blocks);
    }
    return lines;
}

}

/// The estimates' rules beside what synthesis makes of the same memories.
class TestBlockSramMapping : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void differencesAreThoseDocumented();
};

void TestBlockSramMapping::differencesAreThoseDocumented()
{
    QString table = "| device | samples | width | estimate | mapped |\n|---|---|---|---|---|\n";
    for (const BlockSize& size : kBlockSizes) {
        SynthesisFixture fixture;
        fixture.addSource("memories.v", design().toUtf8());
        fixture.setDevice("", size.synthesizedFor);
        QVERIFY2(fixture.run() == 0, qPrintable(fixture.messages()));
        const QHash<QString, int> mapped = mappedBlocks(fixture.read("out.v"));
        QCOMPARE(mapped.size(), points().size()); // every memory is in blocks
        for (const Device& device : size.devices)
            table += differences(device, mapped);
    }
    const QString page = QString::fromUtf8(bytesOf(OXA_SOURCE_DIR "/docs/estimates.md"));
    if (page.contains(table))
        return;
    const QString path = QDir::tempPath() + "/estimate-differences.md";
    writeFile(path, table.toUtf8());
    QFAIL(qPrintable("docs/estimates.md does not hold the table in " + path));
}

QTEST_GUILESS_MAIN(TestBlockSramMapping)
#include "test_block_sram_mapping.moc"
