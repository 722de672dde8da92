#include "capture_fixture.h"

#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/remote_bitbang_link.h"
#include "oxautils/config/lite_config.h"
#include "support/files.h"
#include "support/jtag_proxy.h"
#include "support/live_target.h"
#include "support/oxa_program.h"
#include "support/terminal.h"

#include <QtTest>

#include <csignal>

namespace {

constexpr int kReadOuts = 10000;

// Chains of our device, fpga.tap, with others.
struct Chain {
    const char* what;
    int before, after;
    const char* taps;
};

// What differs in a configuration from that of the chip, and what is said about it.
struct Edit {
    const char* what;
    void (*edit)(OXA::AoCore& core);
    const char* error;
};

constexpr char kOtherData[] = "core 0: the target was built from another configuration: the data"
                              " signals have other names or another order than in the chip; ";
constexpr char kOtherPort[] = "the signals of trigger port 1 have other names or another order";
const Edit kEdits[] = {
    {"a value",                      [](OXA::AoCore& core) { core.matchUnits[0]->value0 = "0010000001"; },
     "of the same shape, but values, expressions or memories differ"                                                            },
    {"depth",                        [](OXA::AoCore& core) { core.storageDepth = 512; },
     "it has 256 words of memory instead of 512"                                                                                },
    {"type",                         [](OXA::AoCore& core) { core.matchUnits[0]->matchType = OXA::MatchBasicEdges; },
     "M0 of type \"Basic\" at T0, counter of 0 bits instead of M0 of type \"Basic w/edges\""                                    },
    {"two data signals exchanged",   [](OXA::AoCore& core) { core.signalList.swapItemsAt(1, 2); },
     kOtherData                                                                                                                 },
    {"two bits of a bus exchanged",
     [](OXA::AoCore& core) { core.signalList[0].subItems.swapItemsAt(0, 9); },                                        kOtherData},
    {"a data signal renamed",        [](OXA::AoCore& core) { core.signalList[1].name = "c"; },                        kOtherData},
    {"names that are the same text",
     [](OXA::AoCore& core) {
            core.signalList[1].name = "a,bt";
            core.signalList[2].name = "op/x_y";
        },                                                                                                            kOtherData},
    {"a name of any text",
     [](OXA::AoCore& core) {
            core.signalList[2].name = QString::fromUtf8("größe \"`\\\n%1$fopen \u202e\U0001f600");
        },                                                                                                            kOtherData},
    {"a port at another signal",
     [](OXA::AoCore& core) { core.triggers[1]->signalList[0].name = "n[3]"; },                                        kOtherPort},
    {"a port's signals exchanged",
     [](OXA::AoCore& core) { core.triggers[1]->signalList.swapItemsAt(0, 1); },                                       kOtherPort},
    {"another sample clock",         [](OXA::AoCore& core) { core.sampleClock = "slow"; },
     "the sample clock has another name than in the chip"                                                                       },
};

constexpr char kOwn[] = "jtag newtap fpga tap -irlen 5 -expected-id 0x10a0affd";
constexpr Chain kChains[] = {
    {"one before",          1, 0, "%1; jtag newtap cpu tap -irlen 4"                           },
    {"one behind",          0, 1, "jtag newtap cpu tap -irlen 4; %1"                           },
    {"three on both sides", 2, 1,
     "jtag newtap cpu tap -irlen 4; %1; jtag newtap a tap -irlen 4; jtag newtap b tap -irlen 4"},
};

}

// What goes wrong between an engineer and a chip: never a wrong sample, always a word within time.
class TestCaptureFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void flippedBitsAreNeverDelivered();
    void flippedBitsBehindOpenOcd();
    void otherDevicesInTheChain_data();
    void otherDevicesInTheChain();
    void anotherClientOnTheChain();
    void openOcdRestarted();
    void clockThatStands();
    void anotherConfiguration_data();
    void anotherConfiguration();
    void noTarget();
    void targetsComeAndGo();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QStringList captureCall(const QString& address, const QStringList& more = {}) const;
    void wait(Terminal& terminal);
    void fails(const Result& result, int status, const QString& error);

    QTemporaryDir m_dir;
    LiveTarget m_live;
    QByteArray m_expected;
};

void TestCaptureFaults::initTestCase()
{
    writeFile(path("wave.vcd"), countingWaveform());
    const auto core = countingCore(0, "clk");
    OXA::writeOXAConfigToXml({core.get()}, path("c.oxa"));
    QCOMPARE(oxa({"simulate", path("c.oxa"), "--part", kPart, "--stimulus", path("wave.vcd"),
                     "--model", "-o", path("live.csv")})
                 .status,
        0);
    m_expected = bytesOf(path("live.csv"));
    QVERIFY2(m_live.start(path("c.oxa"), path("wave.vcd")), m_live.target.said());
}

// The output file is there beforehand: nothing but a whole capture replaces it.
QStringList TestCaptureFaults::captureCall(const QString& address, const QStringList& more) const
{
    writeFile(path("live.csv"), "old");
    const QStringList call {"capture", path("c.oxa"), "--openocd", address, "-o", path("live.csv")};
    const QStringList patience {"--timeout", patienceSeconds()};
    return call + more + (more.contains("--timeout") ? QStringList() : patience);
}

void TestCaptureFaults::fails(const Result& result, int status, const QString& error)
{
    QVERIFY2(result.err.contains(error), qPrintable(result.err));
    QCOMPARE(result.status, status);
    QCOMPARE(bytesOf(path("live.csv")), QByteArray("old"));
    QCOMPARE(QDir(m_dir.path()).entryList({"live*"}), QStringList("live.csv"));
}

// Every wire of the link, TCK and TMS included.
void TestCaptureFaults::flippedBitsAreNeverDelivered()
{
    using namespace OXA_CAPTURE;
    OXA::AOCore_Lite lite;
    lite.sampleClock = "clk";
    lite.captureAmount = 16;
    lite.captureInitDataEnabled = true;
    lite.signalList = {busOf("n", 10)};
    OXA::writeOXAConfigToXml_Lite({&lite}, path("lite.oxa"));
    LiveTarget live;
    QVERIFY2(live.start(path("lite.oxa"), path("wave.vcd")), live.target.said());
    live.openocd.end();
    CoreIdentity core;
    core.lite = true;
    core.signalCount = 10;
    core.depth = lite.captureAmount;
    {
        RemoteBitbangLink link;
        AnalyzerClient client(link, BitString(8, 5));
        QVERIFY(link.connectTo("127.0.0.1:" + live.port()) && client.begin());
        CoreStatus status; // of the run from power-up on
        QTRY_VERIFY_WITH_TIMEOUT(client.readStatus(core, status) && status.finished, kPatience);
    }

    JtagProxy proxy;
    proxy.flips = 700;
    proxy.flipsControl = true;
    RemoteBitbangLink link;
    QVERIFY(link.connectTo("127.0.0.1:" + proxy.start(live.port())));
    AnalyzerClient client(link, BitString(8, 5));
    int delivered = 0;
    bool selected = false;
    for (int i = 0; i < kReadOuts; ++i) {
        BitString memory;
        selected = selected || client.begin();
        selected = selected && client.readMemory(core, lite.captureAmount, memory);
        if (!selected)
            continue;
        ++delivered;
        for (int sample = 0; sample < lite.captureAmount; ++sample)
            QCOMPARE(memory.number(10 * sample, 10), quint64(sample));
    }
    qInfo("%d of %d read-outs delivered", delivered, kReadOuts);
    QVERIFY(delivered > kReadOuts / 2);
    QVERIFY(delivered < kReadOuts); // or there were no flips
}

void TestCaptureFaults::flippedBitsBehindOpenOcd()
{
    JtagProxy proxy;
    proxy.flips = 3000;
    const QByteArray port = proxy.start(m_live.port());
    m_live.openocd.end();
    int whole = 0;
    for (int run = 0; run < 6; ++run) {
        Service openocd;
        const QString address = startOpenOcd(openocd, port, kOwn);
        const Result result = oxa(captureCall(address));
        QVERIFY2(result.status == 0 || (result.status == 1 && !result.err.isEmpty()),
            qPrintable(result.err));
        QCOMPARE(bytesOf(path("live.csv")), result.status == 0 ? m_expected : QByteArray("old"));
        whole += result.status == 0 ? 1 : 0;
    }
    QVERIFY(whole > 0);
    QVERIFY(m_live.connectOpenOcd());
}

void TestCaptureFaults::otherDevicesInTheChain_data()
{
    QTest::addColumn<int>("row");
    for (size_t i = 0; i < std::size(kChains); ++i)
        QTest::newRow(kChains[i].what) << int(i);
}

void TestCaptureFaults::otherDevicesInTheChain()
{
    QFETCH(int, row);
    const Chain& chain = kChains[row];
    JtagProxy proxy;
    proxy.before = chain.before;
    proxy.after = chain.after;
    const QByteArray port = proxy.start(m_live.port());
    m_live.openocd.end();
    Service openocd;
    const QString taps = QString(chain.taps).arg(kOwn);
    const QString address = startOpenOcd(openocd, port, taps.toUtf8());
    QVERIFY2(!address.isEmpty(), openocd.said());
    fails(oxa(captureCall(address)), 1, "with --tap");
    const Result result = oxa(captureCall(address, {"--tap", "fpga.tap"}));
    QCOMPARE(result.err, QString());
    QCOMPARE(bytesOf(path("live.csv")), m_expected);
    openocd.end();
    QVERIFY(m_live.connectOpenOcd());
}

// Scans of its own, in between, with its own instruction or with ours.
void TestCaptureFaults::anotherClientOnTheChain()
{
    std::atomic<bool> over {false};
    std::atomic<int> scans {0};
    std::thread other([&] {
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", m_live.address().section(':', -1).toUShort());
        std::minstd_rand random(3);
        while (!over && socket.waitForConnected(kPatience)) {
            const QString irscan = random() >> 8 & 1 ? "irscan fpga.tap 1; " : "";
            socket.write(
                QString("%1drscan fpga.tap 32 0x%2\x1a").arg(irscan).arg(random(), 0, 16).toUtf8());
            while (!over && !socket.readAll().contains('\x1a'))
                socket.waitForReadyRead(100);
            ++scans;
        }
    });
    QStringList errors;
    for (int run = 0; run < 5; ++run) {
        errors += oxa(captureCall(m_live.address())).err;
        if (bytesOf(path("live.csv")) != m_expected)
            errors += "other samples";
    }
    over = true;
    other.join();
    QCOMPARE(errors.join(""), QString());
    QVERIFY(scans > 50);
}

// Begins a capture whose trigger does not come, and returns when the core looks for it.
void TestCaptureFaults::wait(Terminal& terminal)
{
    const QStringList call = captureCall(m_live.address(), {"--unit", "M0=1111111111"});
    terminal.run(OXA_PROGRAM " " + call.join(' '));
    QVERIFY2(terminal.says("waiting for level"), terminal.said());
}

// In the middle of a wait.
void TestCaptureFaults::openOcdRestarted()
{
    if (!Terminal::exists())
        QSKIP(Terminal::kNone);
    Terminal waiting;
    wait(waiting);
    QVERIFY(m_live.connectOpenOcd());
    QVERIFY(finished(waiting));
    const QString said = waiting.said();
    fails({waiting.exitCode(), {}, said}, 1, "the other side closed the connection");
    QCOMPARE(oxa(captureCall(m_live.address())).status, 0);
}

void TestCaptureFaults::clockThatStands()
{
    const pid_t player = pid_t(m_live.target.processId());
    kill(player, SIGSTOP);
    fails(oxa(captureCall(m_live.address(), {"--timeout", "1"})), 1,
        "core 0 did not trigger: level 0 of 2 reached, M0 matched 0 times, M1 matched 0 times; its "
        "sample clock stands still");
    // What was told to stop is on its way: another run could be mixed up with that one.
    fails(oxa(captureCall(m_live.address())), 1, "core 0: its sample clock stands still");
    kill(player, SIGCONT);

    if (!Terminal::exists())
        QSKIP(Terminal::kNone);
    Terminal waiting;
    wait(waiting);
    kill(player, SIGSTOP);
    waiting.interrupt();
    QVERIFY(finished(waiting));
    const QString said = waiting.said();
    fails({waiting.exitCode(), {}, said}, 1, "its sample clock stands still");
    kill(player, SIGCONT);
    Result again;
    do // on a busy machine the clock may take longer to go on than the client waits
        again = oxa(captureCall(m_live.address()));
    while (again.err.contains("does not come to rest"));
    QVERIFY2(again.status == 0, qPrintable(again.err));
}

void TestCaptureFaults::anotherConfiguration_data()
{
    QTest::addColumn<int>("row");
    for (size_t i = 0; i < std::size(kEdits); ++i)
        QTest::newRow(kEdits[i].what) << int(i);
}

void TestCaptureFaults::anotherConfiguration()
{
    QFETCH(int, row);
    const QByteArray own = bytesOf(path("c.oxa"));
    const auto core = countingCore(0, "clk");
    kEdits[row].edit(*core);
    core->captureSignals = core->signalList;
    OXA::writeOXAConfigToXml({core.get()}, path("c.oxa"));
    QVERIFY(bytesOf(path("c.oxa")) != own);
    fails(oxa(captureCall(m_live.address())), 1, kEdits[row].error);
    writeFile(path("c.oxa"), own);
}

void TestCaptureFaults::noTarget()
{
    fails(oxa(captureCall("127.0.0.1:1")), 1, "Connection refused; is it running?");
    fails(oxa(captureCall("127.0.0.1:65537")), 1, "is no number from 1 to 65535");
    Service openocd;
    openocd.start("openocd",
        {"-c",
            "adapter driver dummy; jtag newtap fpga tap -irlen 5; gdb_port disabled;"
            " telnet_port disabled; tcl_port 0"});
    const QString port = openocd.after("Listening on port ").split(' ').first();
    fails(oxa(captureCall("127.0.0.1:" + port)), 1, "error: ");
    // What listens is no OpenOCD: the cores' own port.
    fails(oxa(captureCall("127.0.0.1:" + m_live.port())), 1, "error: ");
    // What listens says nothing, and Ctrl-C does not wait for it.
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    Service waiting;
    waiting.start(OXA_PROGRAM, captureCall(QString("127.0.0.1:%1").arg(silent.serverPort())));
    QVERIFY(silent.waitForNewConnection(kPatience));
    waiting.terminate();
    QVERIFY(finished(waiting));
    fails({waiting.exitCode(), {}, waiting.said()}, 1, "interrupted while it was waited for");
}

void TestCaptureFaults::targetsComeAndGo()
{
    const QStringList call {"target", path("c.oxa"), "--part", kPart, "--stimulus",
        path("wave.vcd"), "--port", m_live.port()};
    const Result taken = oxa(call);
    QCOMPARE(taken.status, 1);
    QVERIFY2(taken.err.contains("Address already in use"), qPrintable(taken.err));
    m_live.target.terminate();
    QVERIFY(finished(m_live.target));
    QCOMPARE(m_live.target.exitCode(), 0);
    QTcpSocket socket;
    socket.connectToHost("127.0.0.1", m_live.port().toUShort());
    QVERIFY(!socket.waitForConnected(1000));
    fails(oxa(captureCall(m_live.address())), 1, "OpenOCD");
}

QTEST_GUILESS_MAIN(TestCaptureFaults)
#include "test_capture_faults.moc"
