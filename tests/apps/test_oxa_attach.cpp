#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/signals.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr char kPart[] = "QX3A-10ALV-QFN88-C8";
constexpr int kMostWatched = 60; // bits

/// A net as a configuration names it, and as Verilog refers to it below the top.
struct Net {
    QString path, reference;
    int first, last;
};

struct RandomDesign {
    QByteArray verilog;
    QVector<Net> nets;
    int inputs, outputs; // bits
};

constexpr char kVerilog[] = R"(
module leaf #(parameter W = 1, K = 0) (input clk, input [W-1:0] d, output [W-1:0] q);
    reg [W-1:0] r;
    reg [K+2:K] \esc.r[0] ;
    wire [0:W-1] up = r;
    always @(EDGE clk) begin
        r <= d + K;
        \esc.r[0] <= r;
    end
    assign q = r ^ {W{up[0]}};
endmodule
(* keep_hierarchy *)
module mid #(parameter W = 1, N = 1) (input c0, input c1, input [W-1:0] d, output [W-1:0] q);
    genvar i;
    wire [W*(N+1)-1:0] chain;
    assign chain[W-1:0] = d;
    assign q = chain[W*N +: W];
    generate for (i = 0; i < N; i = i + 1) begin : lane
        wire [W-1:0] s = chain[W*i +: W];
        if (i % 2) begin : odd
            leaf #(.W(W), .K(i)) u(.clk(c1), .d(s), .q(chain[W*(i+1) +: W]));
        end else begin : even
            leaf #(.W(W), .K(i)) u(.clk(c0), .d(s), .q(chain[W*(i+1) +: W]));
        end
    end endgenerate
endmodule
module top #(parameter W = 1, N = 1) (input c0, input c1, input [W:1] a, output [0:W-1] y);
    mid #(.W(W), .N(N)) \m.id (.c0(c0), .c1(c1), .d(a), .q(y));
    reg [7:0] words [0:3];
    always @(posedge c0) words[a[1]] <= {8{a[1]}};
    wire word = words[a[1]][3];
endmodule
)";

constexpr char kBench[] = R"(
module bench;
    reg c0 = 0, c1 = 0;
    reg [W:1] a = 0;
    wire [0:W-1] y;
    integer seed = SEED, i;
    MODULE dut(.c0(c0), .c1(c1), .a(a), .y(y) PADS);
    always #5 c0 = !c0;
    always #7 c1 = !c1;
    initial begin
        for (i = 0; i < 300; i = i + 1) begin
            #10.5 a = {7{$random(seed)}};
            #0.1 if (i > 60) $display("%b %b", y, NETS);
        end
        $finish;
    end
endmodule
)";

RandomDesign randomDesign(QRandomGenerator& random, bool small = false)
{
    RandomDesign design;
    const int width = small      ? 3
        : random.bounded(4) == 0 ? random.bounded(150, 201)
                                 : random.bounded(1, 40);
    const int lanes = small ? 2 : random.bounded(1, 13);
    design.verilog = QByteArray(kVerilog)
                         .replace("EDGE", random.bounded(2) ? "posedge" : "negedge")
                         .replace("W = 1, N = 1) (input c0, input c1, input [W:1]",
                             QString("W = %1, N = %2) (input c0, input c1, input [W:1]")
                                 .arg(QString::number(width), QString::number(lanes))
                                 .toUtf8());
    design.inputs = design.outputs = width;
    const QString mid = "top/m.id/";
    const QString reference = "\\m.id .";
    design.nets = {
        {"top/a",       "a",                 width,                   1        },
        {"top/y",       "y",                 0,                       width - 1},
        {"top/word",    "word",              0,                       0        },
        {mid + "chain", reference + "chain", width * (lanes + 1) - 1, 0        }
    };
    for (int i = 0; i < lanes; ++i) {
        const QString lane = QString("lane[%1]").arg(i);
        const QString block = i % 2 ? "odd" : "even";
        const QString path = mid + lane + '/' + block + "/u/";
        const QString below = reference + lane + '.' + block + ".u.";
        design.nets += {mid + lane + "/s", reference + lane + ".s", width - 1, 0};
        design.nets += {path + "r", below + "r", width - 1, 0};
        design.nets += {path + "up", below + "up", 0, width - 1};
        design.nets += {path + "esc.r[0]", below + "\\esc.r[0] ", i + 2, i};
    }
    return design;
}

QString bitOf(const Net& net, int index, const QString& name)
{
    return net.first == net.last && net.last == 0 ? name
                                                  : name + '[' + QString::number(index) + ']';
}

}

class TestOxaAttach : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void randomDesigns();
    void proofs();
    void refusals();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QStringList attachCall(const QStringList& more) const;
    QByteArray simulated(const QStringList& sources, const QString& module, bool pads,
        const RandomDesign& design, const QStringList& nets);
    void writeConfiguration(const QStringList& bits);

    QTemporaryDir m_dir;
};

QStringList TestOxaAttach::attachCall(const QStringList& more) const
{
    return QStringList {"attach", path("c.oxa"), "--part", kPart, "--design", path("d.v"), "--top",
               "top", "--work-dir", path("w")}
    + more;
}

void TestOxaAttach::writeConfiguration(const QStringList& bits)
{
    QList<OXA::SignalItem> data;
    for (const QString& bit : bits)
        data += signalOf(bit);
    const auto core = coreOf(0, data, data.first(), "1", 8, 0);
    core->sampleClock = "top/c0";
    OXA::writeOXAConfigToXml({core.get()}, path("c.oxa"));
}

QByteArray TestOxaAttach::simulated(const QStringList& sources, const QString& module, bool pads,
    const RandomDesign& design, const QStringList& nets)
{
    const QString padText = ", .tms_pad_i(1'b0), .tck_pad_i(1'b0), .tdi_pad_i(1'b0)";
    writeFile(path("bench.v"),
        QString(kBench)
            .replace("SEED", QString::number(design.nets.size()))
            .replace("W:1", QString("%1:1").arg(design.inputs))
            .replace("W-1", QString::number(design.outputs - 1))
            .replace("MODULE", module)
            .replace(" PADS", pads ? padText : "")
            .replace("NETS", "{" + nets.join(", ") + "}")
            .toUtf8());
    QProcess compiler;
    compiler.start("iverilog",
        QStringList {"-g2012", "-s", "bench", "-o", path("bench.vvp"), path("bench.v")} + sources);
    if (!finished(compiler) || compiler.exitCode() != 0)
        return "iverilog: " + compiler.readAllStandardError();
    QProcess run;
    run.start("vvp", {"-n", path("bench.vvp")});
    return finished(run) ? run.readAllStandardOutput() : QByteArray("vvp");
}

// In every form the analyzer's ports are the nets that its configuration names, and the outputs are
// those of the design alone. OXA_RANDOM_DESIGNS: how many designs.
void TestOxaAttach::randomDesigns()
{
    bool given = false;
    const int count = qEnvironmentVariableIntValue("OXA_RANDOM_DESIGNS", &given);
    for (int seed = 1; seed <= (given ? count : 1); ++seed) {
        QRandomGenerator random {quint32(seed)};
        const RandomDesign design = randomDesign(random);
        writeFile(path("d.v"), design.verilog);
        QStringList names;
        QStringList alone;
        while (names.size() < kMostWatched) {
            const Net& net = design.nets.at(random.bounded(design.nets.size()));
            const int index
                = random.bounded(qMin(net.first, net.last), qMax(net.first, net.last) + 1);
            const QString name = bitOf(net, index, net.path);
            if (!names.contains(name)) {
                names += name;
                alone += bitOf(net, index, "dut." + net.reference);
            }
            if (random.bounded(kMostWatched) == 0 && names.size() > 3)
                break;
        }
        writeConfiguration(names);
        const QByteArray expected = simulated({path("d.v")}, "top", false, design, alone);
        QVERIFY2(expected.count('\n') == 239 && !expected.contains('x'), expected.left(2000));

        QStringList inFlat;
        QStringList inWrapper;
        for (const QString& name : names) {
            inFlat += "dut.\\u_oxa." + name + ' ';
            inWrapper += "dut.u_oxa.\\" + name + ' ';
        }
        const QStringList models {OXA_BINARY_DIR "/share/oxautils/sim/QX_JTAG.v",
            OXA_BINARY_DIR "/share/oxautils/sim/IBUF.v",
            OXA_BINARY_DIR "/share/oxautils/sim/OBUF.v"};
        Result result = oxa(attachCall({"--as", "verilog", "--simulation", path("sim.v")}));
        QVERIFY2(result.status == 0, qPrintable(result.err));
        QVERIFY2(result.err.contains("asks to be kept apart"), qPrintable(result.err));
        QCOMPARE(
            simulated(models + QStringList(path("sim.v")), "top", true, design, inFlat), expected);

        result = oxa(attachCall({"--as", "hierarchical", "--models"}));
        QVERIFY2(result.status == 0, qPrintable(result.err));
        writeFile(path("list"), result.out.toUtf8());
        QCOMPARE(simulated({"-c", path("list")}, "top_with_analyzer", true, design, inWrapper),
            expected);

        result = oxa(attachCall({}));
        QVERIFY2(result.status == 0, qPrintable(result.err));
        QProcess yosys;
        yosys.start("yosys",
            {"-q", "-p",
                QString("read_verilog %1; script %2; synth -top top; setundef -init -zero; "
                        "write_verilog -noattr %3")
                    .arg(path("d.v"), result.out.trimmed(), path("y.v"))});
        QVERIFY(finished(yosys));
        QVERIFY2(yosys.exitCode() == 0, yosys.readAllStandardError());
        QVERIFY(bytesOf(path("y.v")).contains("module top(c0, c1, a, y, tms_pad_i"));
    }
}

// A design that differs is refuted: a wrapper or a written file in which someone has changed what
// an output, a register or a memory does.
void TestOxaAttach::proofs()
{
    QRandomGenerator random {5};
    const RandomDesign design = randomDesign(random, true);
    writeFile(path("d.v"), design.verilog);
    writeConfiguration({"top/word", "top/m.id/lane[0]/even/u/up[0]"});
    const struct {
        const char *form, *file, *from, *to, *open;
    } rows[] = {
        {"yosys",   "w/attach.v",   "",              "",                                              ""      },
        {"yosys",   "w/attach.v",   ".\\c1 (\\c1 )", ".\\c1 (\\c0 )",                                 "    c1"},
        {"yosys",   "w/attach.v",   "endmodule",     "assign \\y [0] = \\u_design.word ;\nendmodule", "y"     },
        {"verilog", "w/attached.v", "",              "",                                              ""      },
        {"verilog", "w/attached.v", "assign y = ",   "assign y = ~",                                  "y"     },
    };
    for (const auto& row : rows) {
        if (!*row.from) {
            const Result result = oxa(attachCall({"--as", row.form, "--prove"}));
            QVERIFY2(
                result.status == 0 && result.err.contains("proven in"), qPrintable(result.err));
            continue;
        }
        QByteArray text = bytesOf(path(row.file));
        QVERIFY2(text.contains(row.from), row.from);
        writeFile(path("other.v"), text.replace(row.from, row.to));
        const Result result = oxa(attachCall({"--prove", path("other.v")}));
        QCOMPARE(result.status, 1);
        QVERIFY2(result.err.contains(row.open), qPrintable(result.err));
    }
}

void TestOxaAttach::refusals()
{
    writeFile(path("d.v"),
        "module top(input c0, input tck_pad_i, output [3:0] q);\n"
        "reg [3:0] m [0:3]; reg [1:0] at; assign q = m[at];\n"
        "always @(posedge c0) begin m[at] <= 1; at <= at + 1; end endmodule\n");
    const struct {
        const char *name, *error;
    } rows[] = {
        {"top/c0", "the top has a port tck_pad_i already"                      },
        {"top/c1", "top/c1: is not in the design; the nearest names are top/c0"},
        {"top/m",  "top/m: is a memory"                                        },
    };
    for (const auto& row : rows) {
        writeConfiguration({row.name});
        const Result result = oxa(attachCall({}));
        QCOMPARE(result.status, 1);
        QVERIFY2(result.err.contains(row.error), qPrintable(result.err));
    }
    writeFile(path("d.v"), "module top(input c0); endmodule\n");
    writeConfiguration({"top/c0"});
    QStringList call = attachCall({});
    call.replaceInStrings(path("w"), path("w; touch owned"));
    const Result result = oxa(call);
    QCOMPARE(result.status, 1);
    QVERIFY2(result.err.contains("cannot stand in a script of Yosys"), qPrintable(result.err));
}

QTEST_GUILESS_MAIN(TestOxaAttach)
#include "test_oxa_attach.moc"
