// SPDX-License-Identifier: Apache-2.0
#include "capture_fixture.h"

#include "oxautils/config/lite_config.h"
#include "oxautils/model/limits.h"
#include "support/files.h"
#include "support/live_target.h"
#include "support/oxa_program.h"
#include "support/rows.h"
#include "support/terminal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

// Options of one run, and what they change: a setting of M0, of M1's counter, and of the windows.
struct Change {
    const char *what, *options, *value;
    int counter, samples, windows, position;
};

// With _ for a space.
constexpr Change kChanges[] = {
    {"a trigger that is early", "--unit 0.M0=0b101 --unit 0.M1=1_time",         "0000000101", 1,  50,  2, 20},
    {"a counter",               "--unit 0.M1=1X,_16_times",                     "0010000000", 16, 50,  2, 20},
    {"the last position",       "--position 0=49",                              "0010000000", 3,  50,  2, 49},
    {"one window of all",       "--samples 0=256 --windows 0=1 --position 0=0", "0010000000", 3,  256, 1,
     0                                                                                                      },
};

constexpr Call kUnusable[] = {
    {"--unit M0=101",                              2, "there are 2 cores; write the core first, 0 to 1"           },
    {"--unit 1.M0=Z000000000",                     2, "--unit 1.M0=Z000000000: character 1, "                     },
    {"--unit 0.M0=T0>5",                           2, "M0 does not have the function \">\", only \"==\", \"!=\""  },
    {"--unit 0.M1=17_times",                       2, "M1 does not count to 17, only to 16"                       },
    {"--unit 0.M0=2_times",                        2, "M0 does not count to 2, it has no counter"                 },
    {"--unit 0.M1=T0==5",                          2, "M1 at T1 instead of M1 at T0"                              },
    {"--expression 0.0=M1",                        2, "the static expression 0 \"M0\" instead of \"M1\""          },
    {"--core 5",                                   2, "no such core, only 4, 9"                                   },
    {"--samples 0=9 --position 0=0 --windows 0=6", 2, "built for 2 windows at most"                               },
    {"--samples 0=200",                            2, "2 windows of 200 samples do not fit into its memory of 256"},
    {"--position 0=50",                            2, "a window of 50 samples has no trigger position 50"         },
    {"--timeout nan",                              2, "\"nan\" is not a number from 0.001"                        },
    {"--clock 1e-300",                             2, "is not a frequency from 1 to"                              },
    {"--clock 4=1e6",                              2, "core 9: its clock is not known"                            },
    {"--power-up --windows 0=1",                   2, "settings cannot change in a run that has started"          },
    {"--power-up",                                 2, "core 9 does not capture from power-up on"                  },
    {"--tap cpu.tap",                              1, "no device \"cpu.tap\", only fpga.tap"                      },
    {"--repeat 2 -o out%dof%d.vcd",                2, "needs one place for the number"                            },
    {"-o out.txt",                                 2, "out.txt: the suffix has to be"                             },
    {"-o /no/such/out.vcd",                        2, "out.vcd: cannot be written: there is no directory /no/such"},
};

// A counter, and a package at which Icarus crashes.
constexpr char kCounter[] = R"(
module top(input clk, output [9:0] y);
    reg [2:11] n = 0;
    always @(posedge clk) n <= n == 279 ? 0 : n + 1;
    assign y = n;
endmodule
)";
constexpr char kPackage[] = "package p; typedef enum logic {A, B} t; endpackage\n"
                            "module unused(output p::t y); p::t x; assign y = x; endmodule\n";

struct Bench {
    const char *what, *package, *dut, *error;
};

constexpr Bench kBenches[] = {
    {"from Yosys",    kPackage, "top dut(clk, y);",      ""                              },
    {"no instance",   kPackage, "",                      "no instance of the top \"top\""},
    {"two instances", "",       "top dut[1:0](clk, y);", ": bench.dut[0], bench.dut[1];" },
    {"no Verilog",    "",       "top dut(clk, y;",       "bench.v:2: "                   },
};

// Calls that print every field of docs/json.md; LIVE stands for the address of OpenOCD.
constexpr const char* kJson[] = {
    "new DIR/new.oxa",
    "signals --design TRAPS",
    "add DIR/f.oxa --clock top/clk --data z --trigger z --design TRAPS",
    "set DIR/f.oxa --unit M0=T0==1 --power-up on",
    "show DIR/f.oxa",
    "show DIR/c.oxa",
    "show DIR/when.oxa",
    "show DIR/events.oxa",
    "show UART",
    "check DIR/wrong.oxa",
    "estimate UART --part PART",
    "generate UART --part PART --work-dir DIR/w",
    "generate DIR/c.oxa --part PART --work-dir DIR/w --no-synthesis",
    "generate DIR/wrong.oxa --part PART --work-dir DIR/w",
    "add DIR/counter.oxa --clock counter/clk --data count --design COUNTER --top counter",
    "attach DIR/counter.oxa --for ice40 --work-dir DIR/w",
    "simulate DIR/c.oxa --part PART --stimulus DIR/wave.vcd --model",
    "simulate DIR/events.oxa --part PART --stimulus DIR/wave.vcd --model",
    "probe DIR/c.oxa --openocd LIVE",
    "capture DIR/c.oxa --openocd LIVE --core 4 --unit 0.M0=1111111111 --timeout 0.001",
    "capture DIR/c.oxa --openocd LIVE",
    "capture DIR/events.oxa --openocd EVENTS --clock 4=2e6 --clock 9=1e6",
    "capture DIR/c.oxa --openocd LIVE --immediate --repeat 1 -o DIR/n%d.csv",
    "convert DIR/wave.vcd DIR/w.csv",
    "devices QX1N-9",
    "devices --families",
    "voltage --part QX1N-9UV-QFN88-C6",
};

/// Adds the fields of `object` with their types, as docs/json.md names them behind `place`.
void noteFields(const QString& place, const QJsonObject& object, QMap<QString, QString>& seen)
{
    static const QStringList kTypes {"null", "boolean", "number", "text", "array", "object"};
    for (auto it = object.begin(); it != object.end(); ++it) {
        const bool shared = QStringList {"format", "errors", "warnings"}.contains(it.key());
        const QString field = (shared ? "Every command " : place) + it.key();
        if (!it->isNull() || !seen.contains(field))
            seen[field] = kTypes.at(it->type());
        if (it.key() != "cells") // its keys are types of cells
            noteFields(field + '.', it->toObject(), seen);
        const QString below = it.key() == "problems" ? "Problems " : field + "[].";
        for (const QJsonValue element : it->toArray())
            noteFields(shared ? "Messages " : below, element.toObject(), seen);
    }
}

// How many rows a table has in which n counts on, from one to the next of a window; -1 when it does
// not.
int followingRows(const QByteArray& csv)
{
    const QList<QByteArray> rows = csv.trimmed().split('\n').mid(1);
    const auto number
        = [&rows](int row) { return rows.at(row).split(',').at(4).toInt(nullptr, 16); };
    for (int i = 1; i < rows.size(); ++i) {
        if (rows.at(i).split(',').at(2) != "0" && number(i) != (number(i - 1) + 1) % kRound)
            return -1;
    }
    return rows.size();
}

}

// `oxa target`, the real openocd and `oxa capture`, compared with `oxa simulate --model`.
class TestCapture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void coresCaptureAsTheModel();
    void aCoreForcesAnother();
    void windowsDuringARun();
    void timeInFiles();
    void changesForOneRun_data() { addRows(kChanges); }
    void changesForOneRun();
    void withoutATrigger();
    void progressOnATerminal();
    void positionsOnADeeperDevice();
    void immediately();
    void lite();
    void besideTheDesign_data() { addRows(kBenches); }
    void besideTheDesign();
    void unusableCalls_data() { addRows(kUnusable); }
    void unusableCalls();
    void jsonIsAsDocumented();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QStringList captureCall(const QStringList& more) const;
    Result capture(const QStringList& more) { return oxa(captureCall(more)); }
    Result captureUntilStopped(const QStringList& more);
    Result model(const QString& configuration, const QStringList& more);

    QTemporaryDir m_dir;
    LiveTarget m_live;
    LiveTarget m_events; // of cores that force each other
};

void TestCapture::initTestCase()
{
    writeFile(path("wave.vcd"), countingWaveform());
    const auto fast = countingCore(4, "clk");
    const auto slow = countingCore(9, "slow");
    slow->storage.keep = OXA::CoreStorage::Changes; // the data signals count: all are stored
    OXA::writeOXAConfigToXml({fast.get(), slow.get()}, path("c.oxa"));
    QVERIFY2(m_live.start(path("c.oxa"), path("wave.vcd")), m_live.target.said());
    slow->storage = {};
    slow->matchUnits[0]->value0 = "1111111111"; // it never triggers alone
    slow->events.forcedBy = {4};
    fast->events.stamps = slow->events.stamps = true;
    OXA::writeOXAConfigToXml({fast.get(), slow.get()}, path("events.oxa"));
    QVERIFY2(m_events.start(path("events.oxa"), path("wave.vcd")), m_events.target.said());
}

QStringList TestCapture::captureCall(const QStringList& more) const
{
    return QStringList {"capture", path("c.oxa"), "--openocd", m_live.address()} + more;
}

// Captures until the terminal tells of the waveform's end, and presses Ctrl-C. Of a clock that has
// stopped, what was told last may be older than its last edge.
Result TestCapture::captureUntilStopped(const QStringList& more)
{
    Terminal terminal;
    terminal.run(OXA_PROGRAM " " + captureCall(more).join(' ') + " >" + path("out"));
    terminal.says("its sample clock ran, but has stopped");
    terminal.interrupt();
    finished(terminal);
    return {terminal.exitCode(), bytesOf(path("out")), terminal.said()};
}

Result TestCapture::model(const QString& configuration, const QStringList& more)
{
    return oxa(QStringList {"simulate", configuration, "--part", kPart, "--stimulus",
                   path("wave.vcd"), "--model"}
        + more);
}

void TestCapture::coresCaptureAsTheModel()
{
    const Result result = capture({"-o", path("live.csv"), "--timeout", patienceSeconds()});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.status, 0);
    QVERIFY2(result.out.startsWith("core 4, window 0: trigger at sample 20, 50 samples from 0"),
        qPrintable(result.out));
    QCOMPARE(model(path("c.oxa"), {"-o", path("model.csv")}).status, 0);
    QCOMPARE(bytesOf(path("live.csv")), bytesOf(path("model.csv")));
}

void TestCapture::aCoreForcesAnother()
{
    const QStringList call {"capture", path("events.oxa"), "--openocd", m_events.address(), "-o"};
    const Result result
        = oxa(call + QStringList {path("live.csv"), "--timeout", patienceSeconds()});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(model(path("events.oxa"), {"-o", path("model.csv")}).status, 0);
    QCOMPARE(bytesOf(path("live.csv")), bytesOf(path("model.csv")));
    static const QRegularExpression forced("\\n9,[01],\\d+,1,1,");
    QCOMPARE(QString(bytesOf(path("live.csv"))).count(forced), 2);
    QCOMPARE(
        result.out.count(QRegularExpression("(?m)^core 9, window [01]: forced at sample ")), 2);

    QCOMPARE(
        oxa(call + QStringList {path("live.vcd"), "--clock", "4=2e6", "--clock", "9=1e6"}).status,
        0);
    QVERIFY(bytesOf(path("live.vcd")).contains("core 9: aligned with core 4, +- 5e-07 s\n"));

    // The run can do without, but not with what was not built.
    const Result alone
        = oxa(call + QStringList {path("alone.csv"), "--forced-by", "1=none", "--timeout", "0.5"});
    QVERIFY2(alone.err.contains("core 9 did not trigger: level 0 of 2"), qPrintable(alone.err));
    const Result other = oxa(call + QStringList {path("alone.csv"), "--forced-by", "0=1"});
    QCOMPARE(other.status, 2);
    QVERIFY2(other.err.contains("it is not built to be forced by 1, but by none"),
        qPrintable(other.err));
}

// The file has the first window while the core waits for the second. A snapshot of the status needs
// a clock that runs, so the waveform goes on for long behind that window.
void TestCapture::windowsDuringARun()
{
    if (!Terminal::exists())
        QSKIP(Terminal::kNone);
    constexpr int kLong = 100000;
    const auto core = countingCore(0, "clk");
    OXA::writeOXAConfigToXml({core.get()}, path("long.oxa"));
    QStringList samples;
    for (int i = 0; i < kLong; ++i)
        samples += QString::number(std::min(i, kRound), 2).rightJustified(10, '0') + "10";
    writeFile(path("long.vcd"),
        vcdOf(OXA::flattenedNames({busOf("n", 10)}) + QStringList {"a,b", "x_y"}, samples));
    LiveTarget live;
    QVERIFY2(live.start(path("long.oxa"), path("long.vcd")), live.target.said());
    const QStringList call {
        "capture", path("long.oxa"), "--openocd", live.address(), "--follow", "-o"};
    Terminal terminal;
    terminal.run(OXA_PROGRAM " " + call.join(' ') + ' ' + path("follow.csv"), "stty cols 400; ");
    QVERIFY2(terminal.says("follow.csv has 1 window"), terminal.said());
    const QByteArray first = bytesOf(path("follow.csv"));
    QCOMPARE(first.count("\n0,0,"), 50);
    QCOMPARE(first.count("\n0,1,"), 0);
    terminal.interrupt();
    finished(terminal);
    QVERIFY(bytesOf(path("follow.csv")).startsWith(first));
    QCOMPARE(bytesOf(path("follow.csv")).count("\n0,1,"), 50);
    const Result result = oxa(call + QStringList("-"));
    QCOMPARE(result.status, 2);
    QVERIFY2(result.err.contains("needs a file that can be written again"), qPrintable(result.err));
}

void TestCapture::timeInFiles()
{
    QCOMPARE(capture({"-o", path("live.vcd"), "--clock", "27e6"}).status, 0);
    const QByteArray vcd = bytesOf(path("live.vcd"));
    QVERIFY(vcd.contains("$timescale 1 ps $end"));
    QVERIFY(vcd.contains("\n#37037\n"));
    // Two windows, and 3 periods behind the first.
    QVERIFY2(vcd.contains("\n#1851852\nbxx") && vcd.contains("\n#1962963\nb01 "), vcd.right(200));
    QVERIFY2(vcd.contains("\n#3814815\nbxx"), vcd.right(200));

    writeFile(path("c.oxa.names"), R"({"clocks": {"4": 27e6, "9": 1}, "later": []})");
    QCOMPARE(capture({"-o", path("two.vcd"), "--clock", "9=13.5e6"}).status, 0);
    QFile::remove(path("c.oxa.names"));
    QVERIFY(bytesOf(path("two.vcd")).contains("core 4 at 27000000 Hz, core 9 at 13500000 Hz\n"));
}

// What options change is what the model says of a file that is changed alike.
void TestCapture::changesForOneRun()
{
    const Change& change = rowOf(kChanges);
    const auto edited = countingCore(4, "clk");
    edited->matchUnits[0]->value0 = change.value;
    edited->matchUnits[1]->counter = change.counter;
    edited->captureAmount = change.samples;
    edited->windowNum = change.windows;
    edited->triggerPos = change.position;
    OXA::writeOXAConfigToXml({edited.get()}, path("edited.oxa"));
    QCOMPARE(model(path("edited.oxa"), {"-o", path("model.csv")}).status, 0);
    const Result result = capture(
        QStringList {"--core", "4", "--timeout", patienceSeconds(), "-o", path("live.csv")}
        + QString(change.options).split(' ').replaceInStrings("_", " "));
    QCOMPARE(result.err, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(bytesOf(path("live.csv")), bytesOf(path("model.csv")));
}

// Ctrl-C at the end of the waveform: of the first window, and of the second, what is there is read
// with nothing that looks like a trigger, and the next run finds cores that are idle.
void TestCapture::withoutATrigger()
{
    if (!Terminal::exists())
        QSKIP(Terminal::kNone);
    const QString value("1111111111");
    const auto never = countingCore(4, "clk");
    never->matchUnits[0]->value0 = value;
    OXA::writeOXAConfigToXml({never.get()}, path("edited.oxa"));
    const Result expected = model(path("edited.oxa"), {});
    const QStringList call {"--core", "4", "-o", path("live.csv"), "--unit"};
    Result result = captureUntilStopped(call + QStringList {"0.M0=" + value, "--json"});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.err.contains(expected.err.trimmed()
                 + "; its sample clock ran, but has stopped or is very slow"),
        qPrintable(result.err));
    const QJsonObject core
        = QJsonDocument::fromJson(result.out.toUtf8())["cores"].toArray().at(0).toObject();
    QCOMPARE(core["triggered"], QJsonValue(false));
    QVERIFY(core["level"] == 0 && core["window"] == 0 && core["units"][0]["matches"] == 0);
    QCOMPARE(core["names"], QJsonValue("verified"));
    QCOMPARE(core["windows"][0]["triggerSample"], QJsonValue(QJsonValue::Null));
    const QByteArray csv = bytesOf(path("live.csv"));
    QCOMPARE(followingRows(csv), 50);
    const QString last = QString("0,0x%1").arg((kSamples - 1) % kRound, 3, 16, QChar('0'));
    QCOMPARE(QString(csv).trimmed().section('\n', -1).section(',', 3, 4), last);
    QVERIFY(!QString(csv).contains(QRegularExpression("\\n\\d+,\\d+,\\d+,1")));

    result = captureUntilStopped(call + QStringList("0.M0=0011110000"));
    QCOMPARE(result.status, 1);
    QVERIFY2(result.err.contains("core 4 was stopped with 1 of 2 windows complete"),
        qPrintable(result.err));
    QCOMPARE(bytesOf(path("live.csv")).count("\n4,0,"), 50);
    QCOMPARE(bytesOf(path("live.csv")).count("\n4,1,"), 50);
    QVERIFY2(result.out.contains("core 4, window 1: no trigger"), qPrintable(result.out));
    QCOMPARE(capture({"--core", "4"}).status, 0);
}

// The progress of a core that waits takes one line of the terminal.
void TestCapture::progressOnATerminal()
{
    if (!Terminal::exists())
        QSKIP(Terminal::kNone);
    Terminal terminal;
    terminal.run(
        OXA_PROGRAM " " + captureCall({"--core", "4", "--unit", "0.M0=1111111111"}).join(' '),
        "stty cols 40; ");
    QVERIFY2(terminal.says("core 4: [^\r]{30}…\r"), terminal.said());
    terminal.interrupt();
    QVERIFY(finished(terminal));
}

// The position is the same in all outputs. Only samples captured from power-up on may have another
// one, and a warning says so.
void TestCapture::positionsOnADeeperDevice()
{
    const auto core = countingCore(4, "clk");
    core->expressionType = OXA::DynamicExpressions;
    core->captureInitDataEnabled = true;
    OXA::writeOXAConfigToXml({core.get()}, path("position.oxa"));
    const QString shown = oxa({"show", path("position.oxa")}).out;
    static const QRegularExpression both(
        "(?s)50 samples, 20 before the trigger\\n.*from power-up on.*"
        " 20 samples .*; 21 on .*QX1N-9\\b");
    QVERIFY2(shown.contains(both), qPrintable(shown));

    LiveTarget live;
    QVERIFY2(
        live.start(path("position.oxa"), path("wave.vcd"), {}, kDeeperPart), live.target.said());
    const QStringList call {"capture", path("position.oxa"), "--openocd", live.address(),
        "--timeout", patienceSeconds()};
    const QString window("core 4, window 0: trigger at sample %1, 50 samples from 0 on\n");
    const QString probed = oxa({"probe", path("position.oxa"), "--openocd", live.address()}).out;
    QVERIFY2(probed.contains("/position.oxa: fits\n"), qPrintable(probed));
    const Result powerUp = oxa(call + QStringList {"--power-up"});
    QVERIFY2(powerUp.out.startsWith(window.arg(21)), qPrintable(powerUp.out));
    QVERIFY(powerUp.err.contains("has 21 samples before the trigger on this device, not 20"));
    for (const QStringList& option : {
             QStringList(), QStringList {"--position", "20"}
    }) {
        const Result armed = oxa(call + option);
        QCOMPARE(armed.err, QString());
        QVERIFY2(armed.out.startsWith(window.arg(20)), qPrintable(armed.out));
    }
}

// A forced window holds samples that follow one another.
void TestCapture::immediately()
{
    const Result result = capture({"--core", "4", "--immediate", "-o", path("live.csv")});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QVERIFY(followingRows(bytesOf(path("live.csv"))) >= 60); // windows may be short in front

    const Result series
        = capture({"--core", "4", "--immediate", "--repeat", "2", "-o", path("n%02d.csv")});
    QVERIFY2(series.out.startsWith("2 captures in "), qPrintable(series.err));
    QVERIFY(followingRows(bytesOf(path("n00.csv"))) > 50);
    QVERIFY(followingRows(bytesOf(path("n01.csv"))) > 50);
}

// The counter runs on behind the end of its bench, which is before the trigger.
void TestCapture::besideTheDesign()
{
    const Bench& row = rowOf(kBenches);
    writeFile(path("beside.sv"), QByteArray(row.package) + kCounter);
    writeFile(path("bench.v"),
        QByteArray("module bench; reg clk = 0; wire [9:0] y; always #5 clk = !clk;\n") + row.dut
            + "\ninitial #100 $finish; endmodule\n");
    const QString file = path("beside.oxa");
    QFile::remove(file);
    QCOMPARE(oxa({"add", file, "--clock", "top/clk", "--data", "n", "--trigger", "n", "--samples",
                     "50", "--position", "20", "--design", path("beside.sv"), "--top", "top"})
                 .status,
        0);
    QCOMPARE(oxa({"set", file, "--unit", "M0=T0 == 200"}).status, 0);
    if (*row.error) {
        const Result result
            = oxa({"target", file, "--part", kPart, "--port", "0", "--bench", path("bench.v")});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.err.contains(row.error), qPrintable(result.err));
        return;
    }
    LiveTarget live;
    QVERIFY2(live.start(file, {}, {"--bench", path("bench.v")}), live.target.said());
    QVERIFY(live.target.said().contains("as plain Verilog from Yosys"));
    const Result result = oxa({"capture", file, "--openocd", live.address(), "-o",
        path("beside.csv"), "--timeout", patienceSeconds()});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    const QByteArray captured = bytesOf(path("beside.csv"));
    QCOMPARE(followingRows(captured), 50);
    QVERIFY2(captured.contains("\n0,0,20,1,0x0c8\n"), captured);
    QVERIFY(live.target.says("\\$finish at 100; the design continues"));
}

void TestCapture::lite()
{
    OXA::AOCore_Lite lite;
    lite.sampleClock = "clk";
    lite.captureAmount = 40;
    lite.captureInitDataEnabled = true;
    lite.signalList = {busOf("n", 10)};
    OXA::writeOXAConfigToXml_Lite({&lite}, path("lite.oxa"));
    LiveTarget live;
    QVERIFY2(live.start(path("lite.oxa"), path("wave.vcd"), {"--loop"}), live.target.said());
    QCOMPARE(model(path("lite.oxa"), {"-o", path("model.csv")}).status, 0);
    const QStringList call {"capture", path("lite.oxa"), "--openocd", live.address(), "-o",
        path("live.csv"), "--timeout", patienceSeconds()};
    QCOMPARE(oxa({"probe", "--openocd", live.address()}).status, 0); // what it has captured stays
    const Result first = oxa(call + QStringList {"--power-up"});
    QCOMPARE(first.err, QString()); // it knows its names
    QCOMPARE(first.status, 0);
    QCOMPARE(bytesOf(path("live.csv")), bytesOf(path("model.csv")));
    const Result again = oxa(call + QStringList {"--power-up"});
    QCOMPARE(again.status, 1);
    QVERIFY2(again.err.contains("power-up capture was ended"), qPrintable(again.err));
    // Later runs begin where the waveform is.
    const Result later = oxa(call);
    QVERIFY2(later.status == 0, qPrintable(later.err));
    QCOMPARE(followingRows(bytesOf(path("live.csv"))), 40);
}

void TestCapture::unusableCalls()
{
    const Call& row = rowOf(kUnusable);
    const Result result = capture(QString(row.what).split(' ').replaceInStrings("_", " "));
    QVERIFY2(result.err.contains(row.said), qPrintable(result.err));
    QCOMPARE(result.status, row.status);
}

void TestCapture::jsonIsAsDocumented()
{
    const QString uart = OXA_SOURCE_DIR "/examples/uart/uart.oxa";
    QByteArray wrong = bytesOf(uart);
    wrong.replace("uart_tx/start", "uart_tx/data[6]").replace("M1 &amp;", "M3 &amp;");
    writeFile(path("wrong.oxa"), wrong.replace("R01000110", "r1000110"));
    const auto when = countingCore(4, "clk");
    when->storage.keep = OXA::CoreStorage::When;
    when->storage.when = "M0";
    OXA::writeOXAConfigToXml({when.get()}, path("when.oxa"));
    const QStringList remembers {"OXA_REMEMBER=1", "XDG_DATA_HOME=" + path("data")};
    const QString engine
        = writeProgram(path("engine"), "echo 'module qx_oxa; endmodule' >netlist.v\n");
    const QStringList builds = remembers + QStringList("OXA_SYNTHESIS_ENGINE=" + engine);
    QMap<QString, QString> seen;
    for (const char* row : kJson) {
        QString call = row;
        call.replace("DIR", m_dir.path()).replace("UART", uart).replace("PART", kPart);
        call.replace("LIVE", m_live.address()).replace("EVENTS", m_events.address());
        call.replace("COUNTER", OXA_SOURCE_DIR "/examples/board/counter.v");
        call.replace("TRAPS", OXA_SOURCE_DIR "/tests/design/traps.sv --top top -D GO=8'd1 -P N=3");
        const Result result
            = oxa((call + " --json").split(' '), call.startsWith("generate") ? builds : remembers);
        QVERIFY2(jsonOf(result)["format"] == 1, qPrintable(call + '\n' + result.err));
        noteFields("oxa " + call.section(' ', 0, 0) + ' ', jsonOf(result), seen);
    }
    QMap<QString, QString> documented;
    QString section;
    for (const QString& line : QString(bytesOf(OXA_SOURCE_DIR "/docs/json.md")).split('\n')) {
        if (line.startsWith("## "))
            section = line.mid(3) + ' ';
        else if (line.startsWith("| `"))
            documented[section + line.section('`', 1, 1)]
                = line.section('|', 2, 2).section(' ', 1, 1);
    }
    for (auto it = seen.begin(); it != seen.end(); ++it)
        QVERIFY2(documented.contains(it.key()) && (*it == "null" || *it == documented[it.key()]),
            qPrintable(it.key() + ", " + *it));
    for (const QString& field : documented.keys()) // a proof takes long
        QVERIFY2(seen.contains(field) || field.startsWith("oxa attach proof"), qPrintable(field));
}

QTEST_GUILESS_MAIN(TestCapture)
#include "test_capture.moc"
