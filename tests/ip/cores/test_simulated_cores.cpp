#include "random_core.h"

#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/remote_bitbang_link.h"
#include "oxacapture/target/stream_socket.h"
#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/signals.h"
#include "support/waveforms.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int kSamples = 250;
constexpr int kCounterBits = 8; // of the signal n, which numbers the samples

QByteArray randomWaveform(Random& random, QStringList names, const QStringList& clocks)
{
    const int values = names.size();
    names += OXA::flattenedNames({busOf("n", kCounterBits)});
    QStringList samples;
    QByteArray sample(values, '0');
    for (int i = 0; i < kSamples; ++i) {
        sample = randomSample(random, sample);
        samples += sample + QString::number(i, 2).rightJustified(kCounterBits, '0');
    }
    return vcdOf(names, samples, clocks);
}

// A cable that loses one bit of most questions: of the address, or of the register's scan on its
// way in or out.
class BadLink : public OXA_CAPTURE::JtagLink {
public:
    BadLink(OXA_CAPTURE::JtagLink& good, unsigned seed)
        : m_good(good)
        , m_random(seed)
    {
    }

    bool reset() override { return m_good.reset(); }
    bool scanIr(const OXA_CAPTURE::BitString& out) override { return m_good.scanIr(out); }
    bool scanDr(const OXA_CAPTURE::BitString& out, OXA_CAPTURE::BitString* in) override
    {
        if (!in) // an address begins the next question
            m_lost = Place(between(m_random, None, In));
        const bool ok = m_good.scanDr(m_lost == (in ? Out : Address) ? damaged(out) : out, in);
        if (in && m_lost == In)
            *in = damaged(*in);
        return ok;
    }

private:
    enum Place { None, Address, Out, In };

    OXA_CAPTURE::BitString damaged(const OXA_CAPTURE::BitString& bits)
    {
        const int wrong = between(m_random, 0, bits.size() - 1);
        OXA_CAPTURE::BitString result;
        for (int bit = 0; bit < bits.size(); ++bit)
            result.append(bits.at(bit) != (bit == wrong));
        return result;
    }

    OXA_CAPTURE::JtagLink& m_good;
    Random m_random;
    Place m_lost = None;
};

}

// What `oxa simulate` gets out of the generated Verilog is what the trigger model says.
class TestSimulatedCores : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void randomCores_data();
    void randomCores();
    void netlist();
    void openocdReadsAnIdentity();
    void openocdReadsAMemory();
    void damagedAnswersAreNotTaken();

private:
    QStringList randomCall(unsigned seed, int cores);
    void compare(const QStringList& call, const QStringList& options);
    QString serve(QProcess& vvp);
    QString openocd(const QString& port, const QString& commands);
    QString path(const QString& name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
};

void TestSimulatedCores::randomCores_data()
{
    QTest::addColumn<unsigned>("seed");
    QTest::addColumn<int>("cores");
    const int seeds = std::max(8, qEnvironmentVariableIntValue("CORES_SEEDS"));
    for (int seed = 0; seed < seeds; ++seed)
        QTest::addRow("seed %d", seed) << unsigned(seed) << (seed % 8 == 7 ? 16 : 1 + seed % 4);
}

// Writes a configuration with a waveform, and returns the call that simulates it.
QStringList TestSimulatedCores::randomCall(unsigned seed, int cores)
{
    Random random(seed);
    std::vector<std::unique_ptr<OXA::AoCore>> owned;
    QList<OXA::AoCore*> list;
    QStringList names;
    QStringList clocks;
    for (int position = 0; position < cores; ++position) {
        owned.push_back(randomCore(random, position));
        OXA::AoCore& core = *owned.back();
        names += core.dataSignals();
        for (const OXA::TriggerPort* port : core.availableTriggers())
            names += port->singleSignals();
        core.sampleClock = QString("clk%1").arg(position % 3);
        clocks += core.sampleClock;
        core.signalList.prepend(busOf("n", kCounterBits));
        list += &core;
    }
    clocks.removeDuplicates();
    OXA::writeOXAConfigToXml(list, path("c.oxa"));
    const QString wave = writeFile(path("w.vcd"), randomWaveform(random, names, clocks));
    const char* part = seed % 2 ? "QX3A-10ALV-QFN88-C8" : "QX1N-9LV-QFN88-C6";
    QStringList call {"simulate", path("c.oxa"), "--part", part, "--stimulus", wave, "--json", "-o",
        path("out.csv")};
    if (seed % 3 == 1)
        call += QStringList {"--force-trigger-at", QString::number(between(random, 0, kSamples))};
    return call;
}

// The model's answers to `call` against those with `options`.
void TestSimulatedCores::compare(const QStringList& call, const QStringList& options)
{
    const Result model = oxa(call + QStringList {"--model"});
    const QByteArray modelSamples = bytesOf(path("out.csv"));
    const Result verilog = oxa(call + options);
    QVERIFY2(model.status == 0 || model.status == 1, qPrintable(model.err));
    QCOMPARE(verilog.err, model.err);
    QCOMPARE(verilog.out, model.out);
    QCOMPARE(verilog.status, model.status);
    QCOMPARE(bytesOf(path("out.csv")), modelSamples);
}

void TestSimulatedCores::randomCores()
{
    QFETCH(unsigned, seed);
    QFETCH(int, cores);
    compare(randomCall(seed, cores), {});
}

// What Icarus simulates of the synthesized gates, and that a netlist of another configuration, even
// with the same ports, is refused.
void TestSimulatedCores::netlist()
{
    QStringList call = randomCall(3, 2);
    call[3] = "QX1N-9LV-QFN88-C6"; // where power-up has a position of its own
    const Result synthesis = oxa({"generate", path("c.oxa"), "--part", call.at(3), "--work-dir",
        path("work"), "-o", path("netlist.v")});
    QVERIFY2(synthesis.status == 0, qPrintable(synthesis.err));
    compare(call, {"--netlist", path("netlist.v")});

    QByteArray other = bytesOf(path("c.oxa"));
    const int depth = other.indexOf("storage_depth=\"") + int(strlen("storage_depth=\""));
    writeFile(path("c.oxa"), other.insert(depth, '1'));
    const Result refused = oxa(call + QStringList {"--netlist", path("netlist.v")});
    QCOMPARE(refused.status, 1);
    QVERIFY2(refused.err.contains("was built from another configuration; it has"),
        qPrintable(refused.err));
}

// Starts the target that a simulation kept; its TCP port for JTAG, or nothing.
QString TestSimulatedCores::serve(QProcess& vvp)
{
    QFile::remove(path("control")); // of one that was killed
    vvp.start("vvp",
        {"-n", "-M", OXA_BINARY_DIR "/lib/oxautils", "-m", "oxa_target", path("kept/target.vvp"),
            "+oxa_jtag=tcp:0", "+oxa_control=unix:" + path("control"),
            "+oxa_stimulus=" + path("kept/stimulus.txt")});
    while (!vvp.canReadLine() && vvp.waitForReadyRead(kPatience)) { }
    return QString(vvp.readLine().trimmed()).section(' ', -1);
}

// What OpenOCD says when it runs `commands` at the port, the cores' instruction loaded.
QString TestSimulatedCores::openocd(const QString& port, const QString& commands)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start("openocd",
        {"-c",
            "adapter driver remote_bitbang; remote_bitbang host 127.0.0.1; remote_bitbang port "
                + port
                + "; jtag newtap fpga tap -irlen 5 -expected-id 0x10a0affd; gdb_port disabled;"
                  " tcl_port disabled; telnet_port disabled; init; irscan fpga.tap 8; "
                + commands + "; shutdown"});
    finished(process);
    return process.readAll();
}

void TestSimulatedCores::openocdReadsAnIdentity()
{
    const QStringList call = randomCall(0, 1);
    QVERIFY(oxa(call + QStringList {"--keep-work", path("kept")}).status >= 0);
    QProcess vvp;
    const QString port = serve(vvp);
    // Two scans: the address of core 0's register 0, and 60 bits of it.
    const QString log
        = openocd(port, "drscan fpga.tap 14 0x3c03; echo identity=[drscan fpga.tap 60 1]");
    quint64 answer = log.section("identity=", 1).section('\n', 0, 0).toULongLong(nullptr, 16);
    QVERIFY2(answer != 0, qPrintable(log));
    while (!(answer & 1)) // the answer begins with a one
        answer >>= 1;
    QCOMPARE(quint32(answer >> 1), 0x3141584fU);
    vvp.kill();
    finished(vvp);
}

// 1024 samples of 32 signals in two scans, as the client of this library reads them.
void TestSimulatedCores::openocdReadsAMemory()
{
    constexpr int kWords = 1024;
    constexpr int kSignals = 32;
    Random random(1);
    OXA::AoCore core(0);
    core.sampleClock = "clk";
    core.captureInitDataEnabled = true;
    core.captureAmount = core.storageDepth = kWords;
    core.triggerPos = 0;
    for (int i = 0; i < kSignals; ++i)
        core.signalList += signalOf(QString("p%1").arg(i));
    core.captureSignals = core.signalList;
    core.triggers[0]->signalList += signalOf("p0");
    OXA::MatchUnit& unit = *core.matchUnits[0];
    unit.enabled = true;
    unit.trigger = core.triggers[0];
    unit.value0 = "X";
    core.expressions += "M0";
    QList<OXA::AoCore*> list {&core};
    OXA::writeOXAConfigToXml(list, path("c.oxa"));
    QStringList samples;
    for (int i = 0; i < kWords + 20; ++i)
        samples += QString::number(random(), 2).rightJustified(kSignals, '0');
    const QString wave = writeFile(path("w.vcd"), vcdOf(core.dataSignals(), samples, {"clk"}));
    const Result result = oxa({"simulate", path("c.oxa"), "--part", "QX3A-10ALV-QFN88-C8",
        "--stimulus", wave, "-o", path("out.csv"), "--keep-work", path("kept")});
    QVERIFY2(result.status == 0, qPrintable(result.err));

    QProcess vvp;
    const QString port = serve(vvp);
    OXA_CAPTURE::StreamSocket control;
    QByteArray played;
    QVERIFY(control.connectTo("unix:" + path("control")));
    QVERIFY(control.exchange("run 5000\n", [](const QByteArray& so) { return so.endsWith('\n'); },
        played, {kPatience, kPatience, 1000}));
    const QString log = openocd(port,
        QString("source %1/tests/ip/cores/read_memory.tcl; echo read=[read_memory %2]")
            .arg(OXA_SOURCE_DIR)
            .arg(kWords * (kSignals + 1)));
    QString bits; // in the order of time
    const QString fields = log.section("read=", 1).section('\n', 0, 0);
    const int widths[] = {2, kWords * (kSignals + 1), 57};
    for (int field = 0; field < 3; ++field) {
        QString part;
        const QString digits = fields.section(' ', field, field);
        for (int i = digits.size() - 1; i >= 0; --i) {
            const int digit = digits.mid(i, 1).toInt(nullptr, 16);
            for (int bit = 0; bit < 4; ++bit)
                part += digit >> bit & 1 ? '1' : '0';
        }
        bits += part.leftJustified(widths[field], '0', true);
    }
    const int begin = bits.indexOf('1') + 1;
    QVERIFY2(begin > 0, qPrintable(log));
    const QList<QByteArray> rows = bytesOf(path("out.csv")).split('\n');
    QCOMPARE(rows.size(), kWords + 2); // a heading, and nothing behind the last line
    for (int word = 0; word < kWords; ++word) {
        QByteArray row = rows.at(word + 1); // core, window, sample, trigger, signals
        const QByteArray expected = row.replace(',', "").right(kSignals);
        QByteArray read = bits.mid(begin + word * (kSignals + 1), kSignals).toLatin1();
        std::reverse(read.begin(), read.end());
        QCOMPARE(read, expected);
    }
    vvp.kill();
    finished(vvp);
}

void TestSimulatedCores::damagedAnswersAreNotTaken()
{
    using namespace OXA_CAPTURE;
    oxa(randomCall(0, 1) + QStringList {"--keep-work", path("kept")});
    QProcess vvp;
    vvp.start("vvp",
        {"-n", "-M", OXA_BINARY_DIR "/lib/oxautils", "-m", "oxa_target", path("kept/target.vvp"),
            "+oxa_jtag=unix:" + path("jtag")});
    RemoteBitbangLink good;
    good.setPatience(isWorthWaiting);
    while (!good.connectTo("unix:" + path("jtag")))
        QVERIFY2(!vvp.waitForFinished(10), "the target does not run");
    const BitString er1(8, 5);
    quint32 truth = 0;
    AnalyzerClient sure(good, er1);
    QVERIFY(sure.begin() && sure.readFingerprint(0, truth));

    BadLink bad(good, 1);
    AnalyzerClient client(bad, er1);
    int taken = 0;
    for (int i = 0; i < 1000; ++i) {
        quint32 fingerprint = 0;
        if (!client.readFingerprint(0, fingerprint))
            continue;
        QCOMPARE(fingerprint, truth);
        ++taken;
    }
    QVERIFY(taken > 400); // three tries each
    vvp.kill();
    finished(vvp);
    quint32 none = 0;
    QVERIFY(!sure.readFingerprint(0, none));
}

QTEST_APPLESS_MAIN(TestSimulatedCores)
#include "test_simulated_cores.moc"
