#include "oxautils/generate/oxa_prepare.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/rows.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

namespace {

const QString kUart = OXA_SOURCE_DIR "/examples/uart/uart.oxa";

struct Call {
    const char *what, *error;
};

constexpr Call kUnusableCalls[] = {
    {"",                                               "error: A subcommand is required; `oxa --help`"},
    {"fnord",                                          "error: no command \"fnord\"; `oxa --help`"    },
    {"show",                                           "error: FILE is required; `oxa show --help`"   },
    {"generate UART --work-dir DIR/w",                 "error: --part is required"                    },
    {"generate UART ON --work-dir DIR/w --no-top",     "--no-synthesis"                               },
    {"generate UART ON --work-dir w --device QX-none", "of device \"QX-none\" in the catalogue"       },
    {"generate UART ON --work-dir UART",               "is not a directory"                           },
    {"show no/such.oxa",                               "error: no/such.oxa: No such file or directory"},
    {"show /",                                         "error: /: it is a directory"                  },
    {"new UART",                                       "exists; remove it first"                      },
    {"check UART --part QX",                           "no part \"QX\""                               },
};

struct Content {
    const char *what, *content, *error;
};

constexpr Content kUnusable[] = {
    {"malformed",       "<OXA_CONFIG>\n  <a></b>",                        "tag mismatch at 2:9"                  },
    {"bare ampersands", "<a>M0 && M1</a>",                                "at 1:8\n    Write &amp; for &"        },
    {"no version",      "<OXA_CONFIG/>",                                  "the root element has no \"Version\""  },
    {"newer",           "<O><Version>4.0</Version></O>",                  "this program reads versions up to 3.0"},
    {"no number",       "<O><Version>3.x</Version><Mode>Lite</Mode></O>", "its \"Version\""                      },
    {"other mode",      "<O><Version>3.0</Version><Mode>lite</Mode></O>", "neither \"Standard\" nor"             },
};

// Calls that would write over an input, which IN has of each kind, or over the user's home.
constexpr const char* kOverwriting[] = {
    "generate IN/c.oxa ON --force --work-dir IN",
    "generate IN/c.oxa ON --force --work-dir IN/data/.. --device-db IN/data/devices.csv",
    "generate IN/c.oxa ON --force --work-dir IN/data", // the environment names the catalogue
    "generate IN/c.oxa ON --force --work-dir IN/ip/OXA --ip-dir IN/ip",
    "generate IN/c.oxa ON --force --work-dir IN/../home",
    "generate IN/c.oxa ON --force --work-dir IN/w -o IN/data/../c.oxa",
    "generate IN/c.oxa ON --force --work-dir IN/w -o IN/twin.v",
    "generate IN/c.oxa ON --force --work-dir IN/w --ip-dir IN/ip -o IN/ip/OXA/core.v",
    "simulate IN/c.oxa ON --stimulus IN/wave.vcd --keep-work IN",
    "simulate IN/c.oxa ON --stimulus wave.vcd --keep-work IN/ip --netlist IN/ip/OXA/core.v",
    "simulate IN/c.oxa ON --stimulus IN/wave.vcd --model -o IN/wave.vcd",
    "simulate IN/c.oxa ON --stimulus IN/wave.vcd --model -o IN/twin.vcd",
};

}

class TestOxa : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void unusableCalls_data() { addRows(kUnusableCalls); }
    void unusableCalls();
    void newConfigurations();
    void showing();
    void unusableConfigurations_data() { addRows(kUnusable); }
    void unusableConfigurations();
    void problems();
    void problemsAsJson();
    void statusesOfCheck();
    void generateWarns();
    void whatCannotBeBuiltIsRefused();
    void listAsJsonAndWithoutTop();
    void workDirectoriesOfOthersAreLeftAlone();
    void inputsStay_data();
    void inputsStay();
    void oneRunInAWorkDirectory();
    void streamsTakeResults();
    void referencePageIsWhatHelpSays();
    void shellCompletes();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QStringList words(QString call) const;
    Result run(const QString& call) const { return oxa(words(call)); }
    QString changed(const QString& name, const QByteArray& from, const QByteArray& to) const;

    QTemporaryDir m_dir;
};

void TestOxa::initTestCase()
{
    changed("deep.oxa", "storage_depth=\"1024\"", "storage_depth=\"65536\"");
    changed("broken.oxa", "value0=\"R01000110\"", "value0=\"r1000110\"");
    changed("warned.oxa", "countinuous=\"0\" func=\"0\" value0=\"R01000110\"",
        "countinuous=\"1\" func=\"0\" value0=\"R01000110\"");
}

// Of a call: UART is the example, ON a part, DIR the test's directory.
QStringList TestOxa::words(QString call) const
{
    call.replace("UART", kUart).replace(" ON", " --part QX1N-9LV-QFN88-C6");
    return call.replace("DIR", m_dir.path()).split(' ', Qt::SkipEmptyParts);
}

// The example with `from` replaced by `to`.
QString TestOxa::changed(const QString& name, const QByteArray& from, const QByteArray& to) const
{
    QByteArray content = bytesOf(kUart);
    if (!content.contains(from))
        qFatal("no %s in the example", from.constData());
    return writeFile(path(name), content.replace(from, to));
}

void TestOxa::unusableCalls()
{
    const Call& row = rowOf(kUnusableCalls);
    const Result result = run(row.what);
    QCOMPARE(result.status, 2);
    QVERIFY2(result.err.contains(row.error), qPrintable(result.err));
    QVERIFY(result.out.isEmpty());
}

void TestOxa::newConfigurations()
{
    for (const QString kind : {"Standard", "Lite"}) {
        const QString file = path(kind + ".oxa");
        QCOMPARE(run("new " + file + (kind == "Lite" ? " --lite" : "")).status, 0);
        QVERIFY(run("show " + file).out.contains(kind + ", version 3.0, 0 cores"));
        QCOMPARE(run("new " + file).status, 2); // never over a user's file
        QVERIFY(run("show " + file).out.contains(kind));
    }
    QCOMPARE(run("new DIR/no/such/x.oxa").status, 2);
}

void TestOxa::showing()
{
    const Result text = run("show UART");
    QCOMPARE(text.status, 0);
    for (const char* part : {"Standard, version 3.0, 1 core\n", " matches\n",
             "clock uart_tx/clk, rising edge", "17 bits x 1024 samples in block SRAM",
             "T0       9 bits: uart_tx/start, uart_tx/data (8)",
             "M0       Basic w/edges: T0 == R01000110\n", "M1       Range: T1 in 10000..10111\n",
             "static, M0, then M1 && M2\n"})
        QVERIFY2(text.out.contains(part), part);
    const QJsonObject core = jsonOf(run("show UART --json")).value("cores").toArray()[0].toObject();
    QCOMPARE(core["signals"].toArray().size(), 17);
    QCOMPARE(core["units"].toArray().size(), 3);

    QByteArray damaged = bytesOf(changed("damaged.oxa", "trig_type=\"0\"", "trig_type=\"1\""));
    QVERIFY(run("show DIR/damaged.oxa").out.contains(" differs; the content asks for "));
    const int at = damaged.indexOf("    <OXA_ID>");
    damaged.remove(at, damaged.indexOf('\n', at) + 1 - at);
    writeFile(path("unsigned.oxa"), damaged);
    QVERIFY(run("show DIR/unsigned.oxa").out.contains("checksum missing; "));
}

void TestOxa::unusableConfigurations()
{
    const Content& row = rowOf(kUnusable);
    writeFile(path("bad.oxa"), row.content);
    const Result result = run("generate DIR/bad.oxa ON --work-dir DIR/unused");
    QCOMPARE(result.status, 2);
    QVERIFY2(result.err.contains(row.error), qPrintable(result.err));
    QVERIFY(!QFile::exists(path("unused")));
    QCOMPARE(run("show DIR/bad.oxa").err, result.err);
}

void TestOxa::problems()
{
    const Result result = run("check DIR/broken.oxa");
    QCOMPARE(result.status, 1);
    QString expected
        = "FILE:80:13: warning: core 0, M0: value0 \"r1000110\" has 8 characters for the 9 signals "
          "of T0, and is filled up with \"0\" in front [value-too-short]\n"
          "    Write one character a signal; X for those that do not matter.\n"
          "FILE:80:13: error: core 0, M0: value0 \"r1000110\" holds \"r\"; function \"==\" of type "
          "\"Basic w/edges\" takes only \"01XRFBN\" [value-character]\n"
          "    Levels are 0, 1 and X, with == and != only; edges R, F, B, N take a type with "
          "edges.\n"
          "FILE: 1 error, 1 warning\n";
    QCOMPARE(result.out, expected.replace("FILE", path("broken.oxa")));
    QVERIFY(result.err.isEmpty());
    QCOMPARE(run("check UART").out, kUart + ": no problems\n");
}

void TestOxa::problemsAsJson()
{
    const Result result = run("check DIR/broken.oxa --json");
    QCOMPARE(result.status, 1);
    const QJsonArray problems = jsonOf(result)["problems"].toArray();
    QCOMPARE(problems.size(), 2);
    QJsonObject first = problems.first().toObject();
    QVERIFY(first.take("text").toString().contains("8 characters"));
    QVERIFY(first.take("hint").toString().endsWith('.'));
    QCOMPARE(QJsonDocument(first).toJson(QJsonDocument::Compact),
        QByteArray(R"({"column":13,"core":0,"line":80,"place":"core 0, M0",)"
                   R"("rule":"value-too-short","severity":"warning","unit":0})"));
}

void TestOxa::statusesOfCheck()
{
    const QList<QPair<QString, int>> rows = {
        {"UART --strict",                         0},
        {"UART ON",                               0},
        {"DIR/deep.oxa --part QX1N-1LV-CSP30-C6", 1},
        {"DIR/warned.oxa",                        0},
        {"DIR/warned.oxa --strict",               1},
    };
    for (const auto& row : rows) {
        QCOMPARE(run("check " + row.first).status, row.second);
        QCOMPARE(run("check " + row.first + " --json").status, row.second);
    }
}

void TestOxa::generateWarns()
{
    const QString call = "generate DIR/warned.oxa ON --work-dir DIR/warned --no-synthesis";
    const QString line = path("warned.oxa")
        + ":80:13: %1: core 0, M0: it counts only gapless matches, but its counter is off "
          "[idle-continuous]\n";
    const Result strict = run(call + " --strict");
    QCOMPARE(strict.status, 1);
    QVERIFY2(strict.err.startsWith(line.arg("error")), qPrintable(strict.err));
    QVERIFY(!QFile::exists(path("warned")));
    const Result warned = run(call);
    QCOMPARE(warned.status, 0);
    QCOMPARE(warned.err, line.arg("warning"));
}

void TestOxa::whatCannotBeBuiltIsRefused()
{
    changed("illegal.oxa", "M1 &amp;", "M3 &amp;");
    writeFile(path("w.vcd"), "no waveform");
    for (const char* call : {"generate --work-dir DIR/refused --no-synthesis",
             "simulate --keep-work DIR/refused --stimulus DIR/w.vcd",
             "simulate --model -o DIR/refused --stimulus DIR/w.vcd",
             "target --stimulus DIR/w.vcd"}) {
        const Result result = run(call + QString(" DIR/illegal.oxa ON"));
        QCOMPARE(result.status, 1);
        QVERIFY2(result.err.contains("names M3, which is switched off"), qPrintable(result.err));
        QVERIFY(result.err.contains("\n    ")); // what to do
        QVERIFY(!QFile::exists(path("refused")));
    }
}

void TestOxa::listAsJsonAndWithoutTop()
{
    const Result result
        = run("generate UART ON --work-dir DIR/list --no-synthesis --no-top --json");
    QCOMPARE(result.status, 0);
    QCOMPARE(jsonOf(result)["files"].toArray().size(), 5);
    QCOMPARE(jsonOf(result)["includePaths"].toArray().size(), 2);
    QVERIFY(!QFile::exists(path("list/qx_oxa_top.v")));
}

void TestOxa::workDirectoriesOfOthersAreLeftAlone()
{
    const QString work = path("their directory");
    const QStringList call
        = words("generate UART ON --no-synthesis --work-dir") + QStringList(work);
    const QString mine = work + "/.mine";
    QVERIFY(QDir().mkpath(work));
    const Result first = oxa(call); // empty: nothing to lose
    QCOMPARE(first.status, 0);
    QVERIFY2(first.err.contains("holds a blank"), "no tool reads such a list");
    writeFile(mine, "x");
    QCOMPARE(oxa(call).status, 0); // generated into before
    QVERIFY(!QFile::exists(mine));
    OXA::removeDir(work);
    writeFile(mine, "x");
    const Result refused = oxa(call);
    QCOMPARE(refused.status, 2);
    QVERIFY(refused.err.contains("--force"));
    QCOMPARE(bytesOf(mine), QByteArray("x"));
    QCOMPARE(oxa(call + QStringList("--force")).status, 0);
    QVERIFY(!QFile::exists(mine));
}

void TestOxa::inputsStay_data()
{
    QTest::addColumn<QString>("call");
    for (const char* call : kOverwriting)
        QTest::newRow(call) << QString(call);
}

void TestOxa::inputsStay()
{
    QFETCH(QString, call);
    const QTemporaryDir directory;
    const QString in = directory.filePath("in");
    for (const char* name : {"/data", "/ip/OXA", "/../home/w"}) {
        QVERIFY(QDir().mkpath(in + name));
        writeFile(in + name + "/.oxa-generated", "");
    }
    for (const char* name :
        {"/.oxa-generated", "/ip/.oxa-generated", "/ip/OXA/core.v", "/wave.vcd"})
        writeFile(in + name, "any");
    QVERIFY(QFile::copy(kUart, in + "/c.oxa"));
    QVERIFY(QFile::copy(OXA_SOURCE_DIR "/share/device/devices.csv", in + "/data/devices.csv"));
    QCOMPARE(::link(qPrintable(in + "/data/devices.csv"), qPrintable(in + "/twin.v")), 0);
    QCOMPARE(::link(qPrintable(in + "/wave.vcd"), qPrintable(in + "/twin.vcd")), 0);
    const auto content = [&directory] {
        QMap<QString, QByteArray> files;
        QDirIterator it(directory.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
            QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            files.insert(path, bytesOf(path));
        }
        return files;
    };
    const auto before = content();
    const Result result
        = oxa(words(call.replace("IN/", in + '/').replace(QRegularExpression("IN$"), in)),
            {"OXA_DEVICE_DB=" + in + "/data/devices.csv", "HOME=" + directory.filePath("home")});
    QCOMPARE(result.status, 2);
    QVERIFY2(result.err.contains("would be emptied, but it holds or lies in")
            || result.err.contains("which this run reads"),
        qPrintable(result.err));
    QCOMPARE(content(), before);
}

// The second run touches nothing, and a run that was killed is in nobody's way.
void TestOxa::oneRunInAWorkDirectory()
{
    const QString engine = writeProgram(path("engine"),
        "echo >../started\nwhile [ ! -e ../end ]; do sleep 0.1; done\n"
        "echo 'module qx_oxa; endmodule' >netlist.v\n");
    const QStringList call = words("generate UART ON --work-dir DIR/shared");
    for (const bool killed : {true, false}) {
        QProcess first;
        first.setEnvironment(
            QProcess::systemEnvironment() + QStringList("OXA_SYNTHESIS_ENGINE=" + engine));
        first.start(OXA_PROGRAM, call);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path("shared/started")), kPatience);
        const Result second = oxa(call + QStringList("--force"));
        QCOMPARE(second.status, 2);
        QVERIFY2(
            second.err.contains(QString("shared is in use by process %1;").arg(first.processId())),
            qPrintable(second.err));
        QVERIFY(QFile::exists(path("shared/started")));
        if (killed)
            first.kill();
        else
            writeFile(path("shared/end"), "");
        QVERIFY(finished(first));
        QFile::remove(path("shared/started"));
    }
    QVERIFY(QFile::exists(path("shared/qx_oxa_netlist.v")));
}

// Whole results, or an exit status that tells of the loss.
void TestOxa::streamsTakeResults()
{
    QVERIFY(run("new /dev/stdout").out.startsWith("<?xml"));
    const QString engine
        = writeProgram(path("quick"), "echo 'module qx_oxa; endmodule' >netlist.v\n");
    const auto statusInto = [&](const QString& file, const QString& call) {
        QProcess process;
        process.setEnvironment(
            QProcess::systemEnvironment() + QStringList("OXA_SYNTHESIS_ENGINE=" + engine));
        process.setStandardOutputFile(file);
        process.start(OXA_PROGRAM, words(call));
        return finished(process) ? process.exitCode() : -1;
    };
    // "/dev/stdout" is a regular file then.
    QCOMPARE(
        statusInto(path("out.v"), "generate UART ON --work-dir DIR/streamed -o /dev/stdout"), 0);
    QCOMPARE(bytesOf(path("out.v")), QByteArray("module qx_oxa; endmodule\n"));
    QCOMPARE(statusInto("/dev/full", "show UART"), 1);
}

// tools/cli-reference BUILD/bin/oxa markdown >docs/cli.md
void TestOxa::referencePageIsWhatHelpSays()
{
    QProcess process;
    process.start(OXA_SOURCE_DIR "/tools/cli-reference", {OXA_PROGRAM, "markdown"});
    QVERIFY(finished(process));
    QCOMPARE(process.readAllStandardOutput(), bytesOf(OXA_SOURCE_DIR "/docs/cli.md"));
}

void TestOxa::shellCompletes()
{
    const QString script = R"(
        PATH=$(dirname "$1"):$PATH; source "$2"; shift 2
        COMP_WORDS=(oxa "$@"); COMP_CWORD=$#; _oxa; (IFS=+; echo "${COMPREPLY[*]}"))";
    writeFile(path("two words.vcd"), "");
    const QList<QPair<QStringList, QString>> rows = {
        {{"sh"},                                  "show"             },
        {{"set", "--edge", "f"},                  "falling"          },
        {{"generate", "--no-s"},                  "--no-synthesis"   },
        {{"check", "--part", "QX1N-9LV-QFN88-C"}, "QX1N-9LV-QFN88-C6"},
        {{"simulate", "--stimulus", "two"},       "two words.vcd"    },
    };
    for (const auto& row : rows) {
        QProcess process;
        process.setWorkingDirectory(m_dir.path());
        process.start("bash",
            QStringList {
                "-c", script, "bash", OXA_PROGRAM, OXA_SOURCE_DIR "/share/bash-completion/oxa"}
                + row.first);
        QVERIFY(finished(process));
        QCOMPARE(QString(process.readAllStandardOutput()).trimmed(), row.second);
    }
}

QTEST_GUILESS_MAIN(TestOxa)
#include "test_oxa.moc"
