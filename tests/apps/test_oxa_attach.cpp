// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/live_target.h"
#include "support/oxa_program.h"
#include "support/signals.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>

namespace {

constexpr char kPart[] = "QX3A-10ALV-QFN88-C8";
constexpr int kMostWatched = 24; // bits
constexpr int kSamples = 8; // of a capture
constexpr int kSeed = 4; // of a small design
constexpr int kEdges = 250; // at which nets are compared

/// A net as a configuration names it, and as Verilog refers to it below the top.
struct Net {
    QString path, reference;
    int first, last;
};

struct RandomDesign {
    QByteArray verilog;
    QVector<Net> nets;
    int inputs, outputs; // bits
    int bits; // of all stages
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
    wire \m.id.chain = !a[1];
endmodule
)";

// The design with its analyzer and the design alone. No clock's edges meet those of the other.
constexpr char kBench[] = R"(
module bench;
    reg c0 = 0, c1 = 0;
    reg [W:1] a = 0;
    wire [0:W-1] y, z;
    integer seed = SEED, file;
    reg tck = 0, tms = 1, tdi = 0, none = 0;
    wire tdo, trigger;
    MODULE dut(.c0(c0), .c1(c1), .a(a), .y(y), .tms_pad_i(tms), .tck_pad_i(tck), .tdi_pad_i(tdi),
        .tdo_pad_o(tdo), .trigger0_o(trigger));
    top alone(.c0(c0), .c1(c1), .a(a), .y(z));
    always #4 c0 = !c0;
    initial #1 forever #6 c1 = !c1;
    always @(negedge c0) a <= {$random(seed), $random(seed), $random(seed), $random(seed),
        $random(seed), $random(seed), $random(seed)};
    RUN
endmodule
)";

constexpr char kPrint[] = R"(
    always @(posedge c0) if ($time > 500) $display("%b %b",
        {^trigger === 1'bx, y, PORTS}, {1'b0, z, NETS});
    initial #2502 $finish;
)";

// Until it is killed; each line of the file is written at once.
constexpr char kServe[] = R"(
    initial begin
        file = $fopen("FILE");
        $oxa_target(tck, tms, tdi, tdo, none, none);
    end
    always @(posedge c0) begin
        $fdisplay(file, "%b", NETS);
        $fflush(file);
    end
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
    design.bits = width * (lanes + 1);
    const QString mid = "top/m.id/";
    const QString reference = "\\m.id .";
    design.nets = {
        {"top/a",          "a",                 width,           1        },
        {"top/y",          "y",                 0,               width - 1},
        {"top/m.id.chain", "\\m.id.chain ",     0,               0        },
        {"top/word",       "word",              0,               0        },
        {mid + "chain",    reference + "chain", design.bits - 1, 0        }
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

/// A bit of a net, by its names.
struct WatchedBit {
    Net net;
    int index;

    QString name() const { return of(net.path); }
    QString inDesign() const { return of("alone." + net.reference); }

private:
    QString of(const QString& text) const
    {
        const bool isBit = net.first == net.last && net.last == 0;
        return isBit ? text : text + '[' + QString::number(index) + ']';
    }
};

/// Different ones, at most `kMostWatched`.
QVector<WatchedBit> randomBits(const RandomDesign& design, QRandomGenerator& random)
{
    QVector<WatchedBit> bits;
    QSet<QString> names;
    const int count = random.bounded(4, kMostWatched + 1);
    for (int tries = 0; tries < 20 * count && bits.size() < count; ++tries) {
        const Net& net = design.nets.at(random.bounded(design.nets.size()));
        const auto [low, high] = std::minmax(net.first, net.last);
        const WatchedBit bit {net, random.bounded(low, high + 1)};
        if (!names.contains(bit.name()))
            bits += bit;
        names += bit.name();
    }
    return bits;
}

QStringList names(const QVector<WatchedBit>& bits)
{
    QStringList texts;
    for (const WatchedBit& bit : bits)
        texts += bit.name();
    return texts;
}

}

class TestOxaAttach : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void randomDesigns_data();
    void randomDesigns();
    void proofs();
    void missingModules();
    void refusals();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QStringList attachCall(const QStringList& more) const;
    void attach(const QString& form, const RandomDesign& design);
    void compile(const QString& form, const RandomDesign& design, const QVector<WatchedBit>& bits,
        const QString& run);
    void compareNets();
    void compareCapture();
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
    const auto core = coreOf(0, data, data.first(), "1", kSamples, 0);
    core->storageDepth = kSamples;
    core->sampleClock = "top/c0";
    core->events.triggerOut = true;
    OXA::writeOXAConfigToXml({core.get()}, path("c.oxa"));
}

// Makes attached.v of the design and its analyzer, or a list of sources.
void TestOxaAttach::attach(const QString& form, const RandomDesign& design)
{
    const QStringList more = form == "verilog" ? QStringList {"--simulation", path("attached.v")}
        : form == "hierarchical"               ? QStringList {"--models"}
                                               : QStringList();
    const Result result = oxa(attachCall(QStringList {"--as", form} + more));
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QCOMPARE(result.err.contains("has keep_hierarchy"), form != "hierarchical");
    writeFile(path("list"), result.out.toUtf8());
    if (form == "yosys") {
        // Icarus would take minutes for the gates of a large design.
        const QString flow = design.bits < 150 ? "synth" : "prep";
        QProcess yosys;
        yosys.start("yosys",
            {"-q", "-p",
                QString("read_verilog %1; script %2; %3 -top top; setundef -init -zero; "
                        "write_verilog -noattr %4")
                    .arg(path("d.v"), result.out.trimmed(), flow, path("attached.v"))});
        QVERIFY(finished(yosys));
        QVERIFY2(yosys.exitCode() == 0, yosys.readAllStandardError());
    }
    if (form != "hierarchical")
        writeFile(path("attached.v"),
            bytesOf(path("attached.v")).replace("module top(", "module attached("));
}

void TestOxaAttach::compile(const QString& form, const RandomDesign& design,
    const QVector<WatchedBit>& bits, const QString& run)
{
    const QString models = OXA_BINARY_DIR "/share/oxautils/sim/";
    const bool byPath = form == "hierarchical";
    QStringList nets;
    QStringList ports; // of the analyzer; synthesis leaves none
    for (const WatchedBit& bit : bits) {
        nets += bit.inDesign();
        ports += form == "yosys" ? bit.inDesign()
            : byPath             ? "dut.u_oxa.\\" + bit.name() + ' '
                                 : "dut.\\u_oxa." + bit.name() + ' ';
    }
    writeFile(path("bench.v"),
        QString(kBench)
            .replace("RUN", run)
            .replace("SEED", QString::number(design.nets.size()))
            .replace("W:1", QString("%1:1").arg(design.inputs))
            .replace("W-1", QString::number(design.outputs - 1))
            .replace("MODULE", byPath ? "top_with_analyzer" : "attached")
            .replace("FILE", path("nets"))
            .replace("PORTS", ports.join(", "))
            .replace("NETS", nets.join(", "))
            .toUtf8());
    const QStringList sources = byPath ? QStringList {"-c", path("list")}
                                       : QStringList {models + "QX_JTAG.v", models + "IBUF.v",
                                           models + "OBUF.v", path("d.v"), path("attached.v")};
    QProcess compiler;
    compiler.start("iverilog",
        QStringList {"-g2012", "-s", "bench", "-o", path("bench.vvp"), path("bench.v")} + sources);
    QVERIFY(finished(compiler));
    QVERIFY2(compiler.exitCode() == 0, compiler.readAllStandardError());
}

// Outputs, and the analyzer's ports, are at each clock edge those of the design alone.
void TestOxaAttach::compareNets()
{
    QProcess run;
    run.start("vvp", {"-n", path("bench.vvp")});
    QVERIFY(finished(run));
    const QList<QByteArray> lines = run.readAllStandardOutput().trimmed().split('\n');
    QCOMPARE(lines.size(), kEdges);
    for (const QByteArray& line : lines) {
        QVERIFY2(!line.contains('x'), line);
        QCOMPARE(line.split(' ').first(), line.split(' ').last());
    }
}

// A capture shows what the nets of the design alone were at consecutive edges.
void TestOxaAttach::compareCapture()
{
    LiveTarget live;
    QVERIFY2(live.startSimulation(path("bench.vvp")), live.target.said() + live.openocd.said());
    const Result result = oxa({"capture", path("c.oxa"), "--openocd", live.address(), "--immediate",
        "--bits", "-o", path("captured.csv")});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    live.target.end();
    QByteArray samples;
    const QList<QByteArray> rows = bytesOf(path("captured.csv")).trimmed().split('\n').mid(1);
    for (const QByteArray& row : rows)
        samples += row.split(',').mid(4).join() + '\n';
    QVERIFY2(rows.size() == kSamples && bytesOf(path("nets")).contains('\n' + samples), samples);
}

// A row is a design. OXA_RANDOM_DESIGNS: how many, "200", or which, "31-67".
void TestOxaAttach::randomDesigns_data()
{
    QTest::addColumn<int>("seed");
    const QString one = QString::number(kSeed) + '-' + QString::number(kSeed);
    const QString given = qEnvironmentVariable("OXA_RANDOM_DESIGNS", one);
    const int first = given.contains('-') ? given.section('-', 0, 0).toInt() : 1;
    for (int seed = first; seed <= given.section('-', -1).toInt(); ++seed)
        QTest::addRow("design %d", seed) << seed;
}

// A design in every form, watched by random bits.
void TestOxaAttach::randomDesigns()
{
    static const QStringList forms {"verilog", "yosys", "hierarchical"};
    QFETCH(int, seed);
    QRandomGenerator random {quint32(seed)};
    const RandomDesign design = randomDesign(random);
    writeFile(path("d.v"), design.verilog);
    const QVector<WatchedBit> bits = randomBits(design, random);
    writeConfiguration(names(bits));
    for (int i = 0; i < forms.size(); ++i) {
        const QString& form = forms.at(i);
        QVector<std::function<void()>> steps {[&] { attach(form, design); },
            [&] { compile(form, design, bits, kPrint); }, [&] { compareNets(); }};
        if (i == seed % forms.size())
            steps << [&] { compile(form, design, bits, kServe); } << [&] { compareCapture(); };
        for (const auto& step : steps) { // each needs the files of those before
            step();
            QVERIFY2(!QTest::currentTestFailed(), qPrintable(form));
        }
    }
}

// A design that differs is refuted: a wrapper or a written file in which someone has changed what
// an output, a register or a memory does.
void TestOxaAttach::proofs()
{
    QRandomGenerator random {5};
    const RandomDesign design = randomDesign(random, true);
    writeFile(path("d.v"), design.verilog);
    writeConfiguration({"top/word", "top/m.id.chain", "top/m.id/lane[0]/even/u/up[0]"});
    const struct {
        const char *form, *file, *from, *to, *open;
    } rows[] = {
        {"yosys",   "w/attach.v",   "",              "",                                               ""      },
        {"yosys",   "w/attach.v",   ".\\c1 (\\c1 )", ".\\c1 (\\c0 )",                                  "    c1"},
        {"yosys",   "w/attach.v",   ".\\a (\\a )",   ".\\a ({\\a [2], \\a [3], \\a [1]})",             "    a" },
        {"yosys",   "w/attach.v",   "endmodule",     "assign \\y [0] = \\u_design.word ;\nendmodule",  "y"     },
        {"yosys",   "w/attach.v",   "endmodule",     "assign \\u_design.word = tdo_pad_o;\nendmodule",
         ", which has several drivers"                                                                         },
        {"verilog", "w/attached.v", "",              "",                                               ""      },
        {"verilog", "w/attached.v", "assign y = ",   "assign y = ~",                                   "y"     },
        {"verilog", "w/attached.v", "assign y = ",
         "reg [0:2] l; wire [0:2] t; always @(posedge c0) l <= t; assign y = l; assign t = ",          "y"     },
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

// A module without content stays an instance in the written file, as it was.
void TestOxaAttach::missingModules()
{
    writeFile(path("d.v"),
        "module top(input c0, output [1:0] q);\n"
        "other #(.W(2), .S(\"a\")) u(c0, q); endmodule\n");
    writeFile(path("other.v"),
        "module other #(parameter W = 1, S = \"\") (input c, output [W-1:0] q);\n"
        "initial #1 $display(\"%s %0d\", S, W); endmodule\n");
    writeConfiguration({"top/q[1]"});
    const Result result = oxa(attachCall({"--as", "verilog", "--simulation", path("sim.v")}));
    QVERIFY2(result.err.contains(": IBUF, OBUF, QX_JTAG, other\n"), qPrintable(result.err));
    QVERIFY(bytesOf(path("sim.v")).left(200).contains("IBUF, OBUF, QX_JTAG, other\n"));
    const Result plain = oxa(attachCall({"--as", "verilog", "--no-pads"}));
    QVERIFY2(plain.err.contains(": QX_JTAG, other\n"), qPrintable(plain.err));
    QProcess run;
    run.start("sh",
        {"-c",
            "iverilog -y $1/share/oxautils/sim -s top -o $0/t $0/sim.v $0/other.v && vvp -n $0/t",
            path("."), OXA_BINARY_DIR});
    QVERIFY(finished(run));
    QCOMPARE(run.readAllStandardOutput(), QByteArray("a 2\n"));
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
    writeFile(path("d.v"),
        "module top(input c0); generate if (1) begin wire w = c0; end endgenerate endmodule\n");
    writeConfiguration({"top/genblk1/w"});
    const struct {
        const char *workDir, *more, *error; // no error: it is attached
    } calls[] = {
        {"w; touch owned",           "--as yosys",                "cannot be in a script of Yosys"    },
        {"w\"",                      "--as verilog",              "Yosys cannot read a file with"     },
        {"w",                        "-I a\"b",                   "Yosys cannot read a file with"     },
        {"w",                        "-P a=1;initial",            "Can't decode"                      },
        {"w",                        "--as hierarchical --prove", "does not follow references by path"},
        {"x\n!touch owned\n/../new", "--as yosys",                ""                                  },
    };
    QVERIFY(QDir(path(".")).mkpath("x\n!touch owned\n"));
    for (const auto& row : calls) {
        QStringList call = attachCall(QString(row.more).split(' '));
        call.replaceInStrings(path("w"), path(row.workDir));
        const Result result = oxa(call);
        QVERIFY2((result.status != 0) == (*row.error != 0), qPrintable(result.err));
        QVERIFY2(result.err.contains(row.error), qPrintable(result.err));
    }
    const Result listed = oxa(attachCall({"--as", "hierarchical", "-D", "A=1+2"}));
    QVERIFY2(listed.err.contains("cannot read this list"), qPrintable(listed.err));
    QVERIFY2(listed.err.contains("top/genblk1/w is in a generate block"), qPrintable(listed.err));
    QVERIFY(!bytesOf(path("new/attach.ys")).contains("\n!"));
    QVERIFY(bytesOf(path("new/attach.ys")).contains("\nflatten\n"));
}

QTEST_GUILESS_MAIN(TestOxaAttach)
#include "test_oxa_attach.moc"
