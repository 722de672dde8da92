#include "engine_double.h"

#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/lite_files.h"
#include "oxautils/generate/oxa_prepare.h"
#include "oxautils/generate/oxa_proxy_qx_syn.h"
#include "oxautils/generate/standard_files.h"
#include "oxautils/generate/synthesis_options.h"
#include "support/device_double.h"
#include "support/files.h"

#include <QDirIterator>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>

using namespace OXA;

namespace {

const QString kGolden = OXA_SOURCE_DIR "/tests/generate/golden";

// A device is what its name says: "...-ZV" a variant, "...-NOSHADOW" one without such memory.
void answerByName(const QString& deviceName)
{
    DEV::ChipInfo& chip = DeviceDouble::instance().answer;
    chip.partNumber = "PART";
    chip.name = QString(deviceName).remove("-ZV").remove("-NOSHADOW");
    chip.variant = deviceName.contains("-ZV") ? "ZV" : "LV";
    chip.package = "QN48";
    chip.speed = "C6/I5";
    chip.resources = QStringList {"1152", "0", "945", "41"};
    if (!deviceName.contains("-NOSHADOW"))
        chip.resources << "4Kb"
                       << "72";
}

QStringList filesBelow(const QString& directory)
{
    QStringList files;
    QDirIterator it(directory, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        files += QDir(directory).relativeFilePath(it.next());
    files.sort();
    return files;
}

QByteArray coreElement(const QByteArray& attributes, const QByteArray& content = {})
{
    const QByteArray clock = attributes.contains("sample_clock") ? "" : " sample_clock=\"clk\" ";
    return "<AoCore " + clock + attributes + ">" + content + "</AoCore>";
}

QMultiMap<QString, QVariant> optionsOf(const QMap<QString, QVariant>& request)
{
    return QMultiMap<QString, QVariant>(request.value("options").toMap());
}

QByteArray configuration(const QByteArray& body)
{
    return "<OXA_CONFIG><Version>3.0</Version>" + body + "</OXA_CONFIG>";
}

}

class TestGenerate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void goldenDirectories_data();
    void goldenDirectories();
    void depthsAsDefines_data();
    void depthsAsDefines();
    void configurationNameDecidesTheDepthRegister();
    void escapedNames();
    void namesThatNoEscapeSaves();
    void preparedLists();
    void controlTopsByDevice_data();
    void controlTopsByDevice();
    void ownTop();
    void synthesisRequests();
    void failedSynthesis();
    void stopWhileFilesAreWritten();
    void nothingToGenerate_data();
    void nothingToGenerate();
    void filesThatCannotBeOpened_data();
    void filesThatCannotBeOpened();
    void emptyingADirectory();
    void inputsInTheWorkDirectoryStay_data();
    void inputsInTheWorkDirectoryStay();
    void placesThatARunRefuses();
    void manySignals();
    void publishedOptions();

private:
    QString path(const QString& name) const { return m_dir->filePath(name); }
    OxaArg request(const QByteArray& content, const QString& device = "QX1N-9");

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestGenerate::init()
{
    m_dir.reset(new QTemporaryDir);
    EngineDouble::instance() = EngineDouble();
    DeviceDouble::instance() = DeviceDouble();
    DeviceDouble::instance().onLookup = answerByName;
}

OxaArg TestGenerate::request(const QByteArray& content, const QString& device)
{
    OxaArg arg;
    arg.configFile = writeFile(path("a.oxa"), content);
    arg.outputFile = path("out//netlist.v");
    arg.device = "PART";
    arg.package = device;
    arg.workDir = path("work");
    arg.ipDir = path("ip/");
    return arg;
}

void TestGenerate::goldenDirectories_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("device");
    QTest::newRow("standard") << "standard"
                              << "QX1NZ-1-ZV";
    QTest::newRow("dynamic, bare device") << "dynamic"
                                          << "QX1NZ-1-NOSHADOW";
    QTest::newRow("lite") << "lite"
                          << "QX1NZ-1D-ZV-NOSHADOW";
    QTest::newRow("lite, one bit") << "lite_bit"
                                   << "QX1N-9";
}

// OXA_UPDATE_GOLDEN writes what is generated over what is expected: then read the difference.
void TestGenerate::goldenDirectories()
{
    QFETCH(QString, name);
    QFETCH(QString, device);
    const QString golden = kGolden + "/" + name;
    OxaArg arg = request(bytesOf(golden + ".oxa"), device);
    if (qEnvironmentVariableIsSet("OXA_UPDATE_GOLDEN"))
        arg.workDir = golden;
    QCOMPARE(OxaPrepare().prepare(arg), 1);
    QCOMPARE(filesBelow(arg.workDir), filesBelow(golden));
    const QStringList files = filesBelow(golden);
    QVERIFY(files.size() >= 4);
    for (const QString& file : files)
        QCOMPARE(bytesOf(arg.workDir + "/" + file), bytesOf(golden + "/" + file));
}

void TestGenerate::depthsAsDefines_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<QByteArray>("segment");
    const QList<QPair<int, QByteArray>> rows = {
        {1024,   "9"           },
        {512,    "8"           },
        {1,      "-1"          },
        {2,      "-2.52982e-08"},
        {3,      "0.584962"    },
        {1000,   "8.96578"     },
        {65536,  "15"          },
        {131072, "16"          },
        {0,      "-inf"        }
    };
    for (const auto& row : rows)
        QTest::addRow("%d", row.first) << row.first << row.second;
}

void TestGenerate::depthsAsDefines()
{
    QFETCH(int, depth);
    QFETCH(QByteArray, segment);
    const QByteArray attributes = "index=\"5\" storage_depth=\"" + QByteArray::number(depth) + "\"";
    const OxaArg arg = request(configuration(coreElement(attributes)));
    QCOMPARE(OxaPrepare().prepare(arg), 1);
    QCOMPARE(bytesOf(path("work/ao_0/qx_ao_top_define.v")),
        "`define CORE5_DEF_SIGNAL_IN_EN\n`define CORE5_DEF_SYN_BSRAM\n`define CORE5_SEG" + segment
            + "\n");
}

void TestGenerate::configurationNameDecidesTheDepthRegister()
{
    const QList<QPair<QString, QByteArray>> rows = {
        {"a.oxa", "003b"},
        {"aoxa",  "003b"},
        {"a.OXA", "003c"},
        {"a.xml", "003c"}
    };
    for (const auto& row : rows) {
        OxaArg arg = request({});
        arg.configFile
            = writeFile(path(row.first), configuration(coreElement("capture_amount=\"63\"")));
        QCOMPARE(OxaPrepare().prepare(arg), 1);
        QVERIFY(bytesOf(path("work/ao_0/qx_ao_init.v"))
                    .contains("parameter DATA_DEPTH_INIT = 16'h" + row.second + ";\n"));
    }
}

void TestGenerate::escapedNames()
{
    const QList<QPair<QString, QString>> rows = {
        {"",                      ""                        },
        {"abc_$9",                "abc_$9"                  },
        {"a[3]",                  "\\a[3] "                 },
        {"a.b",                   "\\a.b "                  },
        {"\\a[3] ",               "\\a[3] "                 },
        {"\\a",                   "\\a"                     },
        {QString::fromUtf8("é"), QString::fromUtf8("\\é ")},
        {"a\\b",                  "\\a\\b "                 }
    };
    for (const auto& row : rows)
        QCOMPARE(escapedSignalName(row.first), row.second);
}

void TestGenerate::namesThatNoEscapeSaves()
{
    const QByteArray list = "<SignalList><Signal>a b</Signal><Signal></Signal>"
                            "<Signal>\\ok </Signal><Signal>\\open</Signal></SignalList>";
    const OxaArg arg
        = request(configuration(coreElement("") + coreElement("sample_clock=\"c&#10;k\"", list)));
    QTest::ignoreMessage(QtCriticalMsg,
        "core 1: the signal name \"c\\nk\" holds white space, where Verilog ends a name, and 2 "
        "more names have faults; what follows such a name is read as Verilog");
    QTest::ignoreMessage(QtWarningMsg, "core 1: the signal name \"\" is empty");
    QCOMPARE(OxaPrepare().prepare(arg), 1);
}

void TestGenerate::preparedLists()
{
    OxaPrepare prepared;
    const QByteArray three = coreElement("") + coreElement("") + coreElement("");
    prepared.files = QStringList {"left from before"};
    OxaArg arg = request(configuration(three));
    arg.workDir += "//x/..";
    QCOMPARE(prepared.prepare(arg), 1);
    QCOMPARE(prepared.includePaths, QStringList({path("work"), path("ip/OXA")}));
    QCOMPARE(prepared.files.size(), 14);
    const QString ip = path("ip//OXA/"); // as concatenated
    QCOMPARE(prepared.files.mid(4, 4),
        QStringList({ip + "QX_AO_1/qx_ao_crc32.v", ip + "QX_AO_1/qx_ao_match.v",
            ip + "QX_AO_1/qx_ao_mem_ctrl.v", ip + "QX_AO_1/qx_ao_top.v"}));
    QCOMPARE(prepared.files.at(12), ip + "QX_CON/qx_con_top.v");
    QCOMPARE(prepared.files.at(13), arg.workDir + "/qx_oxa_top.v");

    QCOMPARE(prepared.prepare(request(bytesOf(kGolden + "/lite.oxa"))), 1);
    const QString lite = path("ip//OXA_LITE/");
    QCOMPARE(prepared.includePaths, QStringList({path("work"), path("ip/OXA_LITE")}));
    QCOMPARE(prepared.files,
        QStringList({lite + "QX_AO_0/qx_ao_mem_ctrl.v", lite + "QX_AO_0/qx_ao_top.v",
            lite + "QX_CON/qx_con_top.v", path("work/qx_oxa_top.v")}));
}

void TestGenerate::controlTopsByDevice_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("top");
    QTest::newRow("wide die") << "QX5A-138B"
                              << "qx_con_top_138.v";
    QTest::newRow("early answer") << "QX3AN-6A"
                                  << "qx_con_top_6k.v";
    for (const char* device : {"qx3an-6a", "QX5A-138", ""})
        QTest::newRow(device) << device << "qx_con_top.v";
}

void TestGenerate::controlTopsByDevice()
{
    QFETCH(QString, device);
    QFETCH(QString, top);
    OxaPrepare prepared;
    prepared.prepare(request(configuration(coreElement("")), device));
    QVERIFY(prepared.files.at(4).endsWith("/QX_CON/" + top));
    QVERIFY(DeviceDouble::instance().lookups.contains("PART|" + device));
}

void TestGenerate::ownTop()
{
    OxaArg arg = request(configuration(coreElement("")));
    arg.customTop = "mine";
    OxaPrepare prepared;
    QCOMPARE(prepared.prepare(arg), 1);
    QCOMPARE(prepared.files.size(), 5);
    QVERIFY(!QFile::exists(path("work/qx_oxa_top.v")));
    QCOMPARE(OXAProxyQxSyn(nullptr).startGenerate(arg), 0); // this driver always writes its own
    QVERIFY(QFile::exists(path("work/qx_oxa_top.v")));
}

void TestGenerate::synthesisRequests()
{
    OXAProxyQxSyn generator(nullptr);
    generator.tryToStop();
    QCOMPARE(EngineDouble::instance().stops, 1);

    OxaArg arg = request(configuration(coreElement("") + coreElement("")));
    arg.workDir += "//";
    QCOMPARE(generator.startGenerate(arg), 0);
    const QMap<QString, QVariant> standard = EngineDouble::instance().requests.value(0);
    QCOMPARE(standard.keys(),
        QStringList({"device", "files", "iniconfig", "options", "project_name", "work_dir"}));
    QCOMPARE(standard.value("work_dir"), QVariant(path("work")));
    QCOMPARE(standard.value("project_name"), QVariant("oxa_std"));
    QCOMPARE(standard.value("iniconfig"), QVariant(QStringList("RESOURCE_CHECK=false")));
    QCOMPARE(standard.value("device").toMap(),
        QVariantMap({
            {"pn",      "PART"  },
            {"name",    "QX1N-9"},
            {"package", "QN48"  },
            {"speed",   "C6/I5" }
    }));
    const QMultiMap<QString, QVariant> options = optionsOf(standard);
    QCOMPARE(options.values("output_file"), QVariantList({path("out/netlist.v")}));
    QCOMPARE(options.values("disable_insert_pad"), QVariantList({"1"}));
    QCOMPARE(options.values("include_path"), QVariantList({path("ip/OXA"), path("work")}));
    const QVariantList files = standard.value("files").toList();
    QCOMPARE(files.size(), 10);
    QCOMPARE(files.at(4).toMap(),
        QVariantMap({
            {"path", path("ip/OXA/QX_AO_1/qx_ao_crc32.v")},
            {"type", "verilog"                           }
    }));
    QCOMPARE(files.at(9).toMap().value("path"), QVariant(path("work/qx_oxa_top.v")));

    QCOMPARE(generator.startGenerate(request(bytesOf(kGolden + "/lite.oxa"))), 0);
    const QMap<QString, QVariant> lite = EngineDouble::instance().requests.value(1);
    QCOMPARE(lite.value("project_name"), QVariant("oxa_lite"));
    QCOMPARE(lite.value("files").toList().size(), 4);
    QCOMPARE(
        optionsOf(lite).values("include_path"), QVariantList({path("ip/OXA_LITE"), path("work")}));
}

void TestGenerate::failedSynthesis()
{
    OXAProxyQxSyn generator(nullptr);
    EngineDouble& engine = EngineDouble::instance();
    engine.result = 7;
    engine.messages = QStringList {"a.v:3: broken"};
    const OxaArg arg = request(configuration(coreElement("")));
    for (int run = 0; run < 2; ++run) { // the messages are those of the last run alone
        QCOMPARE(generator.startGenerate(arg), 1);
        QCOMPARE(generator.errorMessages(), QStringList("a.v:3: broken"));
    }
    engine.result = 0;
    QCOMPARE(generator.startGenerate(arg), 0);
    QCOMPARE(generator.errorMessages(), QStringList());
}

// Of a first run, whose engine would keep the stop, and of a later one.
void TestGenerate::stopWhileFilesAreWritten()
{
    OXAProxyQxSyn generator(nullptr);
    EngineDouble& engine = EngineDouble::instance();
    const OxaArg arg = request(configuration(coreElement("")));
    for (int run = 0; run < 2; ++run) {
        DeviceDouble::instance().onLookup = [&generator](const QString& deviceName) {
            answerByName(deviceName);
            std::thread([&generator] { generator.tryToStop(); }).join();
        };
        QCOMPARE(generator.startGenerate(arg), 1);
        QCOMPARE(engine.requests.size(), run);
        QCOMPARE(
            generator.errorMessages(), QStringList("the synthesis was stopped before it began"));
        DeviceDouble::instance().onLookup = answerByName;
        QCOMPARE(engine.stops, 0);
        QCOMPARE(generator.startGenerate(arg), 0); // a stop holds for its run alone
    }
    engine.onRun = [&generator] { std::thread([&generator] { generator.tryToStop(); }).join(); };
    generator.startGenerate(arg);
    QCOMPARE(engine.stops, 1);
}

void TestGenerate::nothingToGenerate_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("critical");
    QTest::newRow("no core") << configuration("") << "";
    QTest::newRow("unknown mode") << configuration("<Mode>lite</Mode>" + coreElement("")) << "";
    QTest::newRow("lite without a core") << configuration("<Mode>Lite</Mode>") << "";
    QTest::newRow("lite, impossible version")
        << QByteArray("<O><Version>3.x</Version><Mode>Lite</Mode></O>")
        << "%1: Invalid Oxa config file.";
}

void TestGenerate::nothingToGenerate()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, critical);
    const OxaArg arg = request(content);
    for (int driver = 0; driver < 2; ++driver) {
        QVERIFY(QDir().mkpath(path("work/old")));
        writeFile(path("work/") + WORK_DIR_MARK, "x");
        if (!critical.isEmpty())
            QTest::ignoreMessage(QtCriticalMsg, qPrintable(critical.arg(arg.configFile)));
        if (driver == 0)
            QCOMPARE(OxaPrepare().prepare(arg), 0);
        else
            QCOMPARE(OXAProxyQxSyn(nullptr).startGenerate(arg), -1);
        const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        QCOMPARE(QDir(path("work")).entryList(all), QStringList(WORK_DIR_MARK)); // emptied
    }
    QVERIFY(EngineDouble::instance().requests.isEmpty());
}

void TestGenerate::filesThatCannotBeOpened_data()
{
    QTest::addColumn<QString>("blocked"); // a directory stands where the file should
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("lite");
    const struct {
        const char *blocked, *message;
        bool lite;
    } rows[] = {
        {"ao_control/qx_con_top_define.v", "failed to generate qx_con_top_define.v", false},
        {"ao_control/qx_con_parameter.v",  "failed to generate qx_con_parameter.v",  false},
        {"ao_0/qx_ao_top_define.v",        "failed to generate qx_ao_top_define.v",  false},
        {"ao_0/qx_ao_parameter.v",         "failed to generate qx_ao_parameter.v",   false},
        {"ao_0/qx_ao_expression.v",        "failed to generate qx_ao_expression.v",  false},
        {"ao_0/qx_ao_init.v",              "failed to generate qx_ao_init.v",        false},
        {"qx_oxa_top.v",                   "failded to open result file.",           false},
        {"ao_control/qx_con_top_define.v", "failed to generate qx_con_top_define.v", true },
        {"ao_0/qx_ao_parameter.v",         "failed to generate qx_ao_parameter.v",   true },
        {"qx_oxa_top.v",                   "failed to open result file.",            true },
    };
    for (const auto& row : rows)
        QTest::addRow("%s %s", row.lite ? "lite" : "standard", row.blocked)
            << row.blocked << row.message << row.lite;
}

void TestGenerate::filesThatCannotBeOpened()
{
    QFETCH(QString, blocked);
    QFETCH(QString, message);
    QFETCH(bool, lite);
    const OxaArg arg = request({});
    QVERIFY(QDir().mkpath(path("work/") + blocked));
    QTest::ignoreMessage(QtCriticalMsg, qPrintable(message));
    AoCore core(0);
    AOCore_Lite liteCore;
    core.sampleClock = liteCore.sampleClock = "clk";
    int failures = 0;
    if (lite) {
        failures += !lite_generateFilesForAoCtrl(arg, {&liteCore});
        failures += !lite_generateFilesForAoCore(arg, {&liteCore});
        failures += !lite_generateOxaTop(arg, {&liteCore});
    } else {
        failures += !std_generateFileForAoCtrl(arg, {&core});
        failures += !std_generateFilesForAoCore(arg, {&core, &core});
        failures += !std_generateOxaTop(arg, {&core});
        QCOMPARE(QFile::exists(path("work/ao_1")), !blocked.startsWith("ao_0"));
    }
    QCOMPARE(failures, 1);
}

void TestGenerate::emptyingADirectory()
{
    QVERIFY(QDir().mkpath(path("tree/a/.hidden/b")));
    QVERIFY(QDir().mkpath(path("outside")));
    writeFile(path("outside/kept"), "x");
    writeFile(path("tree/a/.file"), "x");
    QVERIFY(QFile::link(path("outside"), path("tree/link")));
    QVERIFY(QFile::link(path("outside/kept"), path("tree/a/filelink")));
    QVERIFY(QFile::link(path("nowhere"), path("tree/a/dangling")));
    removeDir(path("tree"));
    QVERIFY(QFileInfo(path("tree")).isDir());
    QCOMPARE(QDir(path("tree"))
                 .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
        QStringList());
    QCOMPARE(bytesOf(path("outside/kept")), QByteArray("x"));
    removeDir(path("missing"));
    QVERIFY(!QFile::exists(path("missing")));

    QDir::setCurrent(path("outside"));
    removeDir("");
    QVERIFY(QFile::exists("kept"));
    QVERIFY(QFile::link(path("outside"), path("tree/link")));
    writeFile(path("tree/kept"), "x");
    removeDir(path("tree/link/../outside")); // not what it reads as
    QDir::setCurrent("/");
    QVERIFY(QFile::exists(path("tree/kept")) && !QFile::exists(path("outside/kept")));
}

void TestGenerate::inputsInTheWorkDirectoryStay_data()
{
    QTest::addColumn<QString>("config"); // below the test's directory
    QTest::addColumn<QString>("ip");
    QTest::addColumn<QString>("workDir");
    QTest::addColumn<QString>("catalogue");
    const auto row = [](const char* what, const char* config, const char* ip, const char* workDir,
                         const char* catalogue) {
        QTest::newRow(what) << config << ip << workDir << catalogue;
    };
    row("configuration", "work/sub/a.oxa", "ip", "work", "");
    row("work directory through a link", "work/sub/a.oxa", "ip", "link", "");
    row("cores", "a.oxa", "work", "work/.", "");
    row("work directory in the cores", "a.oxa", "ip", "ip/OXA_LITE/x", "");
    row("device catalogue", "a.oxa", "ip", "work", "work/sub/linked.csv");
    row("unreadable configuration", "broken.oxa", "ip", "work", "");
    row("no configuration", "none.oxa", "ip", "work", "");
}

void TestGenerate::inputsInTheWorkDirectoryStay()
{
    QFETCH(QString, config);
    QFETCH(QString, ip);
    QFETCH(QString, workDir);
    QFETCH(QString, catalogue);
    QVERIFY(QDir().mkpath(path("work/sub")) && QDir().mkpath(path("ip/OXA_LITE/x")));
    QVERIFY(QFile::link(path("work"), path("link")));
    const QByteArray content = configuration(coreElement(""));
    writeFile(path("work/sub/a.oxa"), content);
    writeFile(path("ip/OXA_LITE/x/core.v"), content);
    writeFile(path("broken.oxa"), "<OXA_CONFIG>");
    QVERIFY(QFile::link(path("devices.csv"), path("work/sub/linked.csv")));
    OxaArg arg = request(content);
    arg.configFile = path(config);
    arg.ipDir = path(ip);
    arg.workDir = path(workDir);
    qputenv("OXA_DEVICE_DB", catalogue.isEmpty() ? "" : QFile::encodeName(path(catalogue)));
    const QStringList before = filesBelow(m_dir->path());
    const QRegularExpression message("the work directory .* would be emptied, but it holds .*"
                                     "|(none|broken).oxa cannot be read");
    QTest::ignoreMessage(QtCriticalMsg, message);
    QCOMPARE(OxaPrepare().prepare(arg), 0);
    QTest::ignoreMessage(QtCriticalMsg, message);
    QCOMPARE(OXAProxyQxSyn(nullptr).startGenerate(arg), -1);
    QCOMPARE(filesBelow(m_dir->path()), before);
    qunsetenv("OXA_DEVICE_DB");
}

void TestGenerate::placesThatARunRefuses()
{
    const QByteArray content = configuration(coreElement(""));
    OxaArg arg = request(content);
    arg.workDir = ""; // or the files would go into the root directory
    QTest::ignoreMessage(QtCriticalMsg, "no work directory is named");
    QCOMPARE(OXAProxyQxSyn(nullptr).startGenerate(arg), -1);

    arg = request(content);
    QVERIFY(QFile::link(arg.configFile, path("netlist.v")));
    arg.outputFile = path("netlist.v");
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression("netlist.v would replace .*a.oxa"));
    QCOMPARE(OXAProxyQxSyn(nullptr).startGenerate(arg), -1);
    QVERIFY(EngineDouble::instance().requests.isEmpty());
    QCOMPARE(OxaPrepare().prepare(arg), 1); // it writes no netlist
}

// Any quadratic step makes this hang for minutes.
void TestGenerate::manySignals()
{
    QByteArray list = "<SignalList>";
    for (int i = 0; i < 100000; ++i)
        list += "<Signal>top/u" + QByteArray::number(i / 2) + "/d</Signal>";
    list += "</SignalList>";
    const OxaArg arg = request(configuration(coreElement("", list)));
    QCOMPARE(OxaPrepare().prepare(arg), 1);
    const QByteArray top = bytesOf(path("work/qx_oxa_top.v"));
    QCOMPARE(top.count("\ninput \\top/u49999/d ;\n"), 1);
    QCOMPARE(top.count("\\top/u49999/d ,\\top/u49999/d }"), 1); // once a port, twice a sample
}

void TestGenerate::publishedOptions()
{
    QCOMPARE(COMMON_SYN_OPTIONS.size(), 16);
    QCOMPARE(COMMON_SYN_OPTIONS.at(10), QString("set_option -vlog_std sysv"));
    QCOMPARE(COMMON_SYN_OPTIONS.at(15), QString("set_option -disable_io_insertion 1"));
}

QTEST_GUILESS_MAIN(TestGenerate)
#include "test_generate.moc"
