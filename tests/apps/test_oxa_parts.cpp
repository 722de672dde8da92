#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/rows.h"
#include "support/signals.h"

#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kUart = OXA_SOURCE_DIR "/examples/uart/uart.oxa";

constexpr char kHeader[] = "part_number,series,name,grade,speed,package,variant,luts,adders,"
                           "registers,ios,shadow_sram,block_sram_kbit\n";

constexpr char kParts[] = "ALPHA-1,S,D-1,Industrial,5,Q48,ZV,100,50,75,30,,72\n"
                          "ALPHA-1,S,D-1B,Industrial,5,Q48,ZV,100,50,75,30,2Kb,72\n"
                          "BETA.2,S,D-2,Commercial,10,B256,,2000,1000,1500,200,18Kb,468\n";

constexpr char kTable[]
    = "PART     DEVICE  PACKAGE  SPEED  VARIANT  GRADE       LUTS  REGISTERS  I/OS  SHADOW SRAM  "
      "BLOCK SRAM\n"
      "ALPHA-1  D-1     Q48      5      ZV       Industrial   100         75    30         none  "
      "   72 kbit\n"
      "ALPHA-1  D-1B    Q48      5      ZV       Industrial   100         75    30          2Kb  "
      "   72 kbit\n"
      "BETA.2   D-2     B256     10              Commercial  2000       1500   200         18Kb  "
      "  468 kbit\n";

struct Pattern {
    const char *what, *pattern;
    int count;
};

constexpr Pattern kPatterns[] = {
    {"piece of a part number, other case", "alpha", 2},
    {"piece of a device name",             "D-1",   2},
    {"wildcards cover the whole text",     "?-1*",  2},
    {"one character is one",               "D-?",   2},
    {"a dot is a dot",                     ".",     1},
};

// What is said of the example when an attribute of its core is another one.
struct Estimate {
    const char *what, *attribute, *value, *part;
    int status;
    const char* line;
};

constexpr char kNine[] = "QX1N-9LV-QFN88-C6";
constexpr Estimate kEstimates[] = {
    {"windows",        "window_num",     "4",          kNine,               0, "registers         369  6912 "},
    {"of registers",   "implementation", "1",          kNine,               1, "267 %  does not fit\n"       },
    {"no shadow SRAM", "implementation", "2",          "QX1N-1LV-CSP30-C6", 0, " x 1024  block SRAM "        },
    {"beyond numbers", "storage_depth",  "2147483647", kNine,               1, "does not fit"                },
};

}

/// What the program says about parts, most over a catalogue of the test's own.
class TestOxaParts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void listsTheCatalogue();
    void patterns_data() { addRows(kPatterns); }
    void patterns();
    void partsAsJson();
    void nothingFits();
    void voltages();
    void voltagesAsJson();
    void noVoltages();
    void estimates_data() { addRows(kEstimates); }
    void estimates();
    void estimatesOfMemories();
    void estimateTable();
    void estimateAsJson();
    void netlistsThatDoNotFit();

private:
    Result devices(const QStringList& more = {})
    {
        return oxa(QStringList {"devices", "--device-db", m_catalogue} + more);
    }

    QTemporaryDir m_dir;
    QString m_catalogue;
};

void TestOxaParts::initTestCase()
{
    m_catalogue = writeFile(m_dir.filePath("parts.csv"), QByteArray(kHeader) + kParts);
}

void TestOxaParts::listsTheCatalogue()
{
    const Result result = devices();
    QCOMPARE(result.out, QString(kTable));
    QCOMPARE(result.status, 0);
    const Result byEnvironment = oxa({"devices"}, {"OXA_DEVICE_DB=" + m_catalogue});
    QCOMPARE(byEnvironment.out, QString(kTable));
    const Result unreadable = oxa({"devices"}, {"OXA_DEVICE_DB=/absent.csv"});
    QCOMPARE(unreadable.err, QString("error: /absent.csv: No such file or directory\n"));
    QCOMPARE(unreadable.status, 2);
}

void TestOxaParts::patterns()
{
    const Pattern& row = rowOf(kPatterns);
    const Result result = devices({row.pattern});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out.count('\n'), 1 + row.count);
}

void TestOxaParts::partsAsJson()
{
    const QJsonArray parts = jsonOf(devices({"BETA.2", "--json"}))["parts"].toArray();
    QCOMPARE(parts.size(), 1);
    QCOMPARE(QJsonDocument(parts.first().toObject()).toJson(QJsonDocument::Compact),
        QByteArray(R"({"adders":1000,"blockSramKbit":468,"device":"D-2","grade":"Commercial",)"
                   R"("ios":200,"luts":2000,"package":"B256","part":"BETA.2","registers":1500,)"
                   R"("series":"S","shadowSram":"18Kb","speed":"10","variant":""})"));
}

void TestOxaParts::nothingFits()
{
    const Result near = devices({"BETA.3"});
    QCOMPARE(near.status, 1);
    QVERIFY(near.out.isEmpty());
    QCOMPARE(near.err, QString("error: no part or device fits \"BETA.3\"; did you mean BETA.2?\n"));
    QCOMPARE(devices({"*-9"}).err, QString("error: no part or device fits \"*-9\"\n"));

    const Result json = devices({"BETA.3", "--json"});
    QCOMPARE(json.status, 1);
    QVERIFY(jsonOf(json).contains("parts"));
    const Result malformed = oxa({"devices", "--device-db",
        writeFile(m_dir.filePath("bad.csv"), QByteArray(kHeader) + "A,S\n")});
    QCOMPARE(malformed.status, 2);
    QVERIFY2(malformed.err.contains("bad.csv:2:3: 2 columns"), qPrintable(malformed.err));
}

void TestOxaParts::voltages()
{
    const Result apart = oxa({"voltage", "--part", "QX1N-9LV-QFN88-C6"});
    QCOMPARE(apart.out,
        QString("QX1N-9LV-QFN88-C6 (QX1N-9, QFN88), volts\n"
                "\n"
                "SUPPLY   MINIMUM  MAXIMUM  DEFAULT  CHOICES\n"
                "VCC         1.14     1.26     1.2V  1.2\n"
                "VCCX       2.375    3.465      2.5  2.5, 3.3\n"
                "VCC_LDO        -        -        -  no such supply\n"));
    QCOMPARE(apart.status, 0);

    const Result shorted = oxa({"voltage", "--part", "QX1N-9UV-QFN88-C6"});
    QVERIFY(shorted.out.endsWith("\n\nVCC and VCCX are shorted in this package\n"));
    QCOMPARE(shorted.status, 1);
    const Result otherPackage = oxa({"voltage", "--part", "QX1N-9UV-BGA256-C6"});
    QVERIFY(!otherPackage.out.contains("shorted"));
    QCOMPARE(otherPackage.status, 0);
}

void TestOxaParts::voltagesAsJson()
{
    const Result result
        = oxa({"voltage", "--part", "QX1NZ-1ZV-QFN48-C3", "--device", "QX1NZ-1D", "--json"});
    QCOMPARE(result.status, 1);
    QJsonObject json = jsonOf(result);
    const QJsonArray supplies = json.take("supplies").toArray();
    QCOMPARE(supplies.size(), 3);
    json.insert("supply", supplies.first());
    QCOMPARE(QJsonDocument(json).toJson(QJsonDocument::Compact),
        QByteArray(R"({"device":"QX1NZ-1D","package":"QFN48","part":"QX1NZ-1ZV-QFN48-C3",)"
                   R"("shorts":[["VCCX","VCC_LDO"]],"supply":{"choices":["0.9","1.0"],)"
                   R"("default":"0.9","maximum":"1.05","minimum":"0.87","name":"VCC"},)"
                   R"("variant":"ZV"})"));
}

void TestOxaParts::noVoltages()
{
    const Result ambiguous = oxa({"voltage", "--part", "QX1NZ-1ZV-QFN48-C3"});
    QCOMPARE(ambiguous.status, 2);
    QVERIFY(ambiguous.err.contains("add --device and one of \"QX1NZ-1\", \"QX1NZ-1D\""));
    const Result near = oxa({"voltage", "--part", "QX1N-9LV-QFN88"});
    QCOMPARE(near.status, 2);
    QVERIFY2(near.err.contains("did you mean \"QX1N-9LV-QFN88-C6\""), qPrintable(near.err));
    const Result none
        = oxa({"voltage", "--device-db", m_catalogue, "--part", "BETA.2", "--device", "D-2"});
    QCOMPARE(none.status, 2);
    QVERIFY2(none.err.startsWith("error: the voltage table has no row for BETA.2"),
        qPrintable(none.err));
    QVERIFY(none.out.isEmpty());
}

void TestOxaParts::estimates()
{
    const Estimate& row = rowOf(kEstimates);
    QString content = bytesOf(kUart);
    content.replace(QRegularExpression(QString("\\b%1=\"\\d+\"").arg(row.attribute)),
        QString("%1=\"%2\"").arg(row.attribute, row.value));
    const QString file = writeFile(m_dir.filePath("c.oxa"), content.toUtf8());
    const Result result = oxa({"estimate", file, "--part", row.part});
    QCOMPARE(result.status, row.status);
    QVERIFY2(result.out.contains(row.line), qPrintable(result.out));
}

void TestOxaParts::estimatesOfMemories()
{
    const QString file = m_dir.filePath("memory.oxa");
    const auto core = coreOf(0, {signalOf("a")}, signalOf("a"), "1", 8, 1);
    core->storageDepth = 8192;
    OXA::writeOXAConfigToXml({core.get()}, file);
    QString said = oxa({"estimate", file, "--part", "QX1N-9CLV-CSP81-C6"}).out;
    // A bit and its mark take four bits on this device.
    QVERIFY2(said.contains("0: 2 bits x 8192  block SRAM          2 "), qPrintable(said));

    OXA::AOCore_Lite lite;
    lite.captureAmount = 512;
    lite.signalList = signalsOf("d", 8);
    OXA::writeOXAConfigToXml_Lite({&lite, &lite}, file);
    said = oxa({"estimate", file, "--part", kNine}).out;
    QVERIFY2(said.contains("\n0: 8 bits x 512  block SRAM          1 "), qPrintable(said));
    QVERIFY2(said.contains("\n                 block SRAM          1 "), "one core is built");
}

void TestOxaParts::estimateTable()
{
    const Result result = oxa({"estimate", kUart, "--part", "QX1N-9LV-QFN88-C6"});
    QCOMPARE(result.status, 0);
    // How many they are is held to synthesis by the checks of tests/ip/cores.
    static const QRegularExpression estimated("(look-up tables +|registers +)\\d\\d\\d ");
    QCOMPARE(QString(result.out).replace(estimated, "\\1### "),
        kUart
            + " on QX1N-9LV-QFN88-C6 (QX1N-9)\n"
              "\n"
              "CORE               RESOURCE        TAKES   HAS  SHARE\n"
              "0: 18 bits x 1024  block SRAM          1    26    4 %\n"
              "                   (registers)     18432  6912  267 %  does not fit\n"
              "                   (shadow SRAM)     320   270  119 %  does not fit\n"
              "analyzer           look-up tables    ###  9216    5 %\n"
              "                   registers         ###  6912    5 %\n"
              "                   block SRAM          1    26    4 %\n"
              "                   shadow SRAM         0   270    0 %\n");
}

void TestOxaParts::estimateAsJson()
{
    QJsonObject json = jsonOf(oxa({"estimate", kUart, "--part", "QX3A-10ALV-QFN88-C8", "--json"}));
    QVERIFY(json["fits"].toBool());
    QCOMPARE(QJsonDocument(json["available"].toObject()).toJson(QJsonDocument::Compact),
        QByteArray(R"({"blockSram":30,"luts":10240,"registers":7680,"shadowSram":640})"));
    QCOMPARE(QJsonDocument(json["cores"].toArray()).toJson(QJsonDocument::Compact),
        QByteArray(R"([{"core":0,"depth":1024,"index":0,"memory":"block SRAM",)"
                   R"("takes":{"blockSram":2,"registers":18432,"shadowSram":320},"width":18}])"));
    QCOMPARE(json["total"].toObject()["blockSram"].toInt(), 2);
}

void TestOxaParts::netlistsThatDoNotFit()
{
    const QString netlist = m_dir.filePath("netlist.v");
    const QString engine = writeProgram(m_dir.filePath("engine"),
        "{ echo 'module qx_oxa;'; for i in $(seq 2001); do echo \"  QX_LUT4 l$i (\"; echo '  );';"
        " done; echo endmodule; } >netlist.v\n");
    const auto generate = [&](const QStringList& part) {
        return oxa(QStringList {"generate", kUart, "--device-db", m_catalogue, "--work-dir",
                       m_dir.filePath("work"), "-o", netlist, "--part"}
                + part,
            {"OXA_SYNTHESIS_ENGINE=" + engine});
    };
    const Result small = generate({"ALPHA-1", "--device", "D-1"});
    QVERIFY2(small.err.contains("look-up tables, ALPHA-1 has 100;"), qPrintable(small.err));
    QCOMPARE(small.status, 1);
    QVERIFY(!QFile::exists(netlist)); // no doubt before synthesis
    const Result large = generate({"BETA.2"});
    QVERIFY2(large.err.contains("error: the netlist takes 2001 look-up tables, BETA.2 has 2000;"),
        qPrintable(large.err));
    QCOMPARE(large.status, 1);
    QVERIFY(QFile::exists(netlist));
}

QTEST_GUILESS_MAIN(TestOxaParts)
#include "test_oxa_parts.moc"
