// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/capture_result.h"
#include "oxacapture/target/window_decoder.h"

#include "oxacapture/sample_text.h"
#include "support/files.h"
#include "support/patience.h"
#include "support/signals.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace OXA_CAPTURE;

namespace {

constexpr int kManySamples = 20000; // more than are written at once

// With the two together a sigrok session is larger than 2^31 bytes.
constexpr int kMostSamples = 1 << 20;
constexpr int kMostBits = 1 << 15;

// Core 3 takes two windows of a bus and a signal of its own, core 7 has no triggers.
Capture twoCores()
{
    const SampleTable first = samplesOf({"100 011 1x0 000 111"});
    CapturedCore core3;
    core3.index = 3;
    core3.items = {signalOf("count", {"count[1]", "count[0]"}), signalOf("a,b")};
    core3.windows = cutWindows(
        {
            {0, 2, 1},
            {3, 1, 3}
    },
        first);
    CapturedCore core7;
    core7.index = 7;
    core7.items = {signalOf("trigger"), signalOf("a,b"), signalOf("a,b")};
    core7.windows = cutWindows(
        {
            {0, 4, kNoSample}
    },
        samplesOf({"100 011 0xx 000"}));
    return {core3, core7};
}

// A window of `samples` samples of `width` bits, all of them 1 at two of three samples.
CapturedCore wideCore(qint64 samples, int width)
{
    CapturedCore core;
    for (int bit = 0; bit < width; ++bit)
        core.items += signalOf(QString("d%1").arg(bit));
    SampleTable table(SampleLayout({width}));
    std::vector<quint64> row(size_t(table.layout().rowWords()));
    for (qint64 sample = 0; sample < samples; ++sample) {
        std::fill(row.begin(), row.begin() + table.layout().words(0), sample % 3 ? ~0ull : 0);
        table.append(row.data());
    }
    core.windows = cutWindows(
        {
            {0, samples, 0}
    },
        table);
    return core;
}

}

class TestCaptureFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void csv();
    void vcd();
    void sigrok();
    void sigrokOfManySamples();
    void samplesOfACoreThatWaits();
    void aShortWindowBeginsWithItsTrigger();
    void aStoppedFileStaysAsItWas();

private:
    QByteArray written(const QString& name, const Capture& capture);

    QTemporaryDir m_dir;
};

QByteArray TestCaptureFiles::written(const QString& name, const Capture& capture)
{
    QString error;
    return writeCapture(m_dir.filePath(name), capture, &error) ? bytesOf(m_dir.filePath(name))
                                                               : error.toUtf8();
}

void TestCaptureFiles::csv()
{
    QCOMPARE(written("out.csv", twoCores()),
        QByteArray("core,window,sample,trigger,count[1],count[0],\"a,b\",trigger\n"
                   "3,0,0,0,1,0,0,\n"
                   "3,0,1,1,0,1,1,\n"
                   "3,1,0,1,0,0,0,\n"
                   "7,0,0,0,,,0,1\n"
                   "7,0,1,0,,,1,0\n"
                   "7,0,2,0,,,x,0\n"
                   "7,0,3,0,,,0,0\n"));
    CapturedCore idle;
    idle.items = {signalOf("d")};
    QCOMPARE(written("idle.CSV", {idle}), QByteArray("core,window,sample,trigger,d\n"));
    // To a spreadsheet these are formulas, or become some.
    idle.items = {signalOf("=1+1"), signalOf("-a"), signalOf("+"), signalOf("@x"), signalOf("\t=y"),
        signalOf("'z"), signalOf("a;=\"b\""), signalOf("c=-d")};
    QCOMPARE(written("formulas.csv", {idle}),
        QByteArray("core,window,sample,trigger,\"'=1+1\",\"'-a\",\"'+\",\"'@x\",\"'\t'=y\",\"''z\","
                   "\"a;'=\"\"b\"\"\",c=-d\n"));
}

void TestCaptureFiles::vcd()
{
    QCOMPARE(QString(written("out.vcd", twoCores())).section("$timescale 1 ns $end\n", 1),
        QString("$scope module core3 $end\n"
                "$var wire 2 ! count [1:0] $end\n"
                "$var wire 1 \" a,b $end\n"
                "$var wire 1 # trigger $end\n"
                "$var integer 32 $ window $end\n"
                "$upscope $end\n"
                "$scope module core7 $end\n"
                "$var wire 1 % trigger $end\n"
                "$var wire 1 & a,b $end\n"
                "$var wire 1 ' oxa_trigger $end\n"
                "$var integer 32 ( window $end\n"
                "$upscope $end\n"
                "$enddefinitions $end\n"
                "#0\nb00 $\nb10 !\n0\"\n0#\nb00 (\n1%\n0&\n0'\n"
                "#1\nb01 !\n1\"\n1#\n0%\n1&\n"
                "#2\nb01 $\nb00 !\n0\"\n1#\nx&\n"
                "#3\nbxx !\nx\"\nx#\nbxx $\n0&\n"
                "#4\n"));
    Capture timed = twoCores();
    timed[0].clockHz = timed[1].clockHz = 27e6;
    const QByteArray text = written("timed.vcd", timed);
    QVERIFY(text.contains("$timescale 1 ps $end\n") && text.contains("\n#37037\n"));
}

void TestCaptureFiles::sigrok()
{
    QVERIFY(written("out.sr", twoCores()).startsWith("PK"));
    QProcess reader;
    reader.start("sigrok-cli", {"-i", m_dir.filePath("out.sr")});
    QVERIFY2(finished(reader), qPrintable(reader.errorString()));
    QCOMPARE(QString(reader.readAllStandardOutput()).section("channels\n", 1),
        QString("count[1]:1000\n"
                "count[0]:0100\n"
                "core3.a,b:0100\n"
                "core3.trigger:0110\n"
                "core3.window:0010\n"
                "core7.trigger:1000\n"
                "core7.a,b:0100\n"
                "oxa_trigger:0000\n"
                "core7.window:0000\n"));
}

void TestCaptureFiles::sigrokOfManySamples()
{
    QVERIFY(written("many.sr", {wideCore(kManySamples, 1)}).startsWith("PK"));
    QProcess reader;
    reader.start("sigrok-cli", {"-i", m_dir.filePath("many.sr"), "-O", "binary"});
    QVERIFY2(finished(reader), qPrintable(reader.errorString()));
    QByteArray expected(kManySamples, '\0');
    for (int sample = 0; sample < kManySamples; ++sample)
        expected[sample] = char(sample == 0 ? 2
                : sample % 3                ? 1
                                            : 0); // the trigger is the second bit
    QCOMPARE(reader.readAllStandardOutput(), expected);

    // A session that does not fit into an array has to be written in parts.
    const Capture capture {wideCore(kMostSamples, 1), wideCore(1, kMostBits)};
    int told = 0;
    QString error;
    QVERIFY(!writeCapture(
        m_dir.filePath("most.sr"), capture, &error, [&told](int) { return ++told < 5; }));
    QVERIFY2(error.endsWith("stopped"), qPrintable(error));
}

// Memory holds the numbers of its words; that of the third window has a mark.
void TestCaptureFiles::samplesOfACoreThatWaits()
{
    const struct {
        int windows, position; // complete windows
        bool wentRound;
        const char* samples;
    } rows[] = {
        {0, 0, false, ""             },
        {0, 3, false, "0 1 2"        },
        {0, 1, true,  "1 2 3 0"      },
        {0, 0, true,  "0 1 2 3"      },
        {1, 2, true,  "6 7 4 5"      },
        {2, 2, false, "has a trigger"},
    };
    CoreIdentity core;
    core.signalCount = 4;
    core.depth = 16;
    TriggerSetup setup;
    setup.captureAmount = 4;
    setup.windowNum = 3;
    BitString memory;
    for (quint64 word = 0; word < 12; ++word)
        memory.append(word | (word == 9 ? 16 : 0), core.wordBits());
    for (const auto& row : rows) {
        CoreStatus status;
        status.windows = row.windows;
        status.position = row.position;
        status.wentRound = row.wentRound;
        SampleTable waiting;
        QString said;
        if (decodeWaiting(core, status, setup, memory, waiting, &said)) {
            for (qint64 sample = 0; sample < waiting.size(); ++sample)
                said += QString::number(*waiting.value(sample, 0)) + ' ';
        }
        QVERIFY2(*row.samples ? said.contains(row.samples) : said.isEmpty(), qPrintable(said));
    }
}

// The trigger was the first sample of all; the settings ask for one sample before it.
void TestCaptureFiles::aShortWindowBeginsWithItsTrigger()
{
    CoreIdentity core;
    core.signalCount = 4;
    core.depth = 16;
    TriggerSetup setup;
    setup.captureAmount = 4;
    setup.triggerPos = 1;
    setup.windowNum = 1;
    CoreStatus status;
    status.complete = true;
    status.position = 3;
    std::vector<DecodedWindow> windows;
    QString error;
    QVERIFY(decodeWindows(
        core, status, setup, BitString(1, 1), BitString(0x4321, 16), windows, &error));
    QCOMPARE(windows.front().triggerOffset, 0);
    QCOMPARE(windows.front().samples.size(), 3);
}

// It is stopped at its beginning, at each of its steps, and before it replaces the old file. Its
// progress never decreases.
void TestCaptureFiles::aStoppedFileStaysAsItWas()
{
    const CapturedCore core = wideCore(kManySamples, 1);
    for (const QString name : {"stopped.vcd", "stopped.csv", "stopped.sr"}) {
        const QString path = writeFile(m_dir.filePath(name), "old");
        bool written = false;
        for (int steps = 0; !written; ++steps) {
            QString error;
            std::vector<int> told;
            written = writeCapture(path, {core}, &error, [&](int percent) {
                told.push_back(percent);
                return int(told.size()) <= steps;
            });
            QVERIFY(std::is_sorted(told.begin(), told.end()));
            QCOMPARE(QDir(m_dir.path()).entryList({name + ".*"}), QStringList());
            QVERIFY2(!written || (steps > 2 && told.back() == 100), "it tells too seldom");
            QCOMPARE(bytesOf(path) == "old", !written);
            QCOMPARE(error, written ? QString() : path + ": cannot be written: stopped");
        }
    }
}

QTEST_APPLESS_MAIN(TestCaptureFiles)
#include "test_capture_files.moc"
