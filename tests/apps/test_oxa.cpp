#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/generate/oxa_prepare.h"
#include "support/files.h"
#include "support/oxa_program.h"

#include <dev/device_db.h>

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

namespace {

const QString kUart = OXA_SOURCE_DIR "/examples/uart/uart.oxa";
const QString kUartLite = OXA_SOURCE_DIR "/examples/uart/uart_lite.oxa";
const QString kIpDir = OXA_BINARY_DIR "/share/oxautils/ip";

}

class TestOxa : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void helpAndVersion();
    void unusableCalls_data();
    void unusableCalls();
    void newConfigurations();
    void showing();
    void checksumStates();
    void unusableConfigurations_data();
    void unusableConfigurations();
    void generatedListIsWhatTheLibraryPrepares();
    void listAsJsonAndWithoutTop();
    void workDirectoriesOfOthersAreLeftAlone();
    void inputsStay_data();
    void inputsStay();
    void oneRunInAWorkDirectory();
    void streamsTakeResults();
    void unknownParts();
    void failedWritesFailTheJob();
    void examplesAreAsTheLibraryWritesThem();
    void referencePageIsWhatHelpSays();
    void shellCompletes();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    Result generate(const QStringList& more);

    QTemporaryDir m_dir;
    DEV::ChipInfo m_chip;
};

void TestOxa::initTestCase()
{
    m_chip = DEV::DeviceDb::instance().chips().value(0);
    QVERIFY(!m_chip.partNumber.isEmpty());
}

Result TestOxa::generate(const QStringList& more)
{
    return oxa(
        QStringList {"generate", kUart, "--part", m_chip.partNumber, "--work-dir", path("work")}
        + more);
}

void TestOxa::helpAndVersion()
{
    QCOMPARE(oxa({"--version"}).status, 0);
    const Result help = oxa({"--help"});
    QCOMPARE(help.status, 0);
    for (const char* command : {"new", "show", "generate"}) {
        QVERIFY(help.out.contains(QString("\n  %1 ").arg(command)));
        const Result own = oxa({command, "--help"});
        QCOMPARE(own.status, 0);
        QVERIFY(own.out.contains(QString("Usage: oxa %1").arg(command)));
    }
}

void TestOxa::unusableCalls_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const QStringList& arguments, const char* error) {
        QTest::newRow(name) << arguments << error;
    };
    row("no command", {}, "error: A subcommand is required; `oxa --help`");
    row("unknown command", {"fnord"}, "error: no command \"fnord\"; `oxa --help`");
    row("no file", {"show"}, "error: FILE is required; `oxa show --help`");
    row("no part", {"generate", kUart, "--work-dir", "w"}, "error: --part is required");
    row("top without list", {"generate", kUart, "--part", "P", "--work-dir", "w", "--no-top"},
        "--no-synthesis");
    row("missing file", {"show", "no/such.oxa"}, "error: no/such.oxa: No such file or directory");
    row("directory", {"show", "/"}, "error: /: it is a directory");
}

void TestOxa::unusableCalls()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    const Result result = oxa(arguments);
    QCOMPARE(result.status, 2);
    QVERIFY2(result.err.contains(error), qPrintable(result.err));
    QVERIFY(result.out.isEmpty());
}

void TestOxa::newConfigurations()
{
    QCOMPARE(oxa({"new", path("s.oxa")}).status, 0);
    QCOMPARE(oxa({"new", path("l.oxa"), "--lite"}).status, 0);
    QVERIFY(oxa({"show", path("s.oxa")}).out.contains("Standard, version 3.0, 0 cores"));
    QVERIFY(oxa({"show", path("l.oxa")}).out.contains("Lite, version 3.0, 0 cores"));
    const QByteArray before = bytesOf(path("s.oxa"));
    QCOMPARE(oxa({"new", path("s.oxa"), "--lite"}).status, 2); // never over a user's file
    QCOMPARE(bytesOf(path("s.oxa")), before);
    QCOMPARE(oxa({"new", path("no/such/x.oxa")}).status, 2);
}

void TestOxa::showing()
{
    const Result text = oxa({"show", kUart});
    QCOMPARE(text.status, 0);
    for (const char* part : {"Standard, version 3.0, 1 core\n", " matches\n",
             "clock uart_tx/clk, rising edge", "17 bits x 1024 samples in block SRAM",
             "T0       9 bits: uart_tx/start, uart_tx/data (8)",
             "M0       Basic w/edges: T0 == R01000110\n",
             "M1       Range: T1 in range 10000 : 10111\n", "static, M0, then M1 && M2\n"})
        QVERIFY2(text.out.contains(part), part);
    const QJsonObject json
        = QJsonDocument::fromJson(oxa({"show", kUart, "--json"}).out.toUtf8()).object();
    QCOMPARE(json.value("checksum").toObject().value("state").toString(), QString("matches"));
    const QJsonObject core = json.value("cores").toArray().at(0).toObject();
    QCOMPARE(core.value("signals").toArray().size(), 17);
    QCOMPARE(core.value("units").toArray().size(), 3);
    QVERIFY(oxa({"show", kUartLite}).out.contains("8 bits x 512 samples in block SRAM"));
}

void TestOxa::checksumStates()
{
    QByteArray text = bytesOf(kUart);
    text.replace("trig_type=\"0\"", "trig_type=\"1\"");
    QVERIFY(oxa({"show", writeFile(path("c.oxa"), text)})
                .out.contains(" differs; the content asks for "));
    const int at = text.indexOf("    <OXA_ID>");
    text.remove(at, text.indexOf('\n', at) + 1 - at);
    QVERIFY(oxa({"show", writeFile(path("c.oxa"), text)}).out.contains("checksum missing; "));
}

void TestOxa::unusableConfigurations_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const QByteArray& content, const char* error) {
        QTest::newRow(name) << content << error;
    };
    row("malformed", "<OXA_CONFIG>\n  <a></b>", "tag mismatch at 2:9");
    row("bare ampersands", "<a>M0 && M1</a>", "at 1:8\n    Write &amp; for &");
    row("no version", "<OXA_CONFIG/>", "Unknown Oxa version.; the root element has no \"Version\"");
    row("newer", "<O><Version>4.0</Version></O>",
        "too high.; this program reads versions up to 3.0");
    row("no number", "<O><Version>3.x</Version></O>", "Invalid Oxa config file.; its \"Version\"");
    row("no number, lite", "<O><Version>3.x</Version><Mode>Lite</Mode></O>",
        "Invalid Oxa config file.; its \"Version\"");
    row("other mode", "<O><Version>3.0</Version><Mode>lite</Mode></O>",
        "its \"Mode\" is neither \"Standard\" nor \"Lite\"");
    row("empty", "", "unexpected end of file at 1:1");
}

void TestOxa::unusableConfigurations()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, error);
    const QString file = writeFile(path("bad.oxa"), content);
    const QStringList calls[] = {
        {"show",        file          },
        { "generate", file, "--part", m_chip.partNumber, "--work-dir", path("unused")}
    };
    for (const QStringList& call : calls) {
        const Result result = oxa(call);
        QCOMPARE(result.status, 2);
        QVERIFY2(result.err.contains(error), qPrintable(result.err));
    }
    QVERIFY(!QFile::exists(path("unused")));
}

void TestOxa::generatedListIsWhatTheLibraryPrepares()
{
    const Result result = generate({"--no-synthesis"});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.status, 0);
    OXA::OxaArg arg;
    arg.configFile = kUart;
    arg.device = m_chip.partNumber;
    arg.package = m_chip.name;
    arg.workDir = path("work");
    arg.ipDir = kIpDir;
    OXA::OxaPrepare prepared;
    QCOMPARE(prepared.prepare(arg), 1);
    QStringList lines = prepared.files;
    for (const QString& directory : qAsConst(prepared.includePaths))
        lines += "+incdir+" + directory;
    QCOMPARE(result.out, lines.join('\n') + '\n');
}

void TestOxa::listAsJsonAndWithoutTop()
{
    const Result result = generate({"--no-synthesis", "--no-top", "--json", "--force"});
    QCOMPARE(result.status, 0);
    const QJsonObject json = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(json.value("files").toArray().size(), 5);
    QCOMPARE(json.value("includePaths").toArray().size(), 2);
    QVERIFY(!QFile::exists(path("work/qx_oxa_top.v")));
}

void TestOxa::workDirectoriesOfOthersAreLeftAlone()
{
    const QString work = path("their directory");
    const QStringList call {
        "generate", kUart, "--part", m_chip.partNumber, "--no-synthesis", "--work-dir", work};
    QVERIFY(QDir().mkpath(work));
    const Result first = oxa(call); // empty: nothing to lose
    QCOMPARE(first.status, 0);
    QVERIFY2(first.err.contains("holds a blank"), "no tool reads such a list");
    writeFile(work + "/mine", "x");
    QCOMPARE(oxa(call).status, 0); // generated into before
    QVERIFY(!QFile::exists(work + "/mine"));
    OXA::removeDir(work);
    writeFile(work + "/mine", "x");
    const Result refused = oxa(call);
    QCOMPARE(refused.status, 2);
    QVERIFY(refused.err.contains("--force"));
    QCOMPARE(bytesOf(work + "/mine"), QByteArray("x"));
    QCOMPARE(oxa(call + QStringList("--force")).status, 0);
    QVERIFY(!QFile::exists(work + "/mine"));
    QCOMPARE(oxa(QStringList(call).replaceInStrings(work, kUart)).status, 2); // a file
}

void TestOxa::inputsStay_data()
{
    QTest::addColumn<QString>("options"); // DIR: with an input of each kind, and the user's home
    QTest::newRow("configuration") << "--work-dir DIR";
    QTest::newRow("catalogue") << "--work-dir DIR/data/.. --device-db DIR/data/devices.csv";
    QTest::newRow("named by the environment") << "--work-dir DIR/data";
    QTest::newRow("cores") << "--work-dir DIR/ip/OXA --ip-dir DIR/ip";
    QTest::newRow("home") << "--work-dir DIR/../home";
    QTest::newRow("netlist over configuration") << "--work-dir DIR/w -o DIR/data/../c.oxa";
    QTest::newRow("netlist over catalogue") << "--work-dir DIR/w -o DIR/twin.v";
    QTest::newRow("netlist over cores") << "--work-dir DIR/w --ip-dir DIR/ip -o DIR/ip/OXA/core.v";
}

void TestOxa::inputsStay()
{
    QFETCH(QString, options);
    const QTemporaryDir directory;
    const QString in = directory.filePath("in");
    for (const char* name : {"/data", "/ip/OXA", "/../home/w"})
        QVERIFY(QDir().mkpath(in + name));
    QVERIFY(QFile::copy(kUart, in + "/c.oxa"));
    QVERIFY(QFile::copy(OXA_SOURCE_DIR "/share/device/devices.csv", in + "/data/devices.csv"));
    QCOMPARE(::link(qPrintable(in + "/data/devices.csv"), qPrintable(in + "/twin.v")), 0);
    writeFile(in + "/ip/OXA/core.v", "core");
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
        = oxa(QStringList {"generate", in + "/c.oxa", "--part", m_chip.partNumber, "--force"}
                + options.replace("DIR", in).split(' '),
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
    const QString engine = writeFile(path("engine"),
        "#!/bin/sh\necho >../started\nwhile [ ! -e ../end ]; do sleep 0.1; done\n"
        "echo 'module qx_oxa; endmodule' >netlist.v\n");
    QFile::setPermissions(engine, QFile::ReadOwner | QFile::ExeOwner);
    const QStringList call {
        "generate", kUart, "--part", m_chip.partNumber, "--work-dir", path("shared")};
    for (const char* ending : {"kill", "end"}) {
        QProcess first;
        first.setEnvironment(
            QProcess::systemEnvironment() + QStringList("OXA_SYNTHESIS_ENGINE=" + engine));
        first.start(OXA_PROGRAM, call);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path("shared/started")), 60000);
        const Result second = oxa(call + QStringList("--force"));
        QCOMPARE(second.status, 2);
        QVERIFY2(
            second.err.contains(QString("shared is in use by process %1;").arg(first.processId())),
            qPrintable(second.err));
        QVERIFY(QFile::exists(path("shared/started")));
        if (ending == QByteArray("kill"))
            first.kill();
        else
            writeFile(path("shared/end"), "");
        QVERIFY(first.waitForFinished(60000));
        QFile::remove(path("shared/started"));
    }
    QVERIFY(QFile::exists(path("shared/qx_oxa_netlist.v")));
}

void TestOxa::streamsTakeResults()
{
    QCOMPARE(oxa({"new", "/dev/stdout"}).out, QString(bytesOf(path("s.oxa"))));
    const QString engine
        = writeFile(path("quick"), "#!/bin/sh\necho 'module qx_oxa; endmodule' >netlist.v\n");
    QFile::setPermissions(engine, QFile::ReadOwner | QFile::ExeOwner);
    QProcess process;
    process.setEnvironment(
        QProcess::systemEnvironment() + QStringList("OXA_SYNTHESIS_ENGINE=" + engine));
    process.setStandardOutputFile(path("result.v")); // "/dev/stdout" is a regular file then
    process.start(OXA_PROGRAM,
        {"generate", kUart, "--part", m_chip.partNumber, "--work-dir", path("streamed"), "-o",
            "/dev/stdout"});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(bytesOf(path("result.v")), QByteArray("module qx_oxa; endmodule\n"));
}

void TestOxa::unknownParts()
{
    const Result result
        = oxa({"generate", kUart, "--part", m_chip.partNumber + "Q", "--work-dir", path("p")});
    QCOMPARE(result.status, 2);
    QVERIFY2(
        result.err.contains("did you mean") && result.err.contains('"' + m_chip.partNumber + '"'),
        qPrintable(result.err));
    QCOMPARE(generate({"--device", "QX-none"}).status, 2);
    QCOMPARE(generate({"--device-db", "no/such.csv"}).status, 2);
}

void TestOxa::failedWritesFailTheJob()
{
    // A full device stands where the wrapper goes: /dev/full takes the open and refuses the bytes.
    const Result result = oxa({"show", kUart});
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(OXA_PROGRAM, {"show", kUart});
    QVERIFY(finished(process));
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(!result.out.isEmpty());
}

void TestOxa::examplesAreAsTheLibraryWritesThem()
{
    const QList<OXA::AoCore*> cores = OXA::readOXAConfigFromXml(kUart);
    OXA::writeOXAConfigToXml(cores, path("uart"));
    qDeleteAll(cores);
    QCOMPARE(bytesOf(path("uart")), bytesOf(kUart));
    const QList<OXA::AOCore_Lite*> liteCores = OXA::readOXAConfigFromXml_Lite(kUartLite);
    OXA::writeOXAConfigToXml_Lite(liteCores, path("lite"));
    qDeleteAll(liteCores);
    QCOMPARE(bytesOf(path("lite")), bytesOf(kUartLite));
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
