// SPDX-License-Identifier: Apache-2.0
#include "engine_double.h"

#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/lite_files.h"
#include "oxautils/generate/oxa_prepare.h"
#include "oxautils/generate/oxa_proxy_qx_syn.h"
#include "oxautils/generate/remembered_builds.h"
#include "oxautils/generate/standard_files.h"
#include "oxautils/generate/work_dir.h"
#include "support/device_double.h"
#include "support/files.h"
#include "support/rows.h"

#include <QDirIterator>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>

using namespace OXA;

namespace {

const QString kGolden = OXA_SOURCE_DIR "/tests/generate/golden";

// The device's name says what it has: "...-ZV" the variant, "...-NOSHADOW" no shadow SRAM.
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
    void configurationNameDecidesTheDepthRegister();
    void namesThatNoEscapeSaves();
    void controlTopsByDevice();
    void ownTop();
    void requestsHoldThePreparedLists();
    void failedSynthesis();
    void stopWhileFilesAreWritten();
    void nothingToGenerate();
    void filesThatCannotBeOpened();
    void emptyingADirectory();
    void inputsInTheWorkDirectoryStay();
    void placesThatARunRefuses();
    void manySignals();
    void rememberedByTwoProgramsAtOnce();

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

struct GoldenRow {
    const char *what, *device; // what: the configuration, and the directory that is expected
};

constexpr GoldenRow kGoldenRows[] = {
    {"standard", "QX1NZ-1-ZV"          },
    {"dynamic",  "QX1NZ-1-NOSHADOW"    },
    {"lite",     "QX1NZ-1D-ZV-NOSHADOW"},
    {"lite_bit", "QX1N-9"              },
};

void TestGenerate::goldenDirectories_data() { addRows(kGoldenRows); }

// OXA_UPDATE_GOLDEN writes what is generated over what is expected: then read the difference.
void TestGenerate::goldenDirectories()
{
    const GoldenRow& row = rowOf(kGoldenRows);
    const QString golden = kGolden + "/" + row.what;
    OxaArg arg = request(bytesOf(golden + ".oxa"), row.device);
    if (qEnvironmentVariableIsSet("OXA_UPDATE_GOLDEN"))
        arg.workDir = golden;
    QCOMPARE(OxaPrepare().prepare(arg), 1);
    QCOMPARE(filesBelow(arg.workDir), filesBelow(golden));
    const QStringList files = filesBelow(golden);
    QVERIFY(files.size() >= 4);
    for (const QString& file : files)
        QCOMPARE(bytesOf(arg.workDir + "/" + file), bytesOf(golden + "/" + file));
}

void TestGenerate::configurationNameDecidesTheDepthRegister()
{
    for (const QString name : {"a.oxa", "aoxa", "a.OXA", "a.xml"}) {
        OxaArg arg = request({});
        arg.configFile = writeFile(path(name), configuration(coreElement("capture_amount=\"63\"")));
        QCOMPARE(OxaPrepare().prepare(arg), 1);
        const QByteArray depth = name.endsWith("oxa") ? "16'h003b;" : "16'h003c;";
        const QByteArray registers = bytesOf(path("work/ao_0/qx_ao_init.v"));
        QVERIFY2(registers.contains("DATA_DEPTH_INIT = " + depth), qPrintable(name));
    }
}

void TestGenerate::namesThatNoEscapeSaves()
{
    const QByteArray list = "<SignalList><Signal>a b</Signal><Signal></Signal>"
                            "<Signal>\\ok </Signal><Signal>\\open</Signal></SignalList>";
    const OxaArg arg
        = request(configuration(coreElement("") + coreElement("sample_clock=\"c&#10;k\"", list)));
    QTest::ignoreMessage(QtCriticalMsg,
        "core 1: the signal name \"c\\nk\" contains white space, where Verilog ends a name, and 2 "
        "more names have faults; what follows such a name is read as Verilog");
    QTest::ignoreMessage(QtWarningMsg, "core 1: the signal name \"\" is empty");
    QCOMPARE(OxaPrepare().prepare(arg), 1);
}

void TestGenerate::controlTopsByDevice()
{
    const QList<QPair<QString, QString>> rows = {
        {"QX5A-138B", "qx_con_top_138.v"},
        {"QX3AN-6A",  "qx_con_top_6k.v" },
        {"qx3an-6a",  "qx_con_top.v"    },
        {"",          "qx_con_top.v"    },
    };
    for (const auto& row : rows) {
        OxaPrepare prepared;
        prepared.prepare(request(configuration(coreElement("")), row.first));
        QCOMPARE(prepared.files.at(4), path("ip//OXA/QX_CON/") + row.second);
        QVERIFY(DeviceDouble::instance().lookups.contains("PART|" + row.first));
    }
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

// Of a file of each mode. Paths of the lists are as they were concatenated, those of a request
// are clean.
void TestGenerate::requestsHoldThePreparedLists()
{
    const QList<QPair<QByteArray, QStringList>> rows = {
        {configuration(coreElement("") + coreElement("")),
         {"oxa_std", "OXA", "QX_AO_0/qx_ao_crc32.v", "QX_AO_0/qx_ao_match.v",
                "QX_AO_0/qx_ao_mem_ctrl.v", "QX_AO_0/qx_ao_top.v", "QX_AO_1/qx_ao_crc32.v",
                "QX_AO_1/qx_ao_match.v", "QX_AO_1/qx_ao_mem_ctrl.v", "QX_AO_1/qx_ao_top.v",
                "QX_CON/qx_con_top.v"}},
        {bytesOf(kGolden + "/lite.oxa"),
         {"oxa_lite", "OXA_LITE", "QX_AO_0/qx_ao_mem_ctrl.v", "QX_AO_0/qx_ao_top.v",
                "QX_CON/qx_con_top.v"}},
    };
    for (const auto& row : rows) {
        OxaArg arg = request(row.first);
        arg.workDir += "//x/..";
        const QString ip = row.second.at(1);
        QStringList files;
        QVariantList sources;
        for (const QString& file : row.second.mid(2))
            files += path("ip//") + ip + '/' + file;
        files += arg.workDir + "/qx_oxa_top.v";
        for (const QString& file : files)
            sources += QVariantMap {
                {"path", QDir::cleanPath(file)},
                {"type", "verilog"            }
            };
        OxaPrepare prepared;
        prepared.files = QStringList {"left from before"};
        QCOMPARE(prepared.prepare(arg), 1);
        QCOMPARE(prepared.files, files);
        QCOMPARE(prepared.includePaths, QStringList({path("work"), path("ip/") + ip}));

        QCOMPARE(OXAProxyQxSyn(nullptr).startGenerate(arg), 0);
        const QMap<QString, QVariant> sent = EngineDouble::instance().requests.last();
        QCOMPARE(sent.size(), 6);
        QCOMPARE(sent["work_dir"], QVariant(path("work")));
        QCOMPARE(sent["project_name"], QVariant(row.second.at(0)));
        QCOMPARE(sent["iniconfig"], QVariant(QStringList("RESOURCE_CHECK=false")));
        QCOMPARE(sent["files"], QVariant(sources));
        const QVariantMap device = {
            {"pn",      "PART"  },
            {"name",    "QX1N-9"},
            {"package", "QN48"  },
            {"speed",   "C6/I5" }
        };
        QCOMPARE(sent["device"].toMap(), device);
        const QMultiMap<QString, QVariant> options(sent["options"].toMap());
        QCOMPARE(options.values("output_file"), QVariantList({path("out/netlist.v")}));
        QCOMPARE(options.values("disable_insert_pad"), QVariantList({"1"}));
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        const QVariantList includes = {path("ip/") + ip, path("work")};
#else
        const QVariantList includes = {
            QStringList {path("work"), path("ip/") + ip}
        };
#endif
        QCOMPARE(options.values("include_path"), includes);
    }
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
    generator.tryToStop();
    QCOMPARE(engine.stops, 2); // in a run of the engine, and behind it
}

void TestGenerate::nothingToGenerate()
{
    const QList<QByteArray> contents
        = {configuration(""), configuration("<Mode>lite</Mode>" + coreElement("")),
            configuration("<Mode>Lite</Mode>"), "<O><Version>3.x</Version><Mode>Lite</Mode></O>"};
    for (const QByteArray& content : contents) {
        const OxaArg arg = request(content);
        for (const bool synthesizes : {false, true}) {
            QVERIFY(QDir().mkpath(path("work/old")));
            writeFile(path("work/") + WORK_DIR_MARK, "x");
            if (content.contains("3.x"))
                QTest::ignoreMessage(
                    QtCriticalMsg, qPrintable(arg.configFile + ": Invalid Oxa config file."));
            if (synthesizes)
                QCOMPARE(OXAProxyQxSyn(nullptr).startGenerate(arg), -1);
            else
                QCOMPARE(OxaPrepare().prepare(arg), 0);
            const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
            QCOMPARE(QDir(path("work")).entryList(all), QStringList(WORK_DIR_MARK)); // emptied
        }
    }
    QVERIFY(EngineDouble::instance().requests.isEmpty());
}

struct BlockedRow {
    const char *blocked, *message; // a directory stands where the file should
    bool lite;
};

constexpr BlockedRow kBlocked[] = {
    {"ao_control/qx_con_parameter.v", "failed to generate qx_con_parameter.v", false},
    {"ao_0/qx_ao_init.v",             "failed to generate qx_ao_init.v",       false},
    {"qx_oxa_top.v",                  "failded to open result file.",          false},
    {"ao_0/qx_ao_parameter.v",        "failed to generate qx_ao_parameter.v",  true },
    {"qx_oxa_top.v",                  "failed to open result file.",           true },
};

void TestGenerate::filesThatCannotBeOpened()
{
    AoCore core(0);
    AOCore_Lite lite;
    core.sampleClock = lite.sampleClock = "clk";
    for (const BlockedRow& row : kBlocked) {
        init();
        const OxaArg arg = request({});
        QVERIFY(QDir().mkpath(path("work/") + row.blocked));
        QTest::ignoreMessage(QtCriticalMsg, row.message);
        const int written = row.lite ? lite_generateFilesForAoCtrl(arg, {&lite})
                + lite_generateFilesForAoCore(arg, {&lite}) + lite_generateOxaTop(arg, {&lite})
                                     : std_generateFileForAoCtrl(arg, {&core})
                + std_generateFilesForAoCore(arg, {&core}) + std_generateOxaTop(arg, {&core});
        QVERIFY2(written == 2, row.blocked);
    }
}

void TestGenerate::emptyingADirectory()
{
    QVERIFY(QDir().mkpath(path("tree/a/.hidden/b")));
    QVERIFY(QDir().mkpath(path("outside")));
    writeFile(path("outside/kept"), "x");
    writeFile(path("tree/a/.file"), "x");
    QVERIFY(holdsForeignFiles(path("tree/a"))); // where all names are hidden
    for (const char* link : {"tree/link", "tree/a/dangling"})
        QVERIFY(QFile::link(path(link[5] == 'l' ? "outside" : "nowhere"), path(link)));
    removeDir(path("tree"));
    QVERIFY(QDir(path("tree")).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    QVERIFY(QFileInfo(path("tree")).isDir() && QFile::exists(path("outside/kept")));
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

void TestGenerate::inputsInTheWorkDirectoryStay()
{
    const QByteArray content = configuration(coreElement(""));
    const QRegularExpression message("the work directory .* would be emptied, but it contains, .*"
                                     "|(none|broken).oxa cannot be read");
    for (const char* name : {"work/sub/a.oxa", "broken.oxa", "none.oxa"}) {
        init();
        QVERIFY(QDir().mkpath(path("work/sub")));
        writeFile(path("work/sub/a.oxa"), content);
        writeFile(path("broken.oxa"), "<OXA_CONFIG>");
        OxaArg arg = request(content);
        arg.configFile = path(name);
        const QStringList before = filesBelow(m_dir->path());
        QTest::ignoreMessage(QtCriticalMsg, message);
        QCOMPARE(OxaPrepare().prepare(arg), 0);
        QTest::ignoreMessage(QtCriticalMsg, message);
        QCOMPARE(OXAProxyQxSyn(nullptr).startGenerate(arg), -1);
        QCOMPARE(filesBelow(m_dir->path()), before);
    }
}

void TestGenerate::placesThatARunRefuses()
{
    const QByteArray content = configuration(coreElement(""));
    OxaArg arg = request(content);
    arg.workDir = ""; // or the files would go into the root directory
    QTest::ignoreMessage(QtCriticalMsg, "the work directory's name is empty");
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

// Every second one of 120 builds; their names are those of one of two configurations.
static BuildSums sumsOf(quint32 build, const NameSums& names)
{
    return {
        {7, build},
        {names}
    };
}
static void rememberBuilds(quint32 first)
{
    for (quint32 i = first; i < 120; i += 2) {
        RememberedBuild build;
        build.original = QString("/%1.oxa").arg(i);
        build.time = QDateTime::fromSecsSinceEpoch(i);
        rememberBuild(build, "content", sumsOf(i, {1, i % 2}));
    }
}

void TestGenerate::rememberedByTwoProgramsAtOnce()
{
    qputenv("OXA_REMEMBER", "1");
    qputenv("XDG_DATA_HOME", path("data").toUtf8());
    std::thread other([] { rememberBuilds(1); });
    rememberBuilds(0);
    other.join();
    const QList<RememberedBuild> builds = rememberedBuilds();
    QCOMPARE(builds.size(), 100);
    QCOMPARE(builds.first().original + builds.last().original, QString("/119.oxa/20.oxa"));
    QCOMPARE(rememberedBuilds(sumsOf(50, {1, 0})).value(0).original, QString("/50.oxa"));
    QVERIFY(rememberedBuilds(sumsOf(50, {1, 1})).isEmpty());
    QCOMPARE(rememberedBuilds(sumsOf(50, {})).size(), 1); // no names in the chip
    writeFile(QFileInfo(builds.at(3).configuration).path() + "/build.json", "{\"original\": ");
    QCOMPARE(rememberedBuilds().size(), 99);
}

QTEST_GUILESS_MAIN(TestGenerate)
#include "test_generate.moc"
