// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/openocd_link.h"
#include "oxacapture/target/remote_bitbang_link.h"
#include "support/processes.h"
#include "support/talking_server.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

#include <future>
#include <netdb.h>
#include <random>

using namespace OXA_CAPTURE;

namespace {

const BitString kEr1(8, 5);

// Bits of all kinds: noise, and runs of zeros and ones of any length.
BitString mixedBits(unsigned seed, int size)
{
    std::minstd_rand random(seed);
    BitString bits;
    while (bits.size() < size) {
        const int run = std::min(1 << int(random() % 13), size - bits.size());
        const unsigned kind = random() % 3;
        for (int i = 0; i < run; ++i)
            bits.append(kind == 2 ? bool(random() >> 8 & 1) : bool(kind));
    }
    return bits;
}

// What a server sends that is neither OpenOCD nor a target, and what the link reports.
struct Talk {
    const char* what;
    bool isOpenOcd; // that the link expects
    QByteArray text;
    int pause;
    const char* error;
};

QByteArray chainOf(int taps)
{
    QByteArray text = "0 ";
    for (int tap = 0; tap < taps; ++tap)
        text += 't' + QByteArray::number(tap) + " \n";
    return text + '\x1a';
}

const QByteArray kMuch(100000, '0');
const QByteArray kLongChain = chainOf(300);

const Talk kTalks[] = {
    {"a byte now and then, OpenOCD",   true,  "0",        500, "its answer is not complete after 10 s"      },
    {"a byte now and then, pads",      false, "0",        500, "its answer is not complete after 10."       },
    {"more and more, OpenOCD",         true,  kMuch,      0,   "its answer has more than the 65536 bytes"   },
    {"more and more, pads",            false, kMuch,      0,   "its answer has more than the 24 bytes"      },
    {"a chain that is none",           true,  kLongChain, -1,  "300 devices in the chain, more than the 256"},
    {"nothing, until a stop, OpenOCD", true,  "",         -1,  "interrupted during the wait"                },
    {"nothing, until a stop, pads",    false, "",         -1,  "interrupted during the wait"                },
};

// What the link that listens to it says.
QString errorOf(const Talk& talk)
{
    TalkingServer server(talk.text, talk.pause);
    int asked = 0;
    const auto goesOn = [&] { return ++asked < 3 || !talk.text.isEmpty(); };
    if (talk.isOpenOcd) {
        OpenOcdLink link;
        link.setGoesOn(goesOn);
        return link.connectTo(server.address()) ? QString() : link.error();
    }
    RemoteBitbangLink link;
    link.setGoesOn(goesOn);
    BitString in;
    return link.connectTo(server.address()) && link.scanDr(BitString(0, 24), &in) ? QString()
                                                                                  : link.error();
}

}

// OpenOCD, with a target whose register behind ER1 has 8 bits.
class TestOpenOcdLink : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void scansOfAnySize_data();
    void scansOfAnySize();
    void oneProgramAtATime();
    void serversThatAreNone();
    void serversThatNeverEnd();

private:
    QTemporaryDir m_dir;
    Service m_target;
    Service m_openocd;
    QString m_address;
};

void TestOpenOcdLink::initTestCase()
{
    QProcess iverilog;
    iverilog.start("iverilog",
        {"-g2005", "-o", m_dir.filePath("tb.vvp"), "-y", OXA_BINARY_DIR "/share/oxautils/sim",
            OXA_SOURCE_DIR "/tests/ip/sim/echo_tb.v"});
    QVERIFY(finished(iverilog));
    m_target.start("vvp",
        {"-n", "-M", OXA_BINARY_DIR "/lib/oxautils", "-m", "oxa_target", m_dir.filePath("tb.vvp"),
            "+oxa_jtag=tcp:0"});
    m_address = startOpenOcd(m_openocd, m_target.after("at port "));
    QVERIFY2(!m_address.isEmpty(), m_openocd.said());
}

void TestOpenOcdLink::scansOfAnySize_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("most");
    for (const int size : {9, 64, 255, 256, 257, 33833})
        QTest::addRow("%d bits", size) << size << 0;
    // What takes most bits: 16 expressions of 16 units.
    QTest::addRow("tables") << (16 << 16) << 0;
    for (const int most : {16, 255, 300})
        QTest::addRow("at most %d bits in a scan", most) << 10200 << most;
}

// What goes in comes out behind the register's eight bits.
void TestOpenOcdLink::scansOfAnySize()
{
    QFETCH(int, size);
    QFETCH(int, most);
    OpenOcdLink link;
    link.setScanBits(most);
    QVERIFY(link.connectTo(m_address) && link.selectTap("fpga.tap"));
    QVERIFY2(link.reset() && link.scanIr(link.instruction()), qPrintable(link.error()));
    const BitString out = mixedBits(unsigned(size), size);
    BitString in;
    const int before = link.commandCount();
    QVERIFY2(link.scanDrAfter(BitString(0xa5, 8), out, &in), qPrintable(link.error()));
    QCOMPARE(link.commandCount(), before + 1);
    QCOMPARE(in.size(), size);
    QCOMPARE(in.number(0, 8), quint64(0xa5));
    for (int bit = 8; bit < size; ++bit)
        QVERIFY2(in.at(bit) == out.at(bit - 8), qPrintable(QString("bit %1").arg(bit)));
}

// A second link would arm and read what the first one waits for.
void TestOpenOcdLink::oneProgramAtATime()
{
    OpenOcdLink first;
    OpenOcdLink second;
    QVERIFY(first.connectTo(m_address) && first.selectTap("fpga.tap") && first.reset());
    QVERIFY(second.connectTo(m_address) && second.selectTap("fpga.tap"));
    QVERIFY(!second.reset());
    QCOMPARE(second.error(), QString("OpenOCD: another program captures from this target"));
    // Until the first one seems to be gone.
    QTRY_VERIFY_WITH_TIMEOUT(second.reset(), kPatience);
    QVERIFY(!first.scanIr(kEr1));
    QCOMPARE(first.error(), QString("OpenOCD: another program took the target over"));
    {
        const OpenOcdLink unused;
    }
    QVERIFY(second.scanIr(kEr1));
}

void TestOpenOcdLink::serversThatAreNone()
{
    OpenOcdLink link;
    QVERIFY(!link.connectTo("no.such.host.invalid"));
    QVERIFY2(link.error().contains("no.such.host.invalid:6666: "), qPrintable(link.error()));
    QVERIFY(!link.connectTo("[::1]:1")); // the brackets are no part of the host
    QVERIFY2(!link.error().contains(gai_strerror(EAI_NONAME)), qPrintable(link.error()));
    QVERIFY(!link.connectTo(""));
}

// All at the same time: some links wait for seconds.
void TestOpenOcdLink::serversThatNeverEnd()
{
    std::vector<std::future<QString>> errors;
    for (const Talk& talk : kTalks)
        errors.push_back(std::async(std::launch::async, errorOf, std::cref(talk)));
    for (size_t i = 0; i < errors.size(); ++i) {
        const QString error = errors[i].get();
        QVERIFY2(error.contains(kTalks[i].error),
            qPrintable(QString("%1: %2").arg(kTalks[i].what, error)));
    }
}

QTEST_GUILESS_MAIN(TestOpenOcdLink)
#include "test_openocd_link.moc"
