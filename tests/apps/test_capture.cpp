#include "capture_fixture.h"

#include "oxautils/config/lite_config.h"
#include "support/files.h"
#include "support/live_target.h"
#include "support/oxa_program.h"
#include "support/terminal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

// A change for one run, and the same change of the file.
struct Change {
    const char* what;
    QStringList options;
    void (*edit)(OXA::AoCore& core);
};

const Change kChanges[] = {
    {"a value",                 {"--unit", "M0=0000110010"},
     [](OXA::AoCore& core) { core.matchUnits[0]->value0 = "0000110010"; }                                                                 },
    {"a trigger that is early", {"--unit", "M0=0000000101", "--counter", "M1=1"},
     [](OXA::AoCore& core) {
            core.matchUnits[0]->value0 = "0000000101";
            core.matchUnits[1]->counter = 1;
        }                                                                                                                                 },
    {"a counter",               {"--counter", "M1=16"},
     [](OXA::AoCore& core) { core.matchUnits[1]->counter = 16; }                                                                          },
    {"the last position",       {"--position", "49"},                                      [](OXA::AoCore& core) { core.triggerPos = 49; }},
    {"one window of all",       {"--samples", "256", "--windows", "1", "--position", "0"},
     [](OXA::AoCore& core) {
            core.captureAmount = 256;
            core.windowNum = 1;
            core.triggerPos = 0;
        }                                                                                                                                 },
};

// How many rows a table has in which n counts on, from one to the next of a window; -1 when it does
// not.
int followingRows(const QByteArray& csv)
{
    const QList<QByteArray> rows = csv.trimmed().split('\n').mid(1);
    const auto number = [&rows](int row) {
        return rows.at(row).split(',').mid(4, 10).join("").toInt(nullptr, 2);
    };
    for (int i = 1; i < rows.size(); ++i) {
        if (rows.at(i).split(',').at(2) != "0" && number(i) != (number(i - 1) + 1) % kRound)
            return -1;
    }
    return rows.size();
}

// The samples of a dump that changes at every time at most once, as rows of the variables' bits,
// and the variables' names.
struct Dump {
    QStringList names;
    QStringList rows;
};

// A reader that shares nothing with ours: all tokens of a dump, one after the other.
Dump readDump(const QByteArray& text)
{
    Dump dump;
    QStringList values;
    QHash<QString, int> places;
    const QStringList tokens = QString::fromUtf8(text).split(QRegularExpression("\\s+"));
    bool header = true;
    for (int i = 0; i < tokens.size(); ++i) {
        const QString& token = tokens.at(i);
        if (token == "$var") {
            places.insert(tokens.at(i + 3), dump.names.size());
            dump.names += tokens.at(i + 4) + (tokens.at(i + 5) == "$end" ? "" : tokens.at(i + 5));
            values += QString(tokens.at(i + 2).toInt(), '?');
        } else if (token == "$enddefinitions") {
            header = false;
            ++i;
        } else if (header || token.isEmpty()) {
            continue;
        } else if (token.startsWith('#')) {
            if (token != "#0")
                dump.rows += values.join(',');
        } else {
            const bool vector = token.startsWith('b');
            const QString id = vector ? tokens.at(++i) : token.mid(1);
            QString& value = values[places.value(id)];
            const QString bits = token.mid(vector ? 1 : 0, vector ? -1 : 1);
            value = bits.rightJustified(value.size(), bits.startsWith('x') ? 'x' : '0');
        }
    }
    return dump;
}

}

// `oxa target`, the real openocd and `oxa capture`, held to `oxa simulate --model`.
class TestCapture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyFormatHoldsTheSamples();
    void timeInFiles();
    void changesForOneRun_data();
    void changesForOneRun();
    void withoutATrigger();
    void progressOnATerminal_data();
    void progressOnATerminal();
    void positionsOnDevices_data();
    void positionsOnDevices();
    void immediately();
    void interrupted();
    void lite();
    void unusableCalls_data();
    void unusableCalls();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QStringList captureCall(const QStringList& more) const;
    Result capture(const QStringList& more) { return oxa(captureCall(more)); }
    Result captureUntil(const QString& shown, const QStringList& more);
    Result model(const QString& configuration, const QStringList& more);

    QTemporaryDir m_dir;
    LiveTarget m_live;
};

void TestCapture::initTestCase()
{
    writeFile(path("wave.vcd"), countingWaveform());
    const auto fast = countingCore(4, "clk");
    const auto slow = countingCore(9, "slow");
    OXA::writeOXAConfigToXml({fast.get(), slow.get()}, path("c.oxa"));
    QVERIFY2(m_live.start(path("c.oxa"), path("wave.vcd")), m_live.target.said());
}

QStringList TestCapture::captureCall(const QStringList& more) const
{
    return QStringList {"capture", path("c.oxa"), "--openocd", m_live.address()} + more;
}

// Captures until the terminal shows `shown`, and presses Ctrl-C.
Result TestCapture::captureUntil(const QString& shown, const QStringList& more)
{
    Terminal terminal;
    terminal.run(OXA_PROGRAM " " + captureCall(more).join(' ') + " >" + path("out"));
    terminal.says(shown);
    terminal.interrupt();
    finished(terminal);
    return {terminal.exitCode(), bytesOf(path("out")), terminal.said()};
}

Result TestCapture::model(const QString& configuration, const QStringList& more)
{
    return oxa(QStringList {"simulate", configuration, "--part", kPart, "--stimulus",
                   path("wave.vcd"), "--model"}
        + more);
}

// By name and sample: .sr read by sigrok-cli, .vcd by the reader above, .csv as the model's.
void TestCapture::everyFormatHoldsTheSamples()
{
    for (const char* ending : {"csv", "sr", "vcd"}) {
        const Result result
            = capture({"-o", path(QString("live.") + ending), "--timeout", patienceSeconds()});
        QCOMPARE(result.err, QString());
        QCOMPARE(result.status, 0);
        QVERIFY2(result.out.startsWith("core 4, window 0: trigger at sample 20, 50 samples from 0"),
            qPrintable(result.out));
    }
    QCOMPARE(model(path("c.oxa"), {"-o", path("model.csv")}).status, 0);
    QCOMPARE(bytesOf(path("live.csv")), bytesOf(path("model.csv")));

    QStringList core4;
    QStringList core9;
    const QStringList lines = QString::fromUtf8(bytesOf(path("model.csv"))).split('\n');
    QCOMPARE(lines.first().section(',', 4),
        QString("n[9],n[8],n[7],n[6],n[5],n[4],n[3],n[2],n[1],n[0],\"a,b\",top/x_y"));
    for (const QString& line : lines) {
        const QStringList cells = line.split(',');
        const QString row = cells.mid(4).join("") + '-' + cells.value(3) + '-' + cells.value(1);
        if (cells.first() == "4")
            core4 += row;
        if (cells.first() == "9")
            core9 += row;
    }
    QCOMPARE(core4.size(), 100);
    QCOMPARE(core9.size(), 100);

    const Dump dump = readDump(bytesOf(path("live.vcd")));
    const QStringList variables {"n[9:0]", "a,b", "top/x_y", "trigger", "window"};
    QCOMPARE(dump.names, variables + variables);
    QProcess sigrok;
    sigrok.start("sigrok-cli", {"-i", path("live.sr"), "-O", "csv"});
    QVERIFY(finished(sigrok));
    const QStringList all = QString::fromUtf8(sigrok.readAllStandardOutput()).split('\n');
    const QStringList read = all.filter(QRegularExpression("^[01],"));
    const QString channels = all.filter("Channels").first().section(": ", 1);
    QCOMPARE(channels.count("core4.n["), 10);
    QVERIFY2(channels.endsWith("core9.n[0], core9.a,b, core9.top/x_y, core9.trigger, core9.window"),
        qPrintable(channels));
    QCOMPARE(read.size(), 100);
    for (int i = 0; i < 100; ++i) {
        QStringList dumped = dump.rows.at(i).split(',');
        const auto rowOf = [&dumped](int from) {
            return dumped.mid(from, 3).join("") + '-' + dumped.at(from + 3) + '-'
                + QString::number(dumped.at(from + 4).toInt(nullptr, 2));
        };
        QCOMPARE(rowOf(0), core4.at(i));
        QCOMPARE(rowOf(5), core9.at(i));
        const QString bits = QString(read.at(i)).remove(',');
        const auto channelsOf = [&bits](int from) {
            return bits.mid(from, 12) + '-' + bits.at(from + 12) + '-' + bits.at(from + 13);
        };
        QCOMPARE(channelsOf(0), core4.at(i));
        QCOMPARE(channelsOf(14), core9.at(i));
    }
}

void TestCapture::timeInFiles()
{
    for (const char* ending : {"sr", "vcd"})
        QCOMPARE(capture({"-o", path(QString("live.") + ending), "--clock", "27e6"}).status, 0);
    const QByteArray vcd = bytesOf(path("live.vcd"));
    QVERIFY(vcd.contains("$timescale 1 ps $end"));
    QVERIFY(vcd.contains("\n#37037\n"));
    QVERIFY2(vcd.endsWith("\n#3703704\n"), vcd.right(200)); // 100 periods
    QProcess sigrok;
    sigrok.start("sigrok-cli", {"-i", path("live.sr"), "--show"});
    QVERIFY(finished(sigrok));
    QVERIFY(sigrok.readAllStandardOutput().contains("Samplerate: 27000000"));
}

void TestCapture::changesForOneRun_data()
{
    QTest::addColumn<int>("row");
    for (size_t i = 0; i < std::size(kChanges); ++i)
        QTest::newRow(kChanges[i].what) << int(i);
}

// What options change is what the model says of a file that is changed alike.
void TestCapture::changesForOneRun()
{
    QFETCH(int, row);
    const Change& change = kChanges[row];
    const auto edited = countingCore(4, "clk");
    change.edit(*edited);
    OXA::writeOXAConfigToXml({edited.get()}, path("edited.oxa"));
    QCOMPARE(model(path("edited.oxa"), {"-o", path("model.csv")}).status, 0);
    const Result result = capture(
        QStringList {"--core", "4", "--timeout", patienceSeconds(), "-o", path("live.csv")}
        + change.options);
    QCOMPARE(result.err, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(bytesOf(path("live.csv")), bytesOf(path("model.csv")));
}

// The last samples of the waveform, as it went, with nothing that looks like a trigger.
void TestCapture::withoutATrigger()
{
    if (!Terminal::exists())
        QSKIP(Terminal::kNone);
    const auto never = countingCore(4, "clk");
    never->matchUnits[0]->value0 = "1111111111";
    OXA::writeOXAConfigToXml({never.get()}, path("edited.oxa"));
    const Result expected = model(path("edited.oxa"), {});
    const QStringList call {"--core", "4", "--unit", "M0=1111111111", "-o"};
    Result result = captureUntil("but has stopped", call + QStringList(path("live.csv")));
    QCOMPARE(result.status, 1);
    QVERIFY2(result.err.contains(expected.err.trimmed()
                 + "; its sample clock ran, but has stopped or is very slow"),
        qPrintable(result.err));
    QCOMPARE(result.out.section('\n', 0, 0),
        QString("core 4, window 0: no trigger, 50 samples from 0 on"));
    const QByteArray csv = bytesOf(path("live.csv"));
    QCOMPARE(followingRows(csv), 50);
    const QString last = QString("%1").arg((kSamples - 1) % kRound, 10, 2, QChar('0'));
    QCOMPARE(QString(csv).trimmed().section('\n', -1).split(',').mid(3, 11).join(""), "0" + last);
    QVERIFY(!QRegularExpression("^\\d+,\\d+,\\d+,1", QRegularExpression::MultilineOption)
                 .match(csv)
                 .hasMatch());

    result = captureUntil("but has stopped", call + QStringList {path("live.vcd"), "--json"});
    const QJsonObject core
        = QJsonDocument::fromJson(result.out.toUtf8())["cores"].toArray().at(0).toObject();
    QCOMPARE(core["triggered"], QJsonValue(false));
    QCOMPARE(core["names"], QJsonValue("verified"));
    QCOMPARE(core["level"], QJsonValue(0));
    QCOMPARE(core["window"], QJsonValue(0));
    QCOMPARE(core["matches"]["M0"], QJsonValue(0));
    const QString matches = QString::number(core["matches"]["M1"].toInt());
    QVERIFY2(expected.err.contains("M1 matched " + matches + " time"), qPrintable(matches));
    QCOMPARE(core["windows"][0]["triggerSample"], QJsonValue(QJsonValue::Null));
    QVERIFY(bytesOf(path("live.vcd")).contains("core 4, window 0: no trigger\n$end"));
}

void TestCapture::progressOnATerminal_data()
{
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("shown");
    QTest::newRow("of any width") << "0"
                                  << "waiting for level 1 of 2, window 1 of 2; M0 matched 0 times, "
                                     "M1 matched [1-9]\\d* times";
    QTest::newRow("cut to one line") << "40"
                                     << "core 4: [^\r]{30}…\r";
}

// A core that waits tells its matches, but never in more than a line.
void TestCapture::progressOnATerminal()
{
    QFETCH(QString, columns);
    QFETCH(QString, shown);
    if (!Terminal::exists())
        QSKIP(Terminal::kNone);
    // On a busy machine a waveform can be over between two looks at the core; a loop never is.
    LiveTarget looping;
    QVERIFY2(looping.start(path("c.oxa"), path("wave.vcd"), {"--loop"}), looping.target.said());
    const QStringList options {"--openocd", looping.address(), "--core", "4"};
    const QString call
        = (QStringList {"capture", path("c.oxa"), "--unit", "M0=1111111111"} + options).join(' ');
    Terminal terminal;
    terminal.run(OXA_PROGRAM " " + call, QString("stty cols %1; ").arg(columns));
    QVERIFY2(terminal.says(shown), terminal.said());
    terminal.interrupt();
    QVERIFY(finished(terminal));
}

void TestCapture::positionsOnDevices_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<int>("expressionType");
    QTest::addColumn<int>("atPowerUp");
    QTest::newRow("static") << kPart << 0 << 20;
    QTest::newRow("dynamic") << kPart << 1 << 20;
    QTest::newRow("static, a deeper pipeline") << kDeeperPart << 0 << 21;
    QTest::newRow("dynamic, a deeper pipeline") << kDeeperPart << 1 << 21;
}

// One position is one sample, whoever tells it; only what was captured from power-up on may differ,
// and is said to.
void TestCapture::positionsOnDevices()
{
    QFETCH(QString, part);
    QFETCH(int, expressionType);
    QFETCH(int, atPowerUp);
    const auto core = countingCore(4, "clk");
    core->expressionType = expressionType;
    core->captureInitDataEnabled = true;
    OXA::writeOXAConfigToXml({core.get()}, path("position.oxa"));
    const QString shown = oxa({"show", path("position.oxa")}).out;
    QVERIFY2(shown.contains("50 samples, 20 before the trigger\n"), qPrintable(shown));
    QVERIFY2(
        shown.contains(QRegularExpression("from power-up on.* 20 samples .*; 21 on .*QX1N-9\\b")),
        qPrintable(shown));

    const QStringList simulate {
        "simulate", path("position.oxa"), "--part", part, "--stimulus", path("wave.vcd")};
    const Result model = oxa(simulate + QStringList {"--model"});
    const QString window("core 4, window 0: trigger at sample %1, 50 samples from %2 on\n");
    const int trigger = model.out.section("sample ", 1).section(',', 0, 0).toInt();
    QVERIFY2(model.out.startsWith(window.arg(trigger).arg(trigger - 20)), qPrintable(model.out));
    const Result verilog = oxa(simulate);
    QCOMPARE(verilog.err, QString());
    QCOMPARE(verilog.out, model.out);

    LiveTarget live;
    QVERIFY2(live.start(path("position.oxa"), path("wave.vcd"), {}, part), live.target.said());
    const QStringList call {
        "capture", path("position.oxa"), "--openocd", live.address(), "--timeout", "60"};
    const Result powerUp = oxa(call + QStringList {"--power-up"});
    QVERIFY2(powerUp.out.startsWith(window.arg(atPowerUp).arg(0)), qPrintable(powerUp.out));
    QCOMPARE(powerUp.err.contains("has 21 samples before the trigger on this device, not 20"),
        atPowerUp == 21);
    for (const QStringList& option : {
             QStringList(), QStringList {"--position", "20"}
    }) {
        const Result armed = oxa(call + option);
        QCOMPARE(armed.err, QString());
        QVERIFY2(armed.out.startsWith(window.arg(20).arg(0)), qPrintable(armed.out));
    }
}

// A forced window holds samples that follow one another.
void TestCapture::immediately()
{
    const Result result = capture({"--core", "4", "--immediate", "-o", path("live.csv")});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QVERIFY(followingRows(bytesOf(path("live.csv"))) >= 60); // windows may be short in front
}

// Ctrl-C: what is there is read, and the next run finds cores that are idle.
void TestCapture::interrupted()
{
    QFile::remove(path("live.csv"));
    if (!Terminal::exists())
        QSKIP(Terminal::kNone);
    // Of a clock that has stopped, what was told last may be older than its last edge.
    const Result result = captureUntil("its sample clock ran, but has stopped",
        {"--core", "4", "--unit", "M0=0011110000", "-o", path("live.csv")});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.err.contains("core 4 was stopped with 1 of 2 windows whole"),
        qPrintable(result.err));
    QCOMPARE(bytesOf(path("live.csv")).count("\n4,0,"), 50);
    QCOMPARE(bytesOf(path("live.csv")).count("\n4,1,"), 50); // waiting, without a trigger
    QVERIFY2(result.out.contains("core 4, window 1: no trigger"), qPrintable(result.out));
    QCOMPARE(capture({"--core", "4"}).status, 0);
}

void TestCapture::lite()
{
    OXA::AOCore_Lite lite;
    lite.sampleClock = "clk";
    lite.captureAmount = 40;
    lite.captureInitDataEnabled = true;
    lite.signalList = {busOf("n", 10)};
    OXA::writeOXAConfigToXml_Lite({&lite}, path("lite.oxa"));
    LiveTarget live;
    QVERIFY2(live.start(path("lite.oxa"), path("wave.vcd"), {"--loop"}), live.target.said());
    QCOMPARE(model(path("lite.oxa"), {"-o", path("model.csv")}).status, 0);
    const QStringList call {"capture", path("lite.oxa"), "--openocd", live.address(), "-o",
        path("live.csv"), "--timeout", patienceSeconds()};
    const Result first = oxa(call + QStringList {"--power-up"});
    QCOMPARE(first.err, QString()); // it knows its names
    QCOMPARE(first.status, 0);
    QCOMPARE(bytesOf(path("live.csv")), bytesOf(path("model.csv")));
    const Result again = oxa(call + QStringList {"--power-up"});
    QCOMPARE(again.status, 1);
    QVERIFY2(again.err.contains("from power-up on was ended before"), qPrintable(again.err));
    // Later runs begin where the waveform is.
    const Result later = oxa(call);
    QVERIFY2(later.status == 0, qPrintable(later.err));
    QCOMPARE(followingRows(bytesOf(path("live.csv"))), 40);
}

void TestCapture::unusableCalls_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("error");
    const auto row = [](const QStringList& options, int status, const char* error) {
        QTest::newRow(qPrintable(options.join(' '))) << options << status << QString(error);
    };
    row({"--unit", "M0=101"}, 2, "several cores have this match unit; choose one");
    row({"--core", "9", "--unit", "M0=101"}, 2, "value0 \"101\" has 3 characters for the 10");
    row({"--core", "9", "--unit", "M0=Z000000000"}, 2, "--unit M0=Z000000000: value0");
    row({"--unit", "M7=1"}, 2, "no core that runs has this match unit");
    row({"--unit", "7=1"}, 2, "does not begin as in M3=10XR");
    row({"--core", "9", "--unit", "M99999999999=0000000000"}, 2, "does not begin as in M3=10XR");
    row({"--core", "9", "--unit", "M0=0000000000..1"}, 2, "the unit compares with one value");
    row({"--core", "4", "--counter", "M1=17"}, 2, "M1=17: ");
    row({"--core", "4", "--counter", "M1=2x"}, 2, "\"2x\" is no number");
    row({"--core", "4", "--counter", "M0=2"}, 2, "the unit was built without a counter");
    row({"--core", "5"}, 2, "no such core, only 4, 9");
    row({"--windows", "6"}, 1, "built for 2 windows at most");
    row({"--samples", "200"}, 1, "its memory of 256 samples does not hold 2 windows of 200");
    row({"--position", "50"}, 1, "the trigger lies outside of the window");
    row({"--position", "-1"}, 2, "--position: \"-1\" is no number from 0 to 1000000000;");
    row({"--timeout", "nan"}, 2, "\"nan\" is no number from 0.001");
    row({"--clock", "1e-300"}, 2, "is no number from 1 to");
    row({"--power-up", "--windows", "1"}, 2, "what runs already takes no other settings");
    row({"--power-up"}, 2, "core 9 does not capture from power-up on");
    row({"--tap", "cpu.tap"}, 1, "no device \"cpu.tap\", only fpga.tap");
    row({"-o", "out.txt"}, 2, "out.txt: the ending has to be");
    row({"-o", "/no/such/out.vcd"}, 2,
        "out.vcd: cannot be written: there is no directory /no/such");
}

void TestCapture::unusableCalls()
{
    QFETCH(QStringList, options);
    QFETCH(int, status);
    QFETCH(QString, error);
    const Result result = capture(options);
    QVERIFY2(result.err.contains(error), qPrintable(result.err));
    QCOMPARE(result.status, status);
}

QTEST_GUILESS_MAIN(TestCapture)
#include "test_capture.moc"
