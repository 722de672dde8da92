// SPDX-License-Identifier: Apache-2.0
#include "capture_fixture.h"

#include "support/files.h"
#include "support/oxa_program.h"
#include "support/processes.h"
#include "support/rows.h"
#include "support/serial_proxy.h"

#include <QtTest>

namespace {

struct Line {
    const char* what;
    int lost, doubled, flipped; // of a thousand characters
};

const Line kLines[] = {
    {"clean",   0, 0, 0},
    {"damaged", 4, 3, 3},
};

}

// Captures through a UART link whose line damages characters: right or refused, never wrong.
class TestSerialCapture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void damagedLines_data() { addRows(kLines); }
    void damagedLines();
    void noAnalyzer();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
    Service m_target;
    QString m_device;
    QByteArray m_expected;
};

void TestSerialCapture::initTestCase()
{
    m_expected = modelCapture(m_dir.path());
    QVERIFY(!m_expected.isEmpty());
    m_target.start(OXA_PROGRAM,
        {"target", path("c.oxa"), "--link", "uart", "--simulator", "verilator", "--part", kPart,
            "--stimulus", path("wave.vcd")});
    m_device = m_target.after("waits at ").split(';').first();
    QVERIFY2(!m_device.isEmpty(), m_target.said());
}

// OXA_SERIAL_CAPTURES sets another number of captures a line.
void TestSerialCapture::damagedLines()
{
    const Line& line = rowOf(kLines);
    const int captures = std::max(1, qEnvironmentVariableIntValue("OXA_SERIAL_CAPTURES"));
    int whole = 0;
    QStringList errors;
    for (int run = 0; run < captures; ++run) {
        SerialProxy proxy;
        proxy.lost = line.lost;
        proxy.doubled = line.doubled;
        proxy.flipped = line.flipped;
        writeFile(path("c.csv"), "old");
        const Result result
            = oxa({"capture", path("c.oxa"), "--serial", proxy.start(m_device, unsigned(run) + 1),
                "-o", path("c.csv"), "--timeout", patienceSeconds()});
        whole += result.status == 0 ? 1 : 0;
        errors += result.err.trimmed();
        QCOMPARE(bytesOf(path("c.csv")), result.status == 0 ? m_expected : QByteArray("old"));
        QVERIFY2(result.status == 0 || !result.err.isEmpty(), qPrintable(result.err));
    }
    qInfo("%d of %d captures whole; %s", whole, captures, qPrintable(errors.join("; ")));
    QVERIFY(whole > captures / 2);
}

void TestSerialCapture::noAnalyzer()
{
    m_target.end();
    const Result result = oxa({"capture", path("c.oxa"), "--serial", "/dev/null"});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.err.contains("/dev/null: "), qPrintable(result.err));
}

QTEST_GUILESS_MAIN(TestSerialCapture)
#include "test_serial_capture.moc"
