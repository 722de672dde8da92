#include "synthesis_fixture.h"

#include <QtTest>

#include <algorithm>
#include <thread>

using namespace NorvoSyn;

namespace {

constexpr char kDesigns[] = OXA_SOURCE_DIR "/tests/platform/norvosyn/designs/";
constexpr char kCells[] = OXA_BINARY_DIR "/share/oxautils/cells";

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

QByteArray memory(int width, int depth, const char* style)
{
    return QString(kMemory).arg(width).arg(depth).arg(style).toUtf8();
}

/// A design that cannot become a netlist.
struct FaultRow {
    const char *what, *source;
    const char* message; ///< one of the messages holds it; "%1" is the source's path
};

constexpr FaultRow kFaults[] = {
    {"syntax",                         "module qx_oxa(input a);\n  wire b = ;\nendmodule\n",                               "%1:2: error: syntax error"                                      },
    {"no top",                         "module other; endmodule\n",                                                        "qx_oxa"                                                         },
    {"unknown module",                 "module qx_oxa(input a);\n  nobody u(a);\nendmodule\n",                             "nobody"                                                         },
    {"absent include file",            "`include \"absent.v\"\n",
     "%1: error: Can't open include file `absent.v'"                                                                                                                                        },
    {"open net",                       "module qx_oxa(output z);\n  wire w;\n  assign z = w;\nendmodule\n",
     "warning: Wire qx_oxa.\\z is used but has no driver"                                                                                                                                   },
    {"two drivers",
     "module d(input a, output z); assign z = !a; endmodule\n"
        "module qx_oxa(input a, b, output z); d u(a, z); d v(b, z); endmodule\n",                                          "warning: multiple conflicting drivers for qx_oxa.\\z: port Y[0]"},
    {"logic loop",                     "module qx_oxa(input a, output z);\n  assign z = !(z & a);\nendmodule\n",
     "warning: found logic loop"                                                                                                                                                            },
    {"latch",                          "module qx_oxa(input a, e, output reg z);\n  always @* if (e) z = a;\nendmodule\n",
     "D latches are not supported"                                                                                                                                                          },
    {"shadow SRAM the device has not",
     "module qx_oxa(input c, a, output reg z);\n"
        "  (* ram_style = \"distributed\" *) reg m[0:15];\n"
        "  always @(posedge c) begin m[{a, a, a, a}] <= a; z <= m[{a, z, a, z}]; end\nendmodule\n",                        "no valid mapping found for memory qx_oxa.m"                     },
};

/// What the module prints at each step, with its source or with its netlist in the bench.
QList<QByteArray> simulated(const SynthesisFixture& fixture, const QStringList& sources)
{
    int status = 0;
    const QString program = fixture.path("bench");
    QByteArray out = runProgram("iverilog",
        QStringList {"-g2005", "-o", program, "-y", kCells, QString(kDesigns) + "bench.v"}
            + sources,
        &status);
    if (status == 0)
        out = runProgram("vvp", {"-n", program}, &status);
    if (status != 0)
        qWarning().noquote() << out;
    return out.split('\n');
}

/// True when `netlist` shows every bit that `source` defines.
bool agrees(const QByteArray& netlist, const QByteArray& source)
{
    bool same = netlist.size() == source.size();
    for (int i = 0; same && i < source.size(); ++i)
        same = source[i] == 'x' || source[i] == netlist[i];
    return same;
}

}

class TestSynthesis : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void memories_data();
    void memories();
    void netlistDoesWhatItsSourceDoes_data();
    void netlistDoesWhatItsSourceDoes();
    void faults_data();
    void faults();
    void oneCompilationUnitInAnyDirectory();
    void padsAndProgress();
    void resources();
    void stopWhileTheEngineWorks();
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
    fixture.addSource("memory.v", memory(row.width, row.depth, row.style));

    const int result = fixture.run();
    QCOMPARE(fixture.messages(), QString());
    QCOMPARE(result, 0);
    QCOMPARE(fixture.cells("QX_BSRAM"), row.blocks);
    QCOMPARE(fixture.cells("QX_SSRAM"), row.shadowBlocks);
}

void TestSynthesis::netlistDoesWhatItsSourceDoes_data()
{
    QTest::addColumn<QString>("device");
    QTest::newRow("18-kbit blocks") << "QX2A-18";
    QTest::newRow("9-kbit blocks") << "QX3A-20A";
}

void TestSynthesis::netlistDoesWhatItsSourceDoes()
{
    QFETCH(QString, device);
    SynthesisFixture fixture;
    fixture.setDevice("", device);
    QFile source(QString(kDesigns) + "qx_oxa.v");
    QVERIFY(source.open(QIODevice::ReadOnly));
    fixture.addSource("qx_oxa.v", source.readAll());
    const int result = fixture.run();
    QCOMPARE(fixture.messages(), QString());
    QCOMPARE(result, 0);

    int status = 0;
    const QByteArray checked = runProgram("yosys",
        {"-Q", "-T", "-p",
            QString(
                "read_verilog -lib %1/*.v; read_verilog %2; hierarchy -check -top qx_oxa; check "
                "-mapped -assert")
                .arg(kCells, fixture.output())},
        &status);
    QVERIFY2(status == 0, checked.right(1000));
    QVERIFY2(!fixture.read("out.v").contains("1'hx"), "no cell has an undefined input");

    const QList<QByteArray> expected = simulated(fixture, {fixture.path("qx_oxa.v")});
    const QList<QByteArray> actual = simulated(fixture, {fixture.output()});
    QCOMPARE(actual.size(), expected.size());
    QVERIFY2(expected.size() > 4000 && !expected[4000].contains('x'), "the bench shows something");
    for (int i = 0; i < expected.size(); ++i)
        QVERIFY2(agrees(actual[i], expected[i]),
            qPrintable(
                QString("step %1\n%2\n%3").arg(i).arg(QString(actual[i]), QString(expected[i]))));
}

void TestSynthesis::faults_data()
{
    QTest::addColumn<int>("index");
    for (size_t i = 0; i < std::size(kFaults); ++i)
        QTest::newRow(kFaults[i].what) << int(i);
}

void TestSynthesis::faults()
{
    QFETCH(int, index);
    SynthesisFixture fixture;
    fixture.setDevice("", "QX1N-4");
    fixture.write("out.v", "old\n");
    fixture.addSource("fault.v", kFaults[index].source);

    QVERIFY(fixture.run() != 0);
    const QString message = QString(kFaults[index].message).replace("%1", fixture.path("fault.v"));
    QVERIFY2(fixture.messages().contains(message), qPrintable(fixture.messages()));
    QVERIFY2(fixture.proxy.messages().size() <= 3, qPrintable(fixture.messages()));
    QCOMPARE(fixture.read("out.v"), QByteArray("old\n"));
}

void TestSynthesis::oneCompilationUnitInAnyDirectory()
{
    SynthesisFixture fixture(QString::fromUtf8("a b; #1 [x] {y} $z \\n * 'ü' $(exit) `id`"));
    fixture.write("first.v", "`define FIRST 1\n");
    fixture.write("installed/first.v", "`error in the second place searched\n");
    fixture.write("nested/beside.v", "`define BESIDE 1\n");
    fixture.addSource("nested/x[1] *?.v", "`include \"first.v\"\n`include \"beside.v\"\n");
    fixture.addSource("top.v",
        "`ifdef FIRST\n`ifdef BESIDE\nmodule qx_oxa(input a, output z); assign z = !a; endmodule\n"
        "`endif\n`endif\n");
    QVERIFY(QDir().mkpath(fixture.path("home")));
    qputenv("HOME", QFile::encodeName(fixture.path("home")));
    const int result = fixture.run();
    QCOMPARE(fixture.messages(), QString());
    QCOMPARE(result, 0);
    QCOMPARE(fixture.cells("QX_LUT4"), 1);
    QVERIFY(
        QDir(fixture.path("home")).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));

    fixture.addSource("bad.v", "module bad;\n?\n");
    QVERIFY(fixture.run() != 0);
    QVERIFY2(fixture.messages().startsWith(fixture.path("bad.v:2: error: ")),
        qPrintable(fixture.messages()));
}

void TestSynthesis::padsAndProgress()
{
    SynthesisFixture fixture;
    fixture.set("options/disable_insert_pad", "0");
    fixture.addSource("pads.v",
        "module qx_oxa(input [2:0] a, input tck_pad, output z, output [1:0] y);\n"
        "  wire tck; IBUF own(.I(tck_pad), .O(tck));\n"
        "  assign z = ^a; assign y = {tck, a[0]};\nendmodule\n");
    QStringList stages;
    QList<int> percents;
    connect(&fixture.proxy, &QxSynthesisSyncProxy::progress, this,
        [&](const QString& stage, int percent) {
            stages << stage;
            percents << percent;
        });
    QVERIFY2(fixture.run() == 0, qPrintable(fixture.messages()));
    QCOMPARE(fixture.cells("IBUF"), 4);
    QCOMPARE(fixture.cells("OBUF"), 3);

    QCOMPARE(percents.first(), 0);
    QCOMPARE(percents.last(), 100);
    QVERIFY(std::is_sorted(percents.cbegin(), percents.cend()));
    QVERIFY(stages.contains("mapping memories"));
}

void TestSynthesis::resources()
{
    SynthesisFixture fixture;
    fixture.setDevice("", "QX1N-1"); // 72 kbit: four blocks
    fixture.addSource("memory.v", memory(45, 2048, "block"));
    QCOMPARE(fixture.run(), 0);

    fixture.write("out.v", "old\n");
    for (const QStringList& settings : {
             QStringList(), QStringList {"X=1", "RESOURCE_CHECK=true"}
    }) {
        fixture.set("iniconfig", settings);
        QVERIFY(fixture.run() != 0);
        QCOMPARE(fixture.messages(),
            QString("RESOURCE_CHECK: the netlist takes 5 block SRAMs, the device has 4"));
        QCOMPARE(fixture.read("out.v"), QByteArray("old\n"));
    }
    fixture.setDevice("", "QX1N-9");
    QCOMPARE(fixture.run(), 0);
    fixture.setDevice("", "QX0-0");
    QVERIFY(fixture.run() != 0);
    QCOMPARE(
        fixture.messages(), QString("RESOURCE_CHECK: the device database has no \"\", \"QX0-0\""));
}

void TestSynthesis::stopWhileTheEngineWorks()
{
    SynthesisFixture fixture;
    fixture.write("out.v", "old\n");
    fixture.addSource("memory.v", memory(64, 2048, "registers")); // minutes of work
    std::thread stopper;
    connect(
        &fixture.proxy, &QxSynthesisSyncProxy::progress, this, [&](const QString&, int percent) {
            if (percent == 35)
                stopper = std::thread([&] { fixture.proxy.tryToStop(); });
        });
    const int result = fixture.run();
    stopper.join();
    QVERIFY(result != 0);
    QCOMPARE(fixture.messages(), QString("the synthesis was stopped"));
    QCOMPARE(fixture.read("out.v"), QByteArray("old\n"));
    QVERIFY(!QFile::exists(fixture.path("oxa_test_synthesis/tmp")));
}

QTEST_GUILESS_MAIN(TestSynthesis)
#include "test_synthesis.moc"
