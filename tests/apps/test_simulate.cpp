// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/simulation.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/processes.h"
#include "support/rows.h"
#include "support/signals.h"
#include "support/waveforms.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr char kPart[] = "QX3A-10ALV-QFN88-C8";

// The signals a, b[1] and b[0], a sample a word.
const QStringList kNames {"a", "b[1]", "b[0]"};
const QStringList kSamples {"000", "x01", "110", "011", "100", "001"};

// Windows of three samples around b == `value`.
std::unique_ptr<OXA::AoCore> core(int index, const QString& value)
{
    return coreOf(index, {signalOf("a"), busOf("b", 2)}, busOf("b", 2), value, 3, 1);
}

struct Comparison {
    const char* what;
    bool lite;
    QStringList data;
    int samples;
};

const Comparison kComparisons[] = {
    {"unknown values",                                   false, {"a", "b[0]"},   6},
    {"too few samples for the core to say that it runs", false, {"a"},           4},
    {"a sample clock that is watched",                   false, {"clk", "b[0]"}, 6},
    {"Lite, few samples",                                true,  {"a"},           2},
    {"Lite, a sample clock that is watched",             true,  {"b[1]", "clk"}, 6},
};

}

class TestSimulate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void capturesOfTheModel();
    void aCaptureIsAStimulus();
    void forcedTriggers();
    void unknownValuesThatDecide();
    void verilogCapturesAsTheModel_data() { addRows(kComparisons); }
    void verilogCapturesAsTheModel();
    void netlistsWithoutNames();
    void verilatorThatCannotBeUsed();
    void compilersLeaveNothingAndSayLittle();
    void unusableInputs();
    void aSilentSimulatorIsAwaited();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    Result simulate(const QList<OXA::AoCore*>& cores, const QStringList& more);
    void startSilentSimulation();

    QTemporaryDir m_dir;
    QStringList m_verilog; // a call, with the waveform to be added
    QStringList m_call; // the same of the model
    Service m_silent;
};

void TestSimulate::initTestCase()
{
    writeFile(path("wave.vcd"), vcdOf(kNames, kSamples));
    m_verilog = QStringList {"simulate", path("c.oxa"), "--part", kPart, "--stimulus"};
    m_call = QStringList {"simulate", "--model"} + m_verilog.mid(1);
    startSilentSimulation();
}

Result TestSimulate::simulate(const QList<OXA::AoCore*>& cores, const QStringList& more)
{
    OXA::writeOXAConfigToXml(cores, path("c.oxa"));
    return oxa(m_call + QStringList {path("wave.vcd")} + more);
}

void TestSimulate::capturesOfTheModel()
{
    const auto first = core(4, "10");
    const auto second = core(9, "11");
    const Result result = simulate({first.get(), second.get()}, {"-o", path("out.csv")});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out,
        "core 4, window 0: trigger at sample 2, 3 samples from 1 on\n"
        "core 9, window 0: trigger at sample 3, 3 samples from 2 on\n"
            + path("out.csv") + ": written\n");
    QCOMPARE(bytesOf(path("out.csv")),
        QByteArray("core,window,sample,trigger,a,b\n"
                   "4,0,0,0,x,0x1\n4,0,1,1,1,0x2\n4,0,2,0,0,0x3\n"
                   "9,0,0,0,1,0x2\n9,0,1,1,0,0x3\n9,0,2,0,1,0x0\n"));
    QCOMPARE(saidBy(simulate({first.get()}, {"--json"})),
        QString(
            R"({"cores":[{"index":4,"triggered":true,"windows":[)"
            R"({"firstSample":1,"samples":3,"triggerSample":2}]}],"errors":[],"format":1,"warnings":[]})"));
}

// Without the sample clock, by the Verilog, which needs its edges.
void TestSimulate::aCaptureIsAStimulus()
{
    const auto core0 = core(0, "10");
    for (const char* name : {"first.vcd", "first.csv", "first.sr"}) {
        QCOMPARE(simulate({core0.get()}, {"-o", path(name)}).status, 0);
        const Result again = oxa(m_verilog + QStringList {path(name)});
        QCOMPARE(again.err, QString());
        QCOMPARE(
            again.out, QString("core 0, window 0: trigger at sample 1, 3 samples from 0 on\n"));
    }
    const auto other = core(1, "10");
    other->triggers[0]->signalList = {busOf("c", 2)};
    OXA::writeOXAConfigToXml({core0.get(), other.get()}, path("c.oxa"));
    const Result missing = oxa(m_call + QStringList {path("first.sr")});
    QVERIFY2(missing.status == 2, qPrintable(missing.out + missing.err));
    QVERIFY2(missing.err.contains("c[1]: is not in the capture"), qPrintable(missing.err));
}

void TestSimulate::forcedTriggers()
{
    const auto core0 = core(0, "10");
    core0->expressions.clear();
    writeFile(path("kept.vcd"), "old");
    const Result idle = simulate({core0.get()}, {"-o", path("kept.vcd")});
    QCOMPARE(idle.status, 1);
    QVERIFY2(idle.err.contains("kept.vcd: not changed, because nothing was captured"),
        qPrintable(idle.err));
    QCOMPARE(bytesOf(path("kept.vcd")), QByteArray("old"));
    QVERIFY(simulate({core0.get()}, {"--force-trigger-at", "0"})
                .out.contains("trigger at sample 0, 2 samples from 0 on"));
    const Result late = simulate({core0.get()}, {"--force-trigger-at", "6"});
    QCOMPARE(late.status, 1);
    QVERIFY(late.err.contains("core 0: cannot be forced at sample 6, there are only 6"));
    QCOMPARE(simulate({core0.get()}, {"--force-trigger-at", "-1"}).status, 2);
}

void TestSimulate::unknownValuesThatDecide()
{
    const auto core0 = core(0, "01");
    OXA::writeOXAConfigToXml({core0.get()}, path("c.oxa"));
    const QByteArray wave = vcdOf(kNames, {"000", "0x1", "010"});
    const Result result = oxa(m_call + QStringList {writeFile(path("unknown.vcd"), wave)});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.err.contains("unknown values decide when it triggers; M0 first compares one at"
                                 " sample 1, as 0"),
        qPrintable(result.err));
}

void TestSimulate::verilogCapturesAsTheModel()
{
    const Comparison& row = rowOf(kComparisons);
    writeFile(path("these.vcd"), vcdOf(kNames, kSamples.mid(0, row.samples)));
    const auto standard = core(4, "10");
    OXA::AOCore_Lite first;
    first.sampleClock = "clk";
    first.captureAmount = 9; // more than there is
    for (const QString& name : row.data)
        first.signalList += signalOf(name);
    standard->signalList = first.signalList;
    OXA::AOCore_Lite second = first; // only its signals become hardware
    second.signalList += signalOf("b[1]");
    if (row.lite)
        OXA::writeOXAConfigToXml_Lite({&first, &second}, path("c.oxa"));
    else
        OXA::writeOXAConfigToXml({standard.get()}, path("c.oxa"));
    const QStringList more {path("these.vcd"), "--json", "-o", path("out.csv")};
    const Result model = oxa(m_call + more);
    QCOMPARE(model.status, 0);
    const QByteArray captured = bytesOf(path("out.csv"));
    const Result verilog = oxa(m_verilog + more + QStringList {"--keep-work", path("kept")});
    QCOMPARE(verilog.err, QString());
    QCOMPARE(verilog.out, model.out);
    QCOMPARE(bytesOf(path("out.csv")), captured);
    QVERIFY(
        QFile::exists(path("kept/generated/qx_oxa_top.v")) && QFile::exists(path("kept/vvp.log")));
}

// Here the preprocessed sources, but for that of the names, which the program adds itself.
void TestSimulate::netlistsWithoutNames()
{
    const auto core0 = core(0, "10");
    const Result expected = simulate({core0.get()}, {});
    const Result generated = oxa(
        {"generate", path("c.oxa"), "--part", kPart, "--work-dir", path("work"), "--no-synthesis"});
    QVERIFY(QFile::remove(path("work/qx_oxa_names.v")));
    QProcess iverilog;
    iverilog.start("iverilog",
        {"-g2005", "-E", "-o", path("n.v"), "-c", writeFile(path("list"), generated.out.toUtf8())});
    QVERIFY(finished(iverilog));
    const QStringList call = m_verilog + QStringList {path("wave.vcd"), "--netlist", path("n.v")};
    const Result own = oxa(call);
    QCOMPARE(own.out, expected.out);
    QVERIFY2(own.err.contains("names unknown: the target was built without qx_oxa_names.v"),
        qPrintable(own.err));
    writeFile(path("n.v"), "module qx_oxa(oops); endmodule");
    const Result broken = oxa(call);
    QCOMPARE(broken.status, 1);
    QVERIFY2(broken.err.contains("iverilog does not accept"), qPrintable(broken.err));
}

// Icarus takes its place, unless the user has chosen it.
void TestSimulate::verilatorThatCannotBeUsed()
{
    const auto core0 = core(0, "10");
    OXA::writeOXAConfigToXml({core0.get()}, path("c.oxa"));
    QDir(m_dir.path()).mkpath("broken");
    writeProgram(path("broken/verilator_bin"), "echo broken; exit 1\n");
    const QString search = "PATH=" + path("broken:") + qgetenv("PATH");
    const QStringList chosen
        = m_verilog + QStringList {path("wave.vcd"), "--simulator", "verilator"};
    const Result said = oxa(chosen, {search});
    QVERIFY2(said.err.contains("error: verilator_bin fails:\n    broken"), qPrintable(said.err));
    const Result netlist = oxa(chosen + QStringList {"--netlist", path("c.oxa")});
    QVERIFY2(netlist.err.contains("Verilator has no unknown values"), qPrintable(netlist.err));
    QStringList samples = kSamples;
    while (samples.size() < OXA_CAPTURE::kVerilatorPays / 2)
        samples += kSamples;
    Service target;
    target.setEnvironment(QProcess::systemEnvironment() + QStringList(search));
    target.start(OXA_PROGRAM,
        QStringList {"target", "--port", "0"} + m_verilog.mid(1)
            + QStringList(writeFile(path("long.vcd"), vcdOf(kNames, samples))));
    QVERIFY2(!target.after("waits at port ").isEmpty(), target.said());
    QVERIFY2(target.said().contains("Verilator cannot be used: verilator_bin"), target.said());
}

void TestSimulate::compilersLeaveNothingAndSayLittle()
{
    const auto core0 = core(0, "10");
    OXA::writeOXAConfigToXml({core0.get()}, path("c.oxa"));
    QDir(m_dir.path()).mkpath("program/tmp");
    writeProgram(path("program/iverilog"), ": >$TMPDIR/left; pwd; seq 1000; exit 1\n");
    const Result result = oxa(m_verilog + QStringList(path("wave.vcd")),
        {"PATH=" + path("program") + ":/usr/bin:/bin", "TMPDIR=" + path("program/tmp")});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.err.contains("19\n    ... 981 more lines"), qPrintable(result.err));
    QVERIFY(QDir(path("program/tmp")).isEmpty());

    // Icarus has its compiler proper started by a shell.
    for (const char* script : {"kill -6 $$\n", "echo Aborted; exit 134\n"}) {
        writeProgram(path("program/iverilog"), script);
        const QString err = oxa(m_verilog + QStringList(path("wave.vcd")),
            {"PATH=" + path("program") + ":/usr/bin:/bin"})
                                .err;
        QVERIFY2(err.contains("ended by signal 6 (Aborted)"), qPrintable(err));
    }
}

void TestSimulate::unusableInputs()
{
    const auto core0 = core(0, "10");
    OXA::writeOXAConfigToXml({core0.get()}, path("c.oxa"));
    const QPair<QByteArray, const char*> rows[] = {
        {vcdOf(kNames, kSamples) + "2!", "w%2.vcd:"    },
        {vcdOf({"c"},  {"0"}),           "b[0]: is not"},
    };
    for (const auto& row : rows) {
        const Result result = oxa(m_call + QStringList(writeFile(path("w%2.vcd"), row.first)));
        QCOMPARE(result.status, 2);
        QVERIFY2(result.err.contains(row.second), qPrintable(result.err));
    }
}

// A module of the test stops the simulator in the middle of a scan, for longer than a client waits
// for a target that may be gone. Other tests run meanwhile.
void TestSimulate::startSilentSimulation()
{
    const auto core0 = core(0, "10");
    OXA::writeOXAConfigToXml({core0.get()}, path("silent.oxa"));
    const QByteArray fifo = path("fifo").toUtf8();
    writeFile(path("wait.v"),
        "module wait_for_test; integer f, c;\n"
        "initial #50 begin f = $fopen(\""
            + fifo + "\", \"r\"); c = $fgetc(f); end\nendmodule\n");
    QDir(m_dir.path()).mkdir("bin");
    const QByteArray search = qgetenv("PATH");
    writeProgram(path("bin/iverilog"),
        "mkfifo " + fifo + "; (sleep 15; echo >" + fifo + ") >/dev/null 2>&1 &\nsleep 2\nPATH="
            + search + " exec iverilog -s wait_for_test \"$@\" " + path("wait.v").toUtf8() + '\n');
    m_silent.setEnvironment(QProcess::systemEnvironment()
        + QStringList {"PATH=" + path("bin:") + search, "OXA_PROGRESS=1"});
    m_silent.start(OXA_PROGRAM,
        {"simulate", path("silent.oxa"), "--part", kPart, "--stimulus", path("wave.vcd")});
}

void TestSimulate::aSilentSimulatorIsAwaited()
{
    QVERIFY(finished(m_silent));
    QVERIFY2(m_silent.exitCode() == 0, m_silent.said());
    QVERIFY2(m_silent.said().contains("compiling: 0 %\n"), m_silent.said());
    QVERIFY(QFile::exists(path("fifo")));
}

QTEST_APPLESS_MAIN(TestSimulate)
#include "test_simulate.moc"
