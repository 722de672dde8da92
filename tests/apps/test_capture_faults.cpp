// SPDX-License-Identifier: Apache-2.0
#include "capture_fixture.h"

#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/remote_bitbang_link.h"
#include "support/files.h"
#include "support/jtag_proxy.h"
#include "support/live_target.h"
#include "support/oxa_program.h"
#include "support/rows.h"
#include "support/terminal.h"

#include <QtTest>

#include <csignal>

namespace {

constexpr int kReadOuts = 400;

// OpenOCD with an adapter that shifts up to 255 bits, in whole fields, and answers %1 for others.
constexpr char kCutsScansOff[] = R"(
rename drscan wholeDrscan
proc drscan {tap args} {
    set left 255
    set fields {}
    set zeros {}
    foreach {bits value} $args {
        if {$bits eq "-endstate" || $bits <= $left} {
            lappend fields $bits $value
        } else {
            lappend zeros %1
        }
        if {$bits ne "-endstate"} {set left [expr {$zeros eq {} ? $left - $bits : 0}]}
    }
    if {$zeros ne {}} {echo "cut off"}
    concat [wholeDrscan $tap {*}$fields] $zeros
})";

// What is said about a configuration that differs from that of the chip, and when its build is
// remembered; then nothing is said of what a run can change.
struct Edit {
    const char* what;
    const char* remembered;
    void (*edit)(OXA::AoCore& core);
};

constexpr char kOtherData[] = "the target was built from another configuration: the data signals"
                              " have other names or another order than in the chip; ";
const Edit kEdits[] = {
    {"counter of 0 bits instead of M0 of type \"Range\"",               "",
     [](OXA::AoCore& core) {
            core.matchUnits[0]->matchType = OXA::MatchRange;
            core.matchUnits[0]->value0 = "0010000001";
            core.expressions.removeLast();
        }                                                                                                                                                                                    },
    {"of the same shape, but values, expressions or memories differ",
     "the static expression 0 \"M0\" instead of \"M1\"",                                                            [](OXA::AoCore& core) { core.expressions[0] = "M1"; }                    },
    {"it has 256 words of memory instead of 512",                       "in the chip it has 256 words of memory",
     [](OXA::AoCore& core) { core.storageDepth = 512; }                                                                                                                                      },
    {"counter of 0 bits instead of M0 of type \"Basic w/edges\"",       "M0 does not detect edges",
     [](OXA::AoCore& core) {
            core.matchUnits[0]->matchType = OXA::MatchBasicEdges;
            core.matchUnits[0]->value0[0] = 'R';
        }                                                                                                                                                                                    },
    {kOtherData,                                                        "other data signals: n[9] instead of n[0]",
     [](OXA::AoCore& core) { core.signalList[0].subItems.swapItemsAt(0, 9); }                                                                                                                },
    {kOtherData,                                                        "other data signals: a,b instead of a,bt",
     [](OXA::AoCore& core) {
            core.signalList = {busOf("n", 10), signalOf("a,bt"), signalOf("op/x_y")};
        }                                                                                                                                                                                    },
    {"the signals of trigger port 1 have other names or another order",
     "at trigger port 1: a,b instead of",                                                                           [](OXA::AoCore& core) { core.triggers[1]->signalList.swapItemsAt(0, 1); }},
    {"the sample clock has another name than in the chip",              "the sample clock clk",
     [](OXA::AoCore& core) { core.sampleClock = "slow"; }                                                                                                                                    },
};

// Polls the device a.tap, and scans ours too, until it ends. In BYPASS, each of the three devices
// delays by a bit.
class Debugger {
public:
    int polls = 0;
    int wrongPolls = 0;

    explicit Debugger(const QString& address)
        : m_thread([this, address] { run(address); })
    {
    }
    ~Debugger() { end(); }

    void end()
    {
        m_over = true;
        if (m_thread.joinable())
            m_thread.join();
    }

private:
    void run(const QString& address)
    {
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", address.section(':', -1).toUShort());
        std::minstd_rand random(3);
        while (!m_over && socket.waitForConnected(kPatience)) {
            const quint32 bits = quint32(random());
            const bool isPoll = random() >> 8 & 1;
            const QString scan = isPoll ? "irscan a.tap 15; drscan a.tap 32 0x%1\x1a"
                : bits & 1              ? "irscan fpga.tap 1; drscan fpga.tap 32 0x%1\x1a"
                                        : "irscan fpga.tap 8; drscan fpga.tap 32 0x%1\x1a";
            socket.write(scan.arg(bits, 0, 16).toUtf8());
            QByteArray answer;
            while (!m_over && !answer.endsWith('\x1a')) {
                socket.waitForReadyRead(100);
                answer += socket.readAll();
            }
            if (!isPoll || m_over)
                continue;
            ++polls;
            wrongPolls += answer.chopped(1).toUInt(nullptr, 16) == bits << 3 ? 0 : 1;
        }
    }

    std::atomic<bool> m_over {false};
    std::thread m_thread; // the last: it uses the others
};

}

// What goes wrong between an engineer and a chip: never a wrong sample, always a word within time.
class TestCaptureFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void flippedBitsAreNeverDelivered();
    void flippedBitsBehindOpenOcd();
    void anotherClientOnTheChain();
    void anAdapterThatCutsScansOff();
    void openOcdRestarted();
    void clockThatStands();
    void anotherConfiguration_data() { addRows(kEdits); }
    void anotherConfiguration();
    void noTarget();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QStringList captureCall(const QString& address, const QStringList& more = {}) const;
    void wait(Terminal& terminal);
    void fails(const Result& result, int status, const QString& error);

    QTemporaryDir m_dir;
    LiveTarget m_live;
    QByteArray m_expected;
    const QStringList m_remembering {"OXA_REMEMBER=1", "XDG_DATA_HOME=" + path("data")};
};

void TestCaptureFaults::initTestCase()
{
    m_expected = modelCapture(m_dir.path());
    QVERIFY(!m_expected.isEmpty());
    oxa({"generate", path("c.oxa"), "--part", kPart, "--no-synthesis", "--work-dir", path("work")},
        m_remembering);
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
    constexpr int kWords = 16;
    QCOMPARE(oxa(captureCall(m_live.address())).status, 0);
    m_live.openocd.end();
    std::vector<CoreIdentity> cores;
    BitString expected;
    {
        RemoteBitbangLink link;
        AnalyzerClient client(link, BitString(8, 5));
        QVERIFY(link.connectTo("127.0.0.1:" + m_live.port()) && client.begin());
        QVERIFY(client.discover(cores) && client.readMemory(cores.front(), kWords, expected));
    }

    JtagProxy proxy;
    proxy.flips = 700;
    proxy.flipsControl = true;
    RemoteBitbangLink link;
    QVERIFY(link.connectTo("127.0.0.1:" + proxy.start(m_live.port())));
    AnalyzerClient client(link, BitString(8, 5));
    int delivered = 0;
    bool selected = false;
    for (int i = 0; i < kReadOuts; ++i) {
        BitString memory;
        selected = selected || client.begin();
        selected = selected && client.readMemory(cores.front(), kWords, memory);
        if (!selected)
            continue;
        ++delivered;
        for (int bit = 0; bit < expected.size(); ++bit)
            QCOMPARE(memory.at(bit), expected.at(bit));
    }
    QVERIFY(delivered > kReadOuts / 2);
    QVERIFY(delivered < kReadOuts); // or there were no flips
    QVERIFY(m_live.connectOpenOcd());
}

void TestCaptureFaults::flippedBitsBehindOpenOcd()
{
    JtagProxy proxy;
    proxy.flips = 3000;
    const QByteArray port = proxy.start(m_live.port());
    m_live.openocd.end();
    int whole = 0;
    for (int run = 0; run < 3; ++run) {
        Service openocd;
        const QString address = startOpenOcd(openocd, port);
        const Result result = oxa(captureCall(address));
        QVERIFY2(result.status == 0 || (result.status == 1 && !result.err.isEmpty()),
            qPrintable(result.err));
        QCOMPARE(bytesOf(path("live.csv")), result.status == 0 ? m_expected : QByteArray("old"));
        whole += result.status == 0 ? 1 : 0;
    }
    QVERIFY(whole > 0);
    QVERIFY(m_live.connectOpenOcd());
}

// Behind two devices, of which a debugger polls one, and scans ours now and then.
// OXA_SHARED_CAPTURES: how many captures.
void TestCaptureFaults::anotherClientOnTheChain()
{
    JtagProxy proxy;
    proxy.before = 2;
    const QByteArray port = proxy.start(m_live.port());
    m_live.openocd.end();
    Service openocd;
    const QString address = startOpenOcd(openocd, port,
        kOwnTap + QByteArray("; jtag newtap a tap -irlen 4; jtag newtap b tap -irlen 4"));
    QVERIFY2(!address.isEmpty(), openocd.said());
    fails(oxa(captureCall(address)), 1, "with --tap");
    Result probed = oxa({"probe", "--openocd", address});
    QVERIFY2(probed.status == 1 && probed.out.contains("a.tap: not tried"), qPrintable(probed.out));
    probed = oxa({"probe", "--openocd", address, "--tap", "fpga.tap"});
    QVERIFY2(probed.status == 0, qPrintable(probed.err));
    Debugger debugger(address);
    QStringList errors;
    const int captures = std::max(5, qEnvironmentVariableIntValue("OXA_SHARED_CAPTURES"));
    for (int run = 0; run < captures; ++run) {
        errors += oxa(captureCall(address, {"--tap", "fpga.tap"})).err;
        if (bytesOf(path("live.csv")) != m_expected)
            errors += "other samples";
    }
    debugger.end();
    qInfo("%d captures, %d polls", captures, debugger.polls);
    QCOMPARE(errors.join(""), QString());
    QVERIFY(debugger.polls > 50);
    QCOMPARE(debugger.wrongPolls, 0);
    openocd.end();
    QVERIFY(m_live.connectOpenOcd());
}

void TestCaptureFaults::anAdapterThatCutsScansOff()
{
    m_live.openocd.end();
    for (const char* rest : {"0", "[string repeat 0 [expr {($bits + 3) / 4}]]"}) {
        Service openocd;
        const QByteArray adapter = QByteArray(kCutsScansOff).replace("%1", rest);
        const QString address = startOpenOcd(openocd, m_live.port(), kOwnTap + adapter);
        const Result result = oxa(captureCall(address));
        QCOMPARE(result.err, QString());
        QCOMPARE(bytesOf(path("live.csv")), m_expected);
        QVERIFY(openocd.said().contains("cut off"));
    }
    QVERIFY(m_live.connectOpenOcd());
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
    const QStringList stop {"--stop-and-show", "--unit", "M0=1111111111"};
    const Result stopped = oxa(captureCall(m_live.address(), stop));
    QVERIFY2(stopped.err.contains("core 0 did not trigger: level 0 of 2"), qPrintable(stopped.err));
    QVERIFY(bytesOf(path("live.csv")).count("\n0,0,") > 20);
    fails(oxa(captureCall(m_live.address(), stop)), 1, "it is not armed, so there is no run to");
    QCOMPARE(oxa(captureCall(m_live.address())).status, 0);
}

void TestCaptureFaults::clockThatStands()
{
    const pid_t player = pid_t(m_live.target.processId());
    kill(player, SIGSTOP);
    fails(oxa(captureCall(m_live.address(), {"--timeout", "1"})), 1,
        "core 0 did not trigger: level 0 of 2 reached, M0 matched 0 times, M1 matched 0 times; its "
        "sample clock is stopped");
    // What was told to stop is on its way: another run could be mixed up with that one.
    fails(oxa(captureCall(m_live.address())), 1, "core 0: its sample clock is stopped");
    kill(player, SIGCONT);

    if (!Terminal::exists())
        QSKIP(Terminal::kNone);
    Terminal waiting;
    wait(waiting);
    kill(player, SIGSTOP);
    waiting.interrupt();
    QVERIFY(finished(waiting));
    const QString said = waiting.said();
    fails({waiting.exitCode(), {}, said}, 1, "its sample clock is stopped");
    kill(player, SIGCONT);
    Result again;
    do // on a busy machine the clock may take longer to go on than the client waits
        again = oxa(captureCall(m_live.address()));
    while (again.err.contains("so it is not at rest"));
    QVERIFY2(again.status == 0, qPrintable(again.err));
}

void TestCaptureFaults::anotherConfiguration()
{
    const Edit& row = rowOf(kEdits);
    const QByteArray own = bytesOf(path("c.oxa"));
    const auto core = countingCore(0, "clk");
    row.edit(*core);
    core->captureSignals = core->signalList;
    OXA::writeOXAConfigToXml({core.get()}, path("c.oxa"));
    QVERIFY(bytesOf(path("c.oxa")) != own);
    fails(oxa(captureCall(m_live.address())), 1, row.what);
    const Result known = oxa(captureCall(m_live.address()), m_remembering);
    QVERIFY2(known.err.contains("the chip was built from " + path("c.oxa")), qPrintable(known.err));
    const QByteArray captured = bytesOf(path("live.csv"));
    if (*row.remembered)
        fails(known, 2, row.remembered);
    else
        QCOMPARE(captured, modelOf(m_dir.path()));
    writeFile(path("c.oxa"), own);
}

void TestCaptureFaults::noTarget()
{
    fails(oxa(captureCall("127.0.0.1:1")), 1, "Connection refused; is it running?");
    QCOMPARE(oxa({"probe", "--openocd", "127.0.0.1:1"}).status, 1);
    fails(oxa(captureCall("127.0.0.1:65537")), 1, "is not a number from 1 to 65535");
    // What listens is no OpenOCD: the cores' own port.
    fails(oxa(captureCall("127.0.0.1:" + m_live.port())), 1, "error: ");
    m_live.target.terminate();
    QVERIFY(finished(m_live.target));
    QCOMPARE(m_live.target.exitCode(), 0);
    fails(oxa(captureCall(m_live.address())), 1, "OpenOCD");
}

QTEST_GUILESS_MAIN(TestCaptureFaults)
#include "test_capture_faults.moc"
