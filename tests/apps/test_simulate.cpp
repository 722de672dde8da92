#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/processes.h"
#include "support/signals.h"
#include "support/waveforms.h"

#include <dev/device_db.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kSilence = 11; // s, longer than targets are given that may be gone

// The signals a, b[1] and b[0], a sample a word.
const QStringList kNames {"a", "b[1]", "b[0]"};
const QStringList kSamples {"000", "x01", "110", "011", "100", "001"};

// Windows of three samples around b == `value`.
std::unique_ptr<OXA::AoCore> core(int index, const QString& value)
{
    return coreOf(index, {signalOf("a"), busOf("b", 2)}, busOf("b", 2), value, 3, 1);
}

QString partOf(const QString& device)
{
    const QList<DEV::ChipInfo> chips = DEV::DeviceDb::instance().chips();
    for (const DEV::ChipInfo& chip : chips) {
        if (chip.name == device)
            return chip.partNumber;
    }
    return {};
}

}

class TestSimulate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void capturesOfTheModel();
    void coresThatDoNotTrigger();
    void forcedTriggers();
    void unknownValuesThatDecide();
    void lite();
    void verilogCapturesAsTheModel_data();
    void verilogCapturesAsTheModel();
    void aSilentSimulatorIsAwaited();
    void keptWork();
    void inputsStay_data();
    void inputsStay();
    void nothingCapturedLeavesTheOutput();
    void netlistsOfOthersAreRefused();
    void netlistsKnowTheirNames();
    void compilersLeaveNothingAndSayLittle();
    void unusableInputs_data();
    void unusableInputs();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    Result simulate(const QList<OXA::AoCore*>& cores, const QStringList& more);
    QString makeNetlist(const QString& configuration, bool withNames);

    QTemporaryDir m_dir;
    QStringList m_call;
};

void TestSimulate::initTestCase()
{
    writeFile(path("wave.vcd"), vcdOf(kNames, kSamples));
    m_call = QStringList {
        "simulate", path("c.oxa"), "--part", partOf("QX3A-10A"), "--model", "--stimulus"};
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
        QByteArray("core,window,sample,trigger,a,b[1],b[0]\n"
                   "4,0,0,0,x,0,1\n4,0,1,1,1,1,0\n4,0,2,0,0,1,1\n"
                   "9,0,0,0,1,1,0\n9,0,1,1,0,1,1\n9,0,2,0,1,0,0\n"));
}

void TestSimulate::coresThatDoNotTrigger()
{
    const auto idle = core(0, "10");
    const auto other = core(1, "10");
    idle->matchUnits[0]->counterEnable = true;
    const Result result = simulate({idle.get(), other.get()}, {"--json", "-o", path("out.csv")});
    QCOMPARE(result.status, 1);
    QCOMPARE(
        result.err, QString("core 0 did not trigger: level 0 of 1 reached, M0 matched 1 time\n"));
    const QJsonObject json = QJsonDocument::fromJson(result.out.toUtf8()).object();
    const QJsonArray cores = json.value("cores").toArray();
    QCOMPARE(cores.at(0).toObject().value("triggered"), QJsonValue(false));
    QCOMPARE(cores.at(1).toObject().value("windows").toArray(),
        QJsonArray({
            QJsonObject {{"triggerSample", 2}, {"firstSample", 1}, {"samples", 3}}
    }));
    QCOMPARE(bytesOf(path("out.csv")).count('\n'), 4);
}

void TestSimulate::forcedTriggers()
{
    const auto core0 = core(0, "10");
    core0->expressions.clear();
    QCOMPARE(simulate({core0.get()}, {}).status, 1);
    QVERIFY(simulate({core0.get()}, {"--force-trigger-at", "0"})
                .out.contains("trigger at sample 0, 2 samples from 0 on"));
    const Result late = simulate({core0.get()}, {"--force-trigger-at", "6"});
    QCOMPARE(late.status, 1);
    QVERIFY(late.err.contains("core 0: it has no sample 6 to be forced at, only 6"));
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

void TestSimulate::lite()
{
    OXA::AOCore_Lite lite;
    lite.sampleClock = "top/clk";
    lite.captureAmount = 4;
    lite.signalList = {signalOf("b", {"b[1]", "b[0]"})};
    OXA::writeOXAConfigToXml_Lite({&lite, &lite}, path("c.oxa"));
    const QStringList call = m_call + QStringList {path("wave.vcd")};
    QCOMPARE(oxa(call).out, QString("core 0, window 0: 4 samples from 0 on\n"));
    QCOMPARE(oxa(call + QStringList {"--force-trigger-at", "1"}).status, 2);
}

void TestSimulate::verilogCapturesAsTheModel_data()
{
    QTest::addColumn<bool>("lite");
    QTest::addColumn<QStringList>("data");
    QTest::addColumn<int>("samples");
    const int all = kSamples.size();
    QTest::addRow("unknown values") << false << QStringList {"a", "b[0]"} << all;
    QTest::addRow("too few samples for the core to say that it runs")
        << false << QStringList {"a"} << 4;
    QTest::addRow("a sample clock that is watched") << false << QStringList {"clk", "b[0]"} << all;
    QTest::addRow("Lite") << true << QStringList {"a", "b[0]"} << all;
    QTest::addRow("Lite, one signal") << true << QStringList {"a"} << all;
    QTest::addRow("Lite, few samples") << true << QStringList {"a"} << 2;
    QTest::addRow("Lite, a sample clock that is watched")
        << true << QStringList {"b[1]", "clk"} << all;
}

void TestSimulate::verilogCapturesAsTheModel()
{
    QFETCH(bool, lite);
    QFETCH(QStringList, data);
    QFETCH(int, samples);
    writeFile(path("these.vcd"), vcdOf(kNames, kSamples.mid(0, samples)));
    const auto standard = core(4, "10");
    OXA::AOCore_Lite first;
    first.sampleClock = "clk";
    first.captureAmount = 9; // more than there is
    for (const QString& name : data)
        first.signalList += signalOf(name);
    standard->signalList = first.signalList;
    OXA::AOCore_Lite second = first; // only its signals become hardware
    second.signalList += signalOf("b[1]");
    if (lite)
        OXA::writeOXAConfigToXml_Lite({&first, &second}, path("c.oxa"));
    else
        OXA::writeOXAConfigToXml({standard.get()}, path("c.oxa"));
    QStringList call = m_call + QStringList {path("these.vcd"), "--json", "-o", path("out.csv")};
    const Result model = oxa(call);
    QCOMPARE(model.status, 0);
    const QByteArray captured = bytesOf(path("out.csv"));
    call.removeOne("--model");
    const Result verilog = oxa(call);
    QCOMPARE(verilog.err, QString());
    QCOMPARE(verilog.out, model.out);
    QCOMPARE(bytesOf(path("out.csv")), captured);
}

// As a netlist's is on a busy machine. Here a module of its own waits for a file, in the middle of
// a scan.
void TestSimulate::aSilentSimulatorIsAwaited()
{
    const QString fifo = path("fifo");
    QCOMPARE(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QByteArray wait = "module wait_for_test; integer f, c;\n"
                            "initial #50 begin f = $fopen(\"%1\", \"r\"); c = $fgetc(f); end\n"
                            "endmodule\n";
    writeFile(path("wait.v"), QByteArray(wait).replace("%1", fifo.toUtf8()));
    QDir(m_dir.path()).mkdir("bin");
    writeFile(path("bin/iverilog"),
        QString("#!/bin/sh\nPATH=%1 exec iverilog -s wait_for_test \"$@\" %2\n")
            .arg(qEnvironmentVariable("PATH"), path("wait.v"))
            .toUtf8());
    QFile::setPermissions(
        path("bin/iverilog"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    const auto core0 = core(0, "10");
    OXA::writeOXAConfigToXml({core0.get()}, path("c.oxa"));
    QStringList call = m_call + QStringList {path("wave.vcd")};
    call.removeOne("--model");
    Service simulation;
    simulation.setEnvironment(QProcess::systemEnvironment()
        + QStringList(QString("PATH=%1:%2").arg(path("bin"), qEnvironmentVariable("PATH"))));
    simulation.start(OXA_PROGRAM, call);
    int writer = -1; // none before the simulator reads
    while (writer < 0 && !simulation.waitForFinished(20))
        writer = open(QFile::encodeName(fifo).constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY2(writer >= 0, simulation.said());
    QThread::sleep(kSilence);
    close(writer);
    QVERIFY(finished(simulation));
    QVERIFY2(simulation.exitCode() == 0, simulation.said());
}

void TestSimulate::keptWork()
{
    const auto core0 = core(0, "10");
    OXA::writeOXAConfigToXml({core0.get()}, path("c.oxa"));
    QStringList call = m_call + QStringList {path("wave.vcd"), "--keep-work", path("kept")};
    QCOMPARE(oxa(call).status, 2); // a model has no work to keep
    call.removeOne("--model");
    for (int again = 0; again < 2; ++again) {
        const Result result = oxa(call);
        QVERIFY2(result.status == 0, qPrintable(result.err));
        for (const char* name :
            {"generated/qx_oxa_top.v", "testbench.v", "stimulus.txt", "vvp.log"})
            QVERIFY2(QFile::exists(path("kept/") + name), name);
    }
    call.last() = m_dir.path();
    const Result refused = oxa(call);
    QCOMPARE(refused.status, 2);
    QVERIFY(QFile::exists(path("kept/testbench.v")));
}

void TestSimulate::inputsStay_data()
{
    QTest::addColumn<QString>("options"); // DIR: a marked directory with an input of each kind
    QTest::newRow("configuration and waveform") << "--keep-work DIR";
    QTest::newRow("netlist") << "--keep-work DIR/sub --netlist DIR/sub/n.v";
    QTest::newRow("output over the waveform") << "--model -o DIR/wave.vcd";
    QTest::newRow("output over another name of it") << "--model -o DIR/sub/twin.vcd";
}

void TestSimulate::inputsStay()
{
    QFETCH(QString, options);
    const QTemporaryDir directory;
    const QString in = directory.path();
    QVERIFY(QDir(in).mkdir("sub"));
    const auto core0 = core(0, "10");
    OXA::writeOXAConfigToXml({core0.get()}, in + "/c.oxa");
    const QByteArray wave = vcdOf(kNames, kSamples);
    writeFile(in + "/wave.vcd", wave);
    writeFile(in + "/sub/n.v", "module qx_oxa; endmodule");
    QCOMPARE(::link(qPrintable(in + "/wave.vcd"), qPrintable(in + "/sub/twin.vcd")), 0);
    for (const char* name : {"/.oxa-generated", "/sub/.oxa-generated"})
        writeFile(in + name, "");
    const Result result = oxa(QStringList {"simulate", in + "/c.oxa", "--part", partOf("QX3A-10A"),
                                  "--stimulus", in + "/wave.vcd"}
        + options.replace("DIR", in).split(' '));
    QCOMPARE(result.status, 2);
    QVERIFY2(result.err.contains("would be emptied, but it holds")
            || result.err.contains("which this run reads"),
        qPrintable(result.err));
    QCOMPARE(bytesOf(in + "/wave.vcd"), wave);
    QVERIFY(QFile::exists(in + "/c.oxa") && QFile::exists(in + "/sub/n.v"));
}

void TestSimulate::nothingCapturedLeavesTheOutput()
{
    const auto core0 = core(0, "10");
    core0->expressions.clear();
    writeFile(path("kept.vcd"), "old");
    const Result result = simulate({core0.get()}, {"-o", path("kept.vcd")});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.err.contains("kept.vcd: left as it was, for nothing was captured"),
        qPrintable(result.err));
    QCOMPARE(bytesOf(path("kept.vcd")), QByteArray("old"));
}

// A netlist here is the wrapper with its sources: what a simulator needs.
void TestSimulate::netlistsOfOthersAreRefused()
{
    const auto core0 = core(0, "10");
    QStringList call = m_call + QStringList {path("wave.vcd"), "--netlist", path("n.v")};
    call.removeOne("--model");
    OXA::writeOXAConfigToXml({core0.get()}, path("c.oxa"));
    QVERIFY(oxa(call).err.contains("n.v: there is no such netlist"));
    writeFile(path("n.v"), "module qx_oxa(oops); endmodule");
    const Result broken = oxa(call);
    QCOMPARE(broken.status, 1);
    QVERIFY2(broken.err.contains("iverilog does not accept"), qPrintable(broken.err));
}

// A netlist of `configuration`, as preprocessed sources, with or without its names.
QString TestSimulate::makeNetlist(const QString& configuration, bool withNames)
{
    const Result generated = oxa({"generate", configuration, "--part", partOf("QX3A-10A"),
        "--work-dir", path("work"), "--force", "--no-synthesis"});
    if (!withNames)
        QFile::remove(path("work/qx_oxa_names.v"));
    QProcess iverilog;
    iverilog.start("iverilog",
        {"-g2005", "-E", "-o", path("n.v"), "-c", writeFile(path("list"), generated.out.toUtf8())});
    iverilog.waitForFinished(-1);
    return iverilog.exitCode() == 0 ? path("n.v") : QString();
}

void TestSimulate::netlistsKnowTheirNames()
{
    const auto core0 = core(0, "10");
    OXA::writeOXAConfigToXml({core0.get()}, path("built.oxa"));
    QStringList call = m_call + QStringList {path("wave.vcd")};
    const Result expected = simulate({core0.get()}, {});
    call.removeOne("--model");
    for (const bool withNames : {true, false}) {
        const QString netlist = makeNetlist(path("built.oxa"), withNames);
        OXA::writeOXAConfigToXml({core0.get()}, path("c.oxa"));
        const Result own = oxa(call + QStringList {"--netlist", netlist});
        QCOMPARE(own.out, expected.out);
        QVERIFY2(own.err
                == (withNames ? QString()
                              : "warning: core 0: names unknown: the target was built without "
                                "qx_oxa_names.v, so it cannot be verified that its signals are "
                                "those that the configuration names\n"),
            qPrintable(own.err));
        const auto exchanged = core(0, "10");
        exchanged->signalList.swapItemsAt(0, 1);
        exchanged->captureSignals = exchanged->signalList;
        OXA::writeOXAConfigToXml({exchanged.get()}, path("c.oxa"));
        QCOMPARE(oxa(call + QStringList {"--netlist", netlist})
                     .err.contains("data signals have other names or another order"),
            withNames);
    }
}

void TestSimulate::compilersLeaveNothingAndSayLittle()
{
    const auto core0 = core(0, "10");
    OXA::writeOXAConfigToXml({core0.get()}, path("c.oxa"));
    QDir(m_dir.path()).mkpath("program/tmp");
    const QString compiler = writeFile(
        path("program/iverilog"), "#!/bin/sh\n: >$TMPDIR/left; pwd; seq 1000; exit 1\n");
    QFile::setPermissions(compiler, QFile::ReadOwner | QFile::ExeOwner);
    QStringList call = m_call + QStringList {path("wave.vcd")};
    call.removeOne("--model");
    const Result result = oxa(
        call, {"PATH=" + path("program") + ":/usr/bin:/bin", "TMPDIR=" + path("program/tmp")});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.err.contains("19\n    ... 981 more lines"), qPrintable(result.err));
    QVERIFY(QDir(path("program/tmp")).isEmpty());
}

void TestSimulate::unusableInputs_data()
{
    QTest::addColumn<QByteArray>("wave");
    QTest::addColumn<QStringList>("more");
    QTest::addColumn<QStringList>("errors");
    const QByteArray wave = vcdOf(kNames, kSamples);
    const auto row
        = [](const char* name, const QByteArray& wave, const QStringList& more,
              const QStringList& errors) { QTest::newRow(name) << wave << more << errors; };
    row("output of no known kind", wave, {"-o", "out.txt"}, {"out.txt: the ending has to be"});
    row("output nowhere", wave, {"-o", "/no/such/out.vcd"},
        {"/no/such/out.vcd: cannot be written"});
    row("damaged waveform", wave + "2!", {}, {"w%2.vcd:", "expected a time or a value change"});
    row("cut off waveform", wave.left(60), {}, {"the file ends inside"});
    row("no samples", wave.left(wave.indexOf("#5")), {}, {"no rising edge in the waveform"});
    row("no signals", vcdOf({"c"}, {"0"}), {}, {"b[1]: is not", "b[0]: is not", "a: is not"});
    row("no waveform", {}, {}, {"the file ends before"});
}

void TestSimulate::unusableInputs()
{
    QFETCH(QByteArray, wave);
    QFETCH(QStringList, more);
    QFETCH(QStringList, errors);
    const auto core0 = core(0, "10");
    OXA::writeOXAConfigToXml({core0.get()}, path("c.oxa"));
    QDir(m_dir.path()).mkdir("bad");
    const Result result = oxa(m_call + QStringList {writeFile(path("bad/w%2.vcd"), wave)} + more);
    QCOMPARE(result.status, 2);
    for (const QString& error : errors)
        QVERIFY2(result.err.contains(error), qPrintable(result.err));
}

QTEST_APPLESS_MAIN(TestSimulate)
#include "test_simulate.moc"
