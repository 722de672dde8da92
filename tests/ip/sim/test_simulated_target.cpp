// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/remote_bitbang_link.h"
#include "support/files.h"
#include "support/patience.h"

#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace OXA_CAPTURE;

namespace {

constexpr int kIrEr1 = 8;
const QString kModels = OXA_BINARY_DIR "/share/oxautils/sim";
const QString kModules = OXA_BINARY_DIR "/lib/oxautils";

}

class TestSimulatedTarget : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aLostClientMakesRoomForTheNext();
    void aClientThatNeverListens();
    void saysWhatItCannotDo();

private:
    void start(QProcess& vvp, const QStringList& options);
    void connectTo(QLocalSocket& socket, const QString& name);
    QByteArray ask(QLocalSocket& socket, const QByteArray& question);
    quint64 scan(RemoteBitbangLink& link, int width, quint64 value);
    QString path(const QString& name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
};

void TestSimulatedTarget::initTestCase()
{
    QProcess iverilog;
    iverilog.start("iverilog",
        {"-g2012", "-o", path("tb.vvp"), "-y", kModels, OXA_SOURCE_DIR "/tests/ip/sim/echo_tb.v"});
    QVERIFY2(finished(iverilog), qPrintable(iverilog.errorString()));
    QCOMPARE(iverilog.readAllStandardError(), QByteArray());
}

void TestSimulatedTarget::start(QProcess& vvp, const QStringList& options)
{
    vvp.start(
        "vvp", QStringList {"-n", "-M", kModules, "-m", "oxa_target", path("tb.vvp")} + options);
    QVERIFY(vvp.waitForStarted(kPatience));
}

void TestSimulatedTarget::connectTo(QLocalSocket& socket, const QString& name)
{
    const QDeadlineTimer deadline(kPatience);
    do {
        QTest::qSleep(5);
        socket.abort();
        socket.connectToServer(path(name));
    } while (!socket.waitForConnected(kPatience) && !deadline.hasExpired());
    QCOMPARE(socket.state(), QLocalSocket::ConnectedState);
}

QByteArray TestSimulatedTarget::ask(QLocalSocket& socket, const QByteArray& question)
{
    socket.write(question + '\n');
    while (!socket.canReadLine() && socket.waitForReadyRead(kPatience)) { }
    return socket.readLine().trimmed();
}

quint64 TestSimulatedTarget::scan(RemoteBitbangLink& link, int width, quint64 value)
{
    BitString in;
    return link.scanDr(BitString(value, width), &in) ? in.number(0, width) : ~quint64(0);
}

void TestSimulatedTarget::aLostClientMakesRoomForTheNext()
{
    QProcess vvp;
    start(vvp, {"+oxa_jtag=unix:" + path("lost")});
    {
        QLocalSocket first;
        connectTo(first, "lost");
        first.write("262626262604"
                    "260404"
                    "0R40R4"); // in the middle of reading the code
        QVERIFY(first.waitForBytesWritten(kPatience));
        QLocalSocket second;
        second.connectToServer(path("lost"));
        QVERIFY(second.waitForDisconnected(kPatience)); // one at a time
        first.abort();
    }
    // The server refuses other clients until it notices that the first one left.
    std::unique_ptr<RemoteBitbangLink> taken;
    const auto isTaken = [&] {
        taken = std::make_unique<RemoteBitbangLink>();
        return taken->connectTo("unix:" + path("lost")) && taken->reset();
    };
    const auto readsCode = [&] { // what goes in follows the code
        return isTaken() && scan(*taken, 40, 0xab) == quint64(0xab10a0affd);
    };
    QTRY_VERIFY_WITH_TIMEOUT(readsCode(), kPatience);
    RemoteBitbangLink& next = *taken;
    QVERIFY(next.scanIr(BitString(kIrEr1, 5)));
    scan(next, 8, 0x3c);
    QCOMPARE(scan(next, 8, 0), quint64(0x3c));
    vvp.terminate();
    QVERIFY(finished(vvp));
    BitString in;
    QVERIFY(!next.scanDr(BitString(0, 64), &in));
    QVERIFY2(next.error().startsWith("JTAG: "), qPrintable(next.error()));
}

// It asks for more bits than all buffers hold; the other client still gets answers.
void TestSimulatedTarget::aClientThatNeverListens()
{
    QProcess vvp;
    start(vvp, {"+oxa_jtag=unix:" + path("deaf"), "+oxa_control=unix:" + path("control")});
    QLocalSocket control;
    QLocalSocket deaf;
    connectTo(control, "control");
    connectTo(deaf, "deaf");
    deaf.setReadBufferSize(1);
    deaf.write(QByteArray(16 << 20, 'R'));
    while (deaf.waitForBytesWritten(1000)) { }
    QVERIFY(deaf.bytesToWrite() > 0);
    QCOMPARE(ask(control, "play 2 18\n" + QByteArray(9, '\0') + QByteArray(8, '\1')),
        QByteArray("error step 2 is not whole")); // it has another 4 bytes
    QCOMPARE(ask(control, "look echo_tb.tck"), QByteArray("saw 0"));
    control.disconnectFromServer();
    QVERIFY(finished(vvp)); // with its control client
    QCOMPARE(vvp.exitCode(), 0);
    QVERIFY(!QFile::exists(path("control")));
}

void TestSimulatedTarget::saysWhatItCannotDo()
{
    const struct {
        QStringList options;
        const char* message;
    } rows[] = {
        {{},                               "+oxa_jtag or +oxa_control is required"  },
        {{"+oxa_jtag=here"},               "cannot listen at here: Invalid argument"},
        {{"+oxa_jtag=unix:/nowhere/jtag"}, "cannot listen at unix:/nowhere/jtag"    },
    };
    for (const auto& row : rows) {
        QProcess vvp;
        start(vvp, row.options);
        QVERIFY(finished(vvp));
        const QByteArray said = vvp.readAllStandardOutput();
        QVERIFY2(said.contains(row.message), said);
        QCOMPARE(vvp.exitCode(), 1);
    }
}

QTEST_GUILESS_MAIN(TestSimulatedTarget)
#include "test_simulated_target.moc"
