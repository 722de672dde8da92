// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/capture_file.h"
#include "oxacapture/files/capture_sampler.h"
#include "oxacapture/target/window_decoder.h"

#include "oxacapture/sample_text.h"
#include "support/files.h"
#include "support/patience.h"
#include "support/signals.h"

#include <QJsonArray>
#include <QProcess>
#include <QRegularExpression>
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

// A core of a target from words: the frequency and the name of its clock, the indexes of those that
// force it, and its windows. "8:2F=10" is a window of 8 samples, the trigger at number 2, forced,
// with the stamp 10.
CapturedCore coreFrom(const QString& text, int index)
{
    static const QRegularExpression words("(\\d+):(\\d+)(F?)(?:=(\\d+))?");
    CapturedCore core;
    core.index = index;
    core.items = {signalOf("d")};
    core.clockHz = text.section(' ', 0, 0).toDouble();
    core.sampleClock = text.section(' ', 1, 1);
    core.pulseDelay = 3;
    for (const QChar source : text.section(' ', 2, 2)) {
        if (source.isDigit())
            core.forcedBy += source.digitValue();
    }
    for (auto it = words.globalMatch(text.section(' ', 3)); it.hasNext();) {
        const auto match = it.next();
        Window place {0, match.captured(1).toInt(), match.captured(2).toInt()};
        place.forced = !match.captured(3).isEmpty();
        if (!match.captured(4).isEmpty())
            place.stamp = match.captured(4).toUInt();
        core.windows.push_back(
            cutWindows({place}, samplesOf({QString("1 0 ").repeated(int(place.samples)).trimmed()}))
                .front());
    }
    return core;
}

Capture captureFrom(const QString& texts)
{
    Capture capture;
    for (const QString& text : texts.split(" / "))
        capture.push_back(coreFrom(text, int(capture.size())));
    return capture;
}

}

class TestCaptureFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void csv();
    void csvOfBuses();
    void vcd();
    void oneTimeAxis();
    void windowsOfARunStandTogether();
    void marksOfWindowsAreReadBack();
    void samplesThatWereNotStored();
    void capturesAreReadBack();
    void tablesAreReadBack();
    void otherTablesAreRefused();
    void namesOfValues();
    void fst();
    void sigrok();
    void otherSessions();
    void sessionsAreSampled();
    void sigrokOfManySamples();
    void samplesOfACoreThatWaits();
    void aShortWindowBeginsWithItsTrigger();
    void aStoppedFileStaysAsItWas();

private:
    QByteArray written(
        const QString& name, const Capture& capture, const CaptureFileOptions& options = {});

    QTemporaryDir m_dir;
};

QByteArray TestCaptureFiles::written(
    const QString& name, const Capture& capture, const CaptureFileOptions& options)
{
    const QString path = m_dir.filePath(name);
    QString error;
    return writeCapture(path, capture, options, &error) ? bytesOf(path) : error.toUtf8();
}

void TestCaptureFiles::csv()
{
    QCOMPARE(written("out.csv", twoCores(), {true}),
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

// Of bits that the bus's name does not count, with names that are columns already.
void TestCaptureFiles::csvOfBuses()
{
    Capture capture = twoCores();
    capture[0].items = {signalOf("\"a\", b", {"x", "y", "z"})};
    capture[1].items = {busOf("time", 1), signalOf("trigger"), signalOf("y")};
    capture[1].clockHz = 27e6;
    CapturedCore wide = capture[1];
    wide.items = {busOf("w", 6)};
    wide.windows = cutWindows(
        {
            {0, 1, kNoSample}
    },
        samplesOf({"1x0110"}));
    capture.push_back(wide);
    written("buses.csv", capture);
    QProcess reader;
    reader.start("python3",
        {"-c",
            "import csv, sys\n"
            "for row in csv.reader(open(sys.argv[1], newline='')): print(*row, sep='|')",
            m_dir.filePath("buses.csv")});
    QVERIFY2(finished(reader), qPrintable(reader.errorString()));
    QCOMPARE(QString(reader.readAllStandardOutput()),
        QString("core|window|sample|trigger|time|\"a\", b|time_2|trigger_2|y|w\n"
                "3|0|0|0||0x4||||\n"
                "3|0|1|1||0x3||||\n"
                "3|1|0|1||0x0||||\n"
                "7|0|0|0|0.000000000000||0x1|0|0|\n"
                "7|0|1|0|0.000000037037||0x0|1|1|\n"
                "7|0|2|0|0.000000074074||0x0|x|x|\n"
                "7|0|3|0|0.000000111111||0x0|0|0|\n"
                "7|0|0|0|0.000000000000|||||0xx6\n"));
}

void TestCaptureFiles::vcd()
{
    QCOMPARE(QString(written("out.vcd", twoCores())).section("$timescale 1 ns $end\n", 1),
        QString("$scope module core3 $end\n"
                "$var wire 2 ! count [1:0] $end\n"
                "$var wire 1 \" a,b $end\n"
                "$var wire 1 # sample $end\n"
                "$var wire 1 $ trigger $end\n"
                "$var integer 32 % window $end\n"
                "$upscope $end\n"
                "$scope module core7 $end\n"
                "$var wire 1 & trigger $end\n"
                "$var wire 1 ' a,b $end\n"
                "$var wire 1 ( sample $end\n"
                "$var wire 1 ) oxa_trigger $end\n"
                "$var integer 32 * window $end\n"
                "$upscope $end\n"
                "$enddefinitions $end\n"
                "#0\nb00 %\nb10 !\n0\"\n0#\n0$\nb00 *\n1&\n0'\n0(\n0)\n"
                "#1\nb01 !\n1\"\n1#\n1$\n0&\n1'\n1(\n"
                "#2\nbxx !\nx\"\nx#\nx$\nbxx %\nx'\n0(\n"
                "#3\nb01 %\nb00 !\n0\"\n0#\n1$\n0'\n1(\n"
                "#4\nbxx !\nx\"\nx#\nx$\nbxx %\nx&\nx'\nx(\nx)\nbxx *\n"));
}

// The clocks' periods are 2 and 3 units. The windows of core 3 follow one another, and core 7
// begins before them.
void TestCaptureFiles::oneTimeAxis()
{
    Capture capture = twoCores();
    addTimes(capture[0], {5, 7, 9, 11, 13}, -8);
    addTimes(capture[1], {2, 5, 8, 11}, -8);
    const QString waveform = written("waveform.vcd", capture);
    QVERIFY(
        waveform.startsWith("$version\n    oxa: times of the waveform\n$end\n$timescale 10 ns"));
    QCOMPARE(QString(waveform).section("$enddefinitions $end\n", 1),
        QString("#2\nbxx !\nx\"\nx#\nx$\nbxx %\nb00 *\n1&\n0'\n0(\n0)\n"
                "#5\nb00 %\nb10 !\n0\"\n0#\n0$\n0&\n1'\n1(\n"
                "#7\nb01 !\n1\"\n1#\n1$\n"
                "#8\nx'\n0(\n"
                "#9\nbxx !\nx\"\nx#\nx$\nbxx %\n"
                "#11\nb01 %\nb00 !\n0\"\n0#\n1$\n0'\n1(\n"
                "#13\nbxx !\nx\"\nx#\nx$\nbxx %\n"
                "#14\nx&\nx'\nx(\nx)\nbxx *\n"));
    QVERIFY(written("waveform.csv", capture).contains("\n7,0,1,0,0.00000005,"));
    written("waveform.sr", capture);

    Capture clocked = twoCores();
    clocked[0].clockHz = 3e6;
    clocked[1].clockHz = 2e6;
    QVERIFY(
        written("clocks.vcd", clocked).contains("core 3 at 3000000 Hz, core 7 at 2000000 Hz\n"));
    written("clocks.sr", clocked);
    clocked[0].clockHz = 3.5;
    QVERIFY(written("none.sr", clocked).contains("the format has one sample rate"));
    const struct {
        const char *file, *rate, *count, *b;
    } sessions[] = {
        {"waveform.sr", "100 MHz", "00011000 0000", "00011100 0000"},
        {"clocks.sr",   "6 MHz",   "11000000 0000", "00011100 0000"},
    };
    for (const auto& session : sessions) {
        QProcess reader;
        reader.start("sigrok-cli", {"-i", m_dir.filePath(session.file), "-O", "bits"});
        QVERIFY2(finished(reader), qPrintable(reader.errorString()));
        const QString text = reader.readAllStandardOutput();
        QVERIFY2(text.contains(QString("at ") + session.rate)
                && text.contains(QString("\ncount[1]:") + session.count + '\n')
                && text.contains(QString("\ncore7.a,b:") + session.b + '\n'),
            qPrintable(text));
    }
}

// What is read back becomes the same table, whatever the kind of its times.
// Samples 0, 1 and 5 of a window, 6 and 8 of the next.
// The microseconds at which the windows begin whose distances are known, behind the number of their
// group when it is not the first, and with which core a forced one is aligned.
void TestCaptureFiles::windowsOfARunStandTogether()
{
    const struct {
        const char *what, *cores, *result;
    } rows[] = {
        {"one clock",                   "1e6 a - 8:2 / 1e6 a 0 8:2F",                       "0 / 4, core 0 +- 0"                      },
        {"two clocks",                  "1e6 a - 8:2 / 2e6 b 0 8:2F",                       "0 / 4.25, core 0 +- 0.25"                },
        {"the forced one begins first", "1e6 a - 8:0 / 1e6 b 0 16:9F",                      "5.5 / 0, core 0 +- 0.5"                  },
        {"stamps",                      "1e6 a - 4:1=5,4:1=4294967295,4:3=6",               "0 4294967290 4294967295"                 },
        {"stamps of both",              "1e6 a - 4:1=5,4:1=15 / 2e6 b 0 4:1F=9,4:1F=30",
         "0 10 / 3.75 14.25, core 0 +- 0.25"                                                                                          },
        {"pairs",                       "1e6 a - 8:2,8:2 / 1e6 a 0 8:2F,8:2F",              "0 1:9 / 4 1:13, core 0 +- 0"             },
        {"a chain",                     "1e6 a - 8:2 / 1e6 a 0 8:2F,8:2=50 / 1e6 a 1 8:2F",
         "0 / 4 1:13, core 0 +- 0 / 1:17, core 1 +- 0"                                                                                },
        {"no partner",                  "1e6 a - 8:2,8:2 / 1e6 a 0 8:2F",
         "? ? / ?, it has 1 forced window, core 0 has 2 other windows"                                                                },
        {"two sources",                 "1e6 a - 8:2 / 1e6 a - 8:2 / 1e6 a 01 8:2F",
         "? / ? / ?, core 0 or core 1 may have forced it"                                                                             },
        {"no source",                   "1e6 a - 8:2 / 1e6 a - 8:2F",                       "? / ?, which core forced it is not known"},
        {"no own trigger",              "1e6 a 1 8:2F / 1e6 a 0 8:2F",
         "?, no core that forces it has a window of its own trigger / "
            "?, no core that forces it has a window of its own trigger"                                                               },
        {"no frequency",                "0 a - 8:2 / 0 b 0 8:2F",
         "? / ?, the frequencies of the sample clocks are not known"                                                                  },
        {"no frequency, one clock",     "0 a - 8:2 / 0 a 0 8:2F",                           "? / ?, core 0 +- 0"                      },
        {"no order",                    "1e6 a - 8:2,8:2F,8:2 / 1e6 a 0 8:2F=9,8:2F=90",
         "? ? ?, which core forced it is not known / 0 81, its windows and "
            "those"
            " of core 0 have no common order"                                                                                         },
    };
    for (const auto& row : rows) {
        QStringList cores;
        const QJsonArray array = captureObject(captureFrom(row.cores)).value("cores").toArray();
        for (const QJsonValue& core : array) {
            QStringList starts;
            const QJsonArray windows = core["windows"].toArray();
            for (const QJsonValue& window : windows) {
                const QString start = QString::number(window["start"].toDouble() * 1e6, 'g', 12);
                const int group = window["group"].toInt(-1);
                starts += group < 0 ? "?" : group > 0 ? QString("%1:").arg(group) + start : start;
            }
            const QJsonValue alignment = core["alignment"];
            QStringList texts {starts.join(' ')};
            if (alignment["core"].isDouble())
                texts += QString("core %1 +- %2")
                             .arg(QString::number(alignment["core"].toInt()),
                                 QString::number(alignment["tolerance"].toDouble() * 1e6));
            else if (alignment.isObject())
                texts += alignment["reason"].toString();
            cores += texts.join(", ");
        }
        QVERIFY2(
            cores.join(" / ") == row.result, qPrintable(row.what + (": " + cores.join(" / "))));
    }
}

// Of a run whose windows all stand at their distances, and of one without.
void TestCaptureFiles::marksOfWindowsAreReadBack()
{
    const QString run = "1e6 a - 4:1=5,4:1=15 / 2e6 b 0 4:1F=9,4:1F=30";
    for (const QString& cores : {run, QString("1e6 a - 4:1,4:1 / 2e6 b 0 4:1F")}) {
        const Capture capture = captureFrom(cores);
        const QByteArray table = written("marks.csv", capture);
        QCOMPARE(table.split('\n').first(),
            QByteArray(cores == run
                    ? "core,window,sample,trigger,forced by core,window stamp,time,d"
                    : "core,window,sample,trigger,forced by core,time,d"));
        const QByteArray dump = written("marks.vcd", capture);
        QVERIFY2(
            dump.contains(cores == run
                    ? "oxa: times of the run, core 0 at 1000000 Hz, core 1 at 2000000 Hz; core"
                      " 0: windows at their distances; core 1: windows at their distances; core"
                      " 1: aligned with core 0, +- 2.5e-07 s\n"
                    : "oxa: times in each window, core 0 at 1000000 Hz, core 1 at 2000000 Hz;"
                      " core 1: not aligned, it has 1 forced window, core 0 has 2 other"
                      " windows\n"),
            dump.constData());
        for (const char* name : {"marks.csv", "marks.vcd"}) {
            Capture read;
            QString error;
            QVERIFY2(readCapture(m_dir.filePath(name), read, &error), qPrintable(error));
            const QByteArray again = written("again.csv", read);
            QCOMPARE(again.split('\n').size(), table.split('\n').size());
            for (int line = 1; line + 1 < table.split('\n').size(); ++line) {
                // A dump has the times in its own unit.
                const auto cells = table.split('\n').at(line).split(',');
                const auto others = again.split('\n').at(line).split(',');
                for (int cell = 0; cell < cells.size(); ++cell)
                    QVERIFY2(
                        cells.at(cell).toDouble() == others.at(cell).toDouble(), again.constData());
            }
        }
    }
    // Distances within groups of windows, of different clocks and of the same edges.
    for (const char* cores :
        {"1e6 a - 4:1,4:1 / 27e6 b 0 4:1F,8:3F", "5e6 a - 4:1,4:0 / 5e6 a 0 4:1F,4:1F"}) {
        const QByteArray dump = written("groups.vcd", captureFrom(cores));
        Capture read;
        QVERIFY(readCapture(m_dir.filePath("groups.vcd"), read, nullptr));
        QCOMPARE(QString(written("again.vcd", read)), QString(dump));
        QVERIFY2(dump.contains("; core 1: aligned with core 0"), dump.constData());
    }
    // At 2 MHz, a sample of core 0 takes two.
    QVERIFY(written("marks.sr", captureFrom(run)).startsWith("PK"));
    QProcess reader;
    reader.start("sigrok-cli", {"-i", m_dir.filePath("marks.sr"), "-C", "core0.trigger,forced"});
    QVERIFY2(finished(reader), qPrintable(reader.errorString()));
    const QString bits = QString(reader.readAllStandardOutput()).remove(' ');
    QVERIFY2(bits.contains("core0.trigger:001100000000000000000011000000000\n")
            && bits.contains("forced:000000000100000000000000000000100\n"),
        qPrintable(bits));
}

void TestCaptureFiles::samplesThatWereNotStored()
{
    CapturedCore core;
    core.items = {signalOf("d")};
    core.storage.keep = OXA::CoreStorage::Changes;
    core.clockHz = 1e6;
    core.windows.push_back({
        {0,  3, 1, {0, 1, 5}},
        samplesOf({"0 1 0"}
        )
    });
    core.windows.push_back({
        {0,  2, 2, {0, 2}},
        samplesOf({"1 0"}
        )
    });
    CapturedCore other = core;
    other.storage.keep = OXA::CoreStorage::When;
    const QByteArray table = "core,window,sample,trigger,time,d\n0,0,0,0,0.000000000000,0\n"
                             "0,0,1,1,0.000001000000,1\n0,0,5,0,0.000005000000,0\n"
                             "0,1,0,0,0.000000000000,1\n0,1,2,1,0.000002000000,0\n";
    QCOMPARE(written("changes.csv", {core}), table);
    CaptureFileOptions every;
    every.every = true;
    const QByteArray all = written("every.csv", {core}, every);
    QVERIFY2(all.count('\n') == 10 && all.contains("\n0,0,4,0,0.000004000000,1\n"), all);
    QVERIFY(written("every.csv", {other}, every).contains("\n0,0,4,0,0.000004000000,x\n"));
    const QString changes = written("changes.vcd", {core});
    QCOMPARE(changes.section("$enddefinitions $end\n", 1),
        QString("#0\nb00 $\n0!\n0\"\n0#\n#1000000\n1!\n1\"\n1#\n#2000000\n0#\n#5000000\n0!\n0\"\n"
                "#6000000\nx!\nx\"\nx#\nbxx $\n#7000000\nb01 "
                "$\n1!\n1\"\n0#\n#8000000\n#9000000\n0!\n0\"\n1#\n"
                "#10000000\nx!\nx\"\nx#\nbxx $\n"));
    QVERIFY(written("when.vcd", {other}).contains("#2000000\nx!\n0#\n#5000000\n0!\n"));
    for (const char* file : {"changes.vcd", "when.vcd", "changes.csv"}) {
        Capture back;
        QString error;
        QVERIFY2(readCapture(m_dir.filePath(file), back, &error), qPrintable(error));
        QCOMPARE(back[0].holds(), QByteArray(file) == "changes.vcd");
        QCOMPARE(written("back.csv", back), table);
    }
    // With the times of a waveform, of a run, or of a waveform whose clock is not regular.
    CapturedCore sampled = core;
    addTimes(sampled, {10, 13, 16, 19, 22, 25, 28, 31, 34}, -8);
    sampled.windows[1].place.firstSample = 6;
    addTimes(sampled, {10, 13, 16, 19, 22, 25, 28, 31, 34}, -8);
    CapturedCore stamped = core;
    stamped.windows[0].place.stamp = 1;
    stamped.windows[1].place.stamp = 10;
    CapturedCore irregular = sampled;
    irregular.windows[0].times[3] = 20;
    for (const CapturedCore& timed : {sampled, stamped, irregular}) {
        const QByteArray own = written("own.csv", {timed});
        written("own.vcd", {timed});
        Capture back;
        QVERIFY(readCapture(m_dir.filePath("own.vcd"), back, nullptr));
        const bool isRegular = timed.windows[0].times.empty() || timed.windows[0].times[3] == 19;
        QCOMPARE(qint64(back[0].windows[0].place.offset(2)), qint64(isRegular ? 5 : 2));
        if (isRegular)
            QCOMPARE(back[0].windows[0].times.size(), size_t(7));
    }
    written("changes.sr", {core});
    QProcess reader;
    reader.start("sigrok-cli", {"-i", m_dir.filePath("changes.sr"), "-O", "bits"});
    QVERIFY2(finished(reader), qPrintable(reader.errorString()));
    const QString bits = reader.readAllStandardOutput();
    QVERIFY2(bits.contains("\nd:01111011 0\n"), qPrintable(bits));
    QVERIFY2(bits.contains("\ntrigger:01000000 1\n"), qPrintable(bits));
}

void TestCaptureFiles::capturesAreReadBack()
{
    const std::vector<double> clocks {0, 0, 27e6};
    for (size_t kind = 0; kind < clocks.size(); ++kind) {
        Capture capture = twoCores();
        capture[1].items.removeLast(); // files have it once
        capture[1].items[0].name = "d";
        capture[0].clockHz = capture[1].clockHz = clocks[kind];
        if (kind == 0) {
            addTimes(capture[0], {5, 7, 9, 11, 13}, -8);
            addTimes(capture[1], {2, 5, 8, 11}, -8);
        }
        const QByteArray expected = written("expected.csv", capture);
        for (const char* suffix : {"vcd", "fst", "csv"}) {
            const QString path = m_dir.filePath(QString("in.") + suffix);
            written(QString("in.") + suffix, capture);
            QString error;
            QVERIFY2(
                convertCapture(path, m_dir.filePath("back.csv"), {}, &error), qPrintable(error));
            QCOMPARE(QString(bytesOf(m_dir.filePath("back.csv"))), QString(expected));
        }
    }
    // Of another waveform, all signals and times.
    writeFile(m_dir.filePath("w.vcd"),
        "$timescale 1us $end $scope module t $end $var reg 2 ! d [1:0] $end $var wire 1 \" e $end\n"
        "$upscope $end $enddefinitions $end #0 b10 ! #3 #4 1\" bx1 ! #9");
    QVERIFY(convertCapture(m_dir.filePath("w.vcd"), m_dir.filePath("w.csv"), {}, nullptr));
    QCOMPARE(QString(bytesOf(m_dir.filePath("w.csv"))),
        QString("core,window,sample,trigger,time,t.d,t.e\n"
                "0,0,0,0,0.000000,0x2,x\n0,0,1,0,0.000004,0xx,1\n"));
}

// With what a spreadsheet may have changed, names of values, and the clock whose times they are.
void TestCaptureFiles::tablesAreReadBack()
{
    Capture capture = twoCores();
    capture[0].items[1].name = "=a\n\"b\"";
    capture[0].clockHz = 27.3e6;
    capture[1].clockHz = 8;
    CaptureFileOptions options;
    options.states["count"] = {"[1:0]", {{"0x3", "1"}}};
    const QByteArray table = written("names.csv", capture, options);
    QVERIFY2(table.contains(",count,count name,"), table);
    writeFile(
        m_dir.filePath("crlf.csv"), "\xef\xbb\xbf" + QByteArray(table).replace("\n3,", "\r\n3,"));
    QString error;
    Capture back;
    QVERIFY2(readCapture(m_dir.filePath("crlf.csv"), back, &error), qPrintable(error));
    QCOMPARE(back.size(), size_t(2));
    QCOMPARE(back[0].clockHz, 27.3e6);
    QCOMPARE(back[1].clockHz, 8.0);
    QCOMPARE(OXA::flattenedNames(back[0].items),
        QStringList({"count[3]", "count[2]", "count[1]", "count[0]", "=a\n\"b\""}));
    QCOMPARE(samplesText(back[0].windows[0].samples), QString("00100 00011"));
    QCOMPARE(back[0].windows[0].triggerOffset(), 1);

    const QByteArray bits = written("bits.csv", capture, {true, {}});
    QVERIFY2(
        convertCapture(m_dir.filePath("bits.csv"), m_dir.filePath("back.csv"), {true, {}}, &error),
        qPrintable(error));
    QCOMPARE(bytesOf(m_dir.filePath("back.csv")), bits);
    QVERIFY(convertCapture(m_dir.filePath("names.csv"), m_dir.filePath("back.vcd"), {}, nullptr));
    QVERIFY(bytesOf(m_dir.filePath("back.vcd"))
                .contains("core 3 at 27300000 Hz, core 7 at 8 Hz\n$end\n$timescale 1 ps"));
    QVERIFY(readCapture(m_dir.filePath("bits.csv"), back, &error));
    QCOMPARE(back[0].items.first().name, QString("count"));
    QCOMPARE(back[0].items.first().bitCount(), 2);
}

void TestCaptureFiles::otherTablesAreRefused()
{
    const QByteArray head = "core,window,sample,trigger,time,a,b\n";
    const struct {
        const char* table; // behind "core,window,sample,trigger,time,a,b"
        const char* error;
    } rows[] = {
        {"",                                         "t.csv: has no samples"                     },
        {"\n0,0,0,0,0.1,1",                          "t.csv:3: has 6 cells, the first row 7"     },
        {"0,0,0,2,0.1,1,0",                          "t.csv:2: trigger cannot be \"2\""          },
        {"-1,0,0,0,0.1,1,0",                         "t.csv:2: core cannot be \"-1\""            },
        {"0,1,0,0,0.1,1,0",                          "is not a sample behind that of the row"    },
        {"0,0,0,1,0.1,1,0\n0,0,1,1,0.2,1,0",         "t.csv:3: is the second trigger"            },
        {"0,0,0,0,1e-3,1,0",                         "t.csv:2: time cannot be \"1e-3\""          },
        {"0,0,0,0,0.1,1,0\n0,0,1,0,0.10,1,0",        "t.csv:3: time has other decimals"          },
        {"0,0,0,0,0.1,1,0\n0,0,1,0,0.1,1,0",         "t.csv:3: time is not later"                },
        {"0,0,0,0,0.1,1,0\n0,0,1,0,,1,0",            "t.csv:3: time cannot be \"\""              },
        {"0,0,0,0,0.2,1,0\n0,1,0,0,0.1,1,0",         "t.csv: the times of core 0 are neither"    },
        {"0,0,0,0,0.1,2,0",                          "t.csv:2: a cannot be \"2\", only 0, 1 or x"},
        {"0,0,0,0,0.1,,\n",                          "t.csv:2: core 0 has no signals"            },
        {"0,0,0,0,0.1,0x1g,0",                       "only 0x and 2 hexadecimal digits or x"     },
        {"0,0,0,0,0.1,0x1,0\n0,0,1,0,0.2,0x11,0",    "t.csv:3: a cannot be \"0x11\""             },
        {"0,0,0,0,0.1,1,\n0,0,1,0,0.2,1,1",          "t.csv:3: b cannot be \"1\", only empty"    },
        {"0,0,0,0,,1,0\n1,0,0,0,,1,0\n0,0,1,0,,1,0", "t.csv:4: core 0 is not together"           },
        {"0,0,0,0,0.1,\"1,0\n",                      "t.csv:2: a quote has no end"               },
        {"0,0,0,0,99999999999999999999.1,1,0",       "t.csv:2: time cannot be"                   },
    };
    const QString path = m_dir.filePath("t.csv");
    Capture capture;
    for (const auto& row : rows) {
        QString error;
        writeFile(path, head + row.table);
        QVERIFY2(!readCapture(path, capture, &error), row.table);
        QVERIFY2(error.contains(row.error), qPrintable(error));
    }
    for (const char* other :
        {"", "a,b\n", "core;window;sample;trigger;a\n", "core,window,sample,trigger,\n"}) {
        writeFile(path, other);
        QVERIFY2(!readCapture(path, capture, nullptr), other);
    }
    QVERIFY(!readCapture(m_dir.path() + "/none.csv", capture, nullptr));
}

// As texts in all formats that have some.
void TestCaptureFiles::namesOfValues()
{
    CaptureFileOptions options;
    options.states["count"] = {
        "[1:0]", {{"=IDLE", "0"}, {"RUN", "10"}, {"WIDE", "110"}}
    };
    const QByteArray vcd = written("names.vcd", twoCores(), options);
    QVERIFY(vcd.contains("$var wire 2 ! count [1:0] $end\n$var string 1 \" count_name $end\n"));
    QVERIFY2(vcd.contains("b10 !\nsRUN \"\n") && vcd.contains("b01 !\ns01 \"\n"), vcd);
    const QByteArray csv = written("names.csv", twoCores(), options);
    QVERIFY2(csv.startsWith("core,window,sample,trigger,count,count name,\"a,b\",trigger_2\n"
                            "3,0,0,0,0x2,RUN,0,\n"
                            "3,0,1,1,0x1,,1,\n"
                            "3,1,0,1,0x0,\"'=IDLE\",0,\n"
                            "7,0,0,0,,,0,1\n"),
        csv);
    written("names.fst", twoCores(), options);
    QProcess reader;
    reader.start("fst2vcd", {m_dir.filePath("names.fst")});
    QVERIFY2(finished(reader), qPrintable(reader.errorString()));
    const QByteArray dump = reader.readAllStandardOutput();
    QVERIFY2(dump.contains("count_name $end") && dump.contains("\nsRUN "), dump);
}

// GTKWave's program reads from an FST file what is in the dump.
void TestCaptureFiles::fst()
{
    QVERIFY(!written("out.fst", twoCores()).contains("cannot"));
    writeFile(m_dir.filePath("back.vcd"), "");
    QProcess reader;
    reader.start("sh",
        {"-c",
            "fst2vcd \"$0\"/out.fst | sed 2d >\"$0\"/back.vcd && " // without the date
            "vcd2fst \"$0\"/out.vcd \"$0\"/same.fst && "
            "fst2vcd \"$0\"/same.fst | sed 2d | diff - \"$0\"/back.vcd && grep -c '^#3$' "
            "\"$0\"/back.vcd",
            m_dir.path()});
    QVERIFY2(finished(reader), qPrintable(reader.errorString()));
    QCOMPARE(QString(reader.readAllStandardOutput()), QString("1\n"));
    // The clocks of all cores, which $version has no place for.
    Capture six(6, twoCores().front());
    for (int index = 0; index < 6; ++index) {
        six[size_t(index)].index = index;
        six[size_t(index)].clockHz = 1000001 + index;
    }
    written("six.fst", six);
    Capture back;
    QVERIFY(readCapture(m_dir.filePath("six.fst"), back, nullptr));
    QCOMPARE(back.size(), size_t(6));
    for (const CapturedCore& core : back)
        QCOMPARE(core.clockHz, 1000001.0 + core.index);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    const QByteArray missing = written("out.fst", twoCores());
    qputenv("PATH", path);
    QVERIFY2(missing.contains("install the package gtkwave"), missing);
}

void TestCaptureFiles::sigrok()
{
    Capture capture = twoCores();
    capture[0].items[0].subItems[0].name = "other"; // its channel is named by its bus
    QVERIFY(written("out.sr", capture).startsWith("PK"));
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

    // Channels of a vector's bits are a bus again, and the sample rate is the clock.
    capture.pop_back();
    capture[0].clockHz = 2.4e7;
    written("back.sr", capture);
    Capture back;
    QVERIFY(readCapture(m_dir.filePath("back.sr"), back, nullptr));
    QCOMPARE(back.size(), size_t(1));
    QCOMPARE(back[0].clockHz, 2.4e7);
    QVERIFY(back[0].items.first().isBus() && back[0].items.first().bitCount() == 2);
    QCOMPARE(OXA::flattenedNames(back[0].items),
        QStringList({"count[1]", "count[0]", "a,b", "trigger", "window"}));
    QCOMPARE(samplesText(back[0].windows[0].samples), QString("10000 01110 00011"));
}

// As other programs write it: a prefix of the unit, a bit that is no channel, one file of samples.
void TestCaptureFiles::otherSessions()
{
    writeFile(m_dir.filePath("metadata"),
        "[global]\nsigrok version=0.3\n[device 1]\r\ncapturefile=logic-1\nsamplerate=2.5 MHz\n"
        "probe1=a\nprobe3=\n[device 2]\nsamplerate=1 kHz\n");
    writeFile(m_dir.filePath("logic-1"), "\1\1\4");
    QProcess archiver;
    archiver.setWorkingDirectory(m_dir.path());
    archiver.start("cmake", {"-E", "tar", "cf", "other.sr", "--format=zip", "metadata", "logic-1"});
    QVERIFY2(finished(archiver) && archiver.exitCode() == 0, qPrintable(archiver.errorString()));
    Capture capture;
    QString error;
    QVERIFY2(readCapture(m_dir.filePath("other.sr"), capture, &error), qPrintable(error));
    QCOMPARE(capture[0].clockHz, 2.5e6);
    QCOMPARE(OXA::flattenedNames(capture[0].items), QStringList({"a", "probe3"}));
    QCOMPARE(samplesText(capture[0].windows[0].samples), QString("10 01"));
    QCOMPARE(capture[0].windows[0].place.stored, std::vector<qint64>({0, 2}));
}

// A clock among the channels takes the samples; without it, each sample of the session is one.
void TestCaptureFiles::sessionsAreSampled()
{
    CapturedCore core;
    core.items = {signalOf("clk"), signalOf("d")};
    core.clockHz = 3e6;
    core.windows = cutWindows(
        {
            {0, 7, kNoSample}
    },
        samplesOf({"00 01 11 11 00 10 10"}));
    written("clocked.sr", {core});
    QByteArray damaged = bytesOf(m_dir.filePath("clocked.sr"));
    const int samplesAt = damaged.indexOf("logic-1-1") + 9;
    damaged[samplesAt] = char(damaged.at(samplesAt) ^ 0x10);
    Capture back;
    QString error;
    QVERIFY(!readCapture(writeFile(m_dir.filePath("damaged.sr"), damaged), back, &error));
    QVERIFY2(error.contains("the sigrok session is damaged: "), qPrintable(error));

    const struct {
        const char *clock, *samples;
        std::vector<quint64> times;
        size_t edges;
    } rows[] = {
        {"clk",   "1 0",           {666667, 1666667},                                       3 },
        {"other", "0 1 1 1 0 0 0", {0, 333333, 666667, 1000000, 1333333, 1666667, 2000000}, 14},
    };
    for (const auto& row : rows) {
        SampledWaveform sampled;
        Messages messages;
        const SampleRequest request {row.clock, false, {{"d"}}};
        QVERIFY(sampleStimulus(m_dir.filePath("clocked.sr"), {request}, sampled, messages));
        QCOMPARE(samplesText(sampled.cores[0]), QString(row.samples));
        QCOMPARE(sampled.times[0], row.times);
        QCOMPARE(sampled.timeExponent.value(), -12);
        QCOMPARE(sampled.edges.size(), row.edges);
    }
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
        DecodedWindow waiting;
        QString said;
        if (decodeWaiting(core, status, setup, memory, waiting, &said)) {
            for (qint64 sample = 0; sample < waiting.samples.size(); ++sample)
                said += QString::number(*waiting.samples.value(sample, 0)) + ' ';
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
    for (const QString name : {"stopped.vcd", "stopped.fst", "stopped.csv", "stopped.sr"}) {
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
