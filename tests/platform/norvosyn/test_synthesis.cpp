// SPDX-License-Identifier: Apache-2.0
#include "support/files.h"
#include "support/patience.h"
#include "support/rows.h"
#include "synthesis_fixture.h"

#include <QtTest>

using namespace NorvoSyn;

namespace {

constexpr char kDesigns[] = OXA_SOURCE_DIR "/tests/platform/norvosyn/designs/";
constexpr char kCells[] = OXA_BINARY_DIR "/share/oxautils/cells";

/// The design, with memories of each kind, on a device.
struct DesignRow {
    const char *what, *device;
    int blocks, shadowBlocks;
};

constexpr DesignRow kDesignRows[] = {
    {"18-kbit blocks", "QX2A-18",  6, 4},
    {"9-kbit blocks",  "QX3A-20A", 9, 4},
};

/// A design that cannot become a netlist.
struct FaultRow {
    const char* source; ///< goes on behind "module qx_oxa(" and ends before "endmodule"
    const char* message; ///< one of the messages holds it; "%1" is the source's path
};

constexpr FaultRow kFaults[] = {
    {"input a);\n wire b = ;",                                                         "%1:2: error: syntax error"                             },
    {"input a); nobody u(a);",                                                         "nobody"                                                },
    {");\n`include \"absent.v\"\n",                                                    "%1: error: Can't open include file `absent.v'"         },
    {"output z); wire w; assign z = w;",                                               "Wire qx_oxa.\\z is used but has no driver"             },
    {"input a, b, output z); d u(a, z); d v(b, z); endmodule\n"
     "module d(input a, output z); assign z = !a;",                               "multiple conflicting drivers for qx_oxa.\\z: port Y[0]"},
    {"input a, output z); assign z = !(z & a);",                                       "warning: found logic loop"                             },
    {"input a, e, output reg z); always @* if (e) z = a;",                             "D latches are not supported"                           },
    {"input c, a, output reg z); (* ram_style = \"distributed\" *) reg m[0:15];\n"
     "always @(posedge c) begin m[{a, a, a, a}] <= a; z <= m[{a, z, a, z}]; end", "no valid mapping found for memory qx_oxa.m"            },
};

/// What the module prints at each step, with its source or with its netlist in the bench.
QList<QByteArray> simulated(const SynthesisFixture& fixture, const QString& source)
{
    const QString program = fixture.path("bench");
    QProcess process;
    process.start(
        "iverilog", {"-g2005", "-o", program, "-y", kCells, QString(kDesigns) + "bench.v", source});
    if (!finished(process) || process.exitCode() != 0)
        qWarning().noquote() << process.readAllStandardError();
    process.start("vvp", {"-n", program});
    finished(process);
    return process.readAllStandardOutput().split('\n');
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
    void netlistDoesWhatItsSourceDoes_data();
    void netlistDoesWhatItsSourceDoes();
    void faults();
    void oneCompilationUnitInAnyDirectory();
    void padsAndProgress();
    void resources();
};

void TestSynthesis::netlistDoesWhatItsSourceDoes_data() { addRows(kDesignRows); }

void TestSynthesis::netlistDoesWhatItsSourceDoes()
{
    const DesignRow& row = rowOf(kDesignRows);
    SynthesisFixture fixture;
    fixture.setDevice(row.device);
    fixture.addSource("qx_oxa.v", bytesOf(QString(kDesigns) + "qx_oxa.v"));
    const int result = fixture.run();
    QCOMPARE(fixture.messages(), QString());
    QCOMPARE(result, 0);
    QCOMPARE(fixture.cells("QX_BSRAM"), row.blocks);
    QCOMPARE(fixture.cells("QX_SSRAM"), row.shadowBlocks);
    QVERIFY2(!fixture.read("out.v").contains("1'hx"), "no cell has an undefined input");

    const QList<QByteArray> expected = simulated(fixture, fixture.path("qx_oxa.v"));
    const QList<QByteArray> actual = simulated(fixture, fixture.output());
    QCOMPARE(actual.size(), expected.size());
    QVERIFY2(expected.size() > 1500 && !expected[1500].contains('x'), "the bench shows something");
    for (int i = 0; i < expected.size(); ++i)
        QVERIFY2(agrees(actual[i], expected[i]),
            qPrintable(
                QString("step %1\n%2\n%3").arg(i).arg(QString(actual[i]), QString(expected[i]))));
}

void TestSynthesis::faults()
{
    for (const FaultRow& row : kFaults) {
        SynthesisFixture fixture;
        fixture.setDevice("QX1N-4");
        fixture.write("out.v", "old\n");
        fixture.addSource("fault.v", QByteArray("module qx_oxa(") + row.source + "\nendmodule\n");

        QVERIFY2(fixture.run() != 0, row.source);
        const QString message = QString(row.message).replace("%1", fixture.path("fault.v"));
        QVERIFY2(fixture.messages().contains(message), qPrintable(fixture.messages()));
        QVERIFY2(fixture.proxy.messages().size() <= 3, qPrintable(fixture.messages()));
        QCOMPARE(fixture.read("out.v"), QByteArray("old\n"));
    }
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
    fixture.setDevice("QX0-0"); // which nobody knows
    fixture.set("options/disable_insert_pad", "0");
    fixture.addSource("pads.v",
        "module qx_oxa(input [2:0] a, input tck_pad, output z, output [1:0] y);\n"
        "  wire tck; IBUF own(.I(tck_pad), .O(tck));\n"
        "  assign z = ^a; assign y = {tck, a[0]};\nendmodule\n");
    QStringList stages;
    connect(&fixture.proxy, &QxSynthesisSyncProxy::progress, this,
        [&stages](const QString& stage, int) { stages << stage; });
    QVERIFY2(fixture.run() == 0, qPrintable(fixture.messages()));
    QCOMPARE(fixture.cells("IBUF"), 4);
    QCOMPARE(fixture.cells("OBUF"), 3);
    QVERIFY(stages.contains("mapping memories"));
}

void TestSynthesis::resources()
{
    SynthesisFixture fixture;
    fixture.addSource("memory.v",
        "module qx_oxa(input wclk, rclk, we, input [10:0] wa, ra, input [44:0] wd,\n"
        "    output reg [44:0] rd);\n"
        "  (* ram_style = \"block\" *) reg [44:0] memory [0:2047];\n"
        "  always @(posedge wclk) if (we) memory[wa] <= wd;\n"
        "  always @(posedge rclk) rd <= memory[ra];\nendmodule\n");
    fixture.write("out.v", "old\n");
    fixture.set("iniconfig", QStringList {"X=1", "RESOURCE_CHECK=true"});
    fixture.setDevice("QX1N-1"); // 72 kbit: four blocks
    QVERIFY(fixture.run() != 0);
    QCOMPARE(fixture.messages(),
        QString("RESOURCE_CHECK: the netlist takes 5 block SRAMs, the device has 4"));
    QCOMPARE(fixture.read("out.v"), QByteArray("old\n"));
    fixture.setDevice("QX1N-9");
    QCOMPARE(fixture.run(), 0);

    fixture.set("iniconfig", QStringList()); // it is checked unless that is switched off
    fixture.setDevice("QX0-0");
    QVERIFY(fixture.run() != 0);
    QCOMPARE(
        fixture.messages(), QString("RESOURCE_CHECK: the device database has no \"\", \"QX0-0\""));
}

QTEST_GUILESS_MAIN(TestSynthesis)
#include "test_synthesis.moc"
