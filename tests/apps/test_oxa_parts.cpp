// SPDX-License-Identifier: Apache-2.0
#include "oxa_calls.h"

#include "support/rows.h"

#include <QtTest>

namespace {

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

constexpr Call kCalls[] = {
    {"devices --device-db DIR/parts.csv BETA.3",         1,
     "error: no part or device matches \"BETA.3\"; did you mean BETA.2?\n"                                      },
    {"devices --device-db DIR/parts.csv BETA.3 --json",  1, R"("parts":[])"                                     },
    {"devices --device-db DIR/parts.csv *-9",            1, "error: no part or device matches \"*-9\"\n"        },
    {"devices --device-db DIR/bad.csv",                  2, "bad.csv:2:3: 2 columns"                            },
    {"voltage --part QX1N-9UV-QFN88-C6",                 1, "\n\nVCC and VCCX are shorted in this package\n"    },
    {"voltage --part QX1N-9UV-BGA256-C6",                0, "VCCX"                                              },
    {"voltage --part QX1NZ-1ZV-QFN48-C3",                2, "add --device with one of \"QX1NZ-1\", \"QX1NZ-1D\""},
    {"voltage --part QX1N-9LV-QFN88",                    2, "did you mean \"QX1N-9LV-QFN88-C6\""                },
    {"voltage --device-db DIR/parts.csv --part BETA.2",  2,
     "error: the voltage table has no row for BETA.2"                                                           },
    {"estimate UART --part QX3A-10ALV-QFN88-C8 --json",  0,
     R"("storage":"block SRAM","storageDepth":1024,)"                                                           },
    {"estimate UART --part QX3A-10ALV-QFN88-C8 --json",  0, R"("total":{"blockSram":2,)"                        },
    {"estimate DIR/registers.oxa ON",                    1, "block SRAM          0 "                            },
    {"estimate DIR/shadow.oxa --part QX1N-1LV-CSP30-C6", 0, " x 1024  block SRAM "                              },
    {"estimate DIR/huge.oxa ON",                         1, "block SRAM "                                       },
};

}

/// What the program says about parts, most over a catalogue of the test's own.
class TestOxaParts : public QObject, OxaCalls {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void calls_data() { addRows(kCalls); }
    void calls();
    void listsTheCatalogue();
    void voltages();
    void estimates();
    void netlistsThatDoNotFit();
};

void TestOxaParts::initTestCase()
{
    writeFile(path("parts.csv"), QByteArray(kHeader) + kParts);
    writeFile(path("bad.csv"), QByteArray(kHeader) + "A,S\n");
    changed("registers.oxa", "implementation=\"0\"", "implementation=\"1\"");
    changed("shadow.oxa", "implementation=\"0\"", "implementation=\"2\"");
    changed("huge.oxa", "storage_depth=\"1024\"", "storage_depth=\"2147483647\"");
}

void TestOxaParts::calls()
{
    const Call& row = rowOf(kCalls);
    const Result result = run(row.what);
    QCOMPARE(result.status, row.status);
    QVERIFY2(saidBy(result).contains(row.said), qPrintable(saidBy(result)));
}

void TestOxaParts::listsTheCatalogue()
{
    const Result result = run("devices --device-db DIR/parts.csv");
    QCOMPARE(result.out, QString(kTable));
    QCOMPARE(result.status, 0);
    QCOMPARE(run("devices", {"OXA_DEVICE_DB=" + path("parts.csv")}).out, QString(kTable));
    QCOMPARE(run("devices", {"OXA_DEVICE_DB=/absent.csv"}).err,
        QString("error: /absent.csv: No such file or directory\n"));
    QCOMPARE(saidBy(run("devices --device-db DIR/parts.csv BETA.2 --json")),
        QString(
            R"({"errors":[],"format":1,"parts":[{"adders":1000,"blockSramKbit":468,"device":"D-2",)"
            R"("grade":"Commercial","ios":200,"luts":2000,"package":"B256","part":"BETA.2",)"
            R"("registers":1500,"series":"S","shadowSram":"18Kb","speed":"10","variant":""}],"warnings":[]})"));
    QString counts;
    for (const char* pattern : {"alpha", "D-1", "?-1*", "D-?", "."}) // wildcards: the whole text
        counts += QString(" %1").arg(
            run(QString("devices --device-db DIR/parts.csv ") + pattern).out.count('\n') - 1);
    QCOMPARE(counts, QString(" 2 2 2 2 1"));
}

void TestOxaParts::voltages()
{
    QCOMPARE(run("voltage ON").out,
        QString("QX1N-9LV-QFN88-C6 (QX1N-9, QFN88), volts\n"
                "\n"
                "SUPPLY   MINIMUM  MAXIMUM  DEFAULT  CHOICES\n"
                "VCC         1.14     1.26     1.2V  1.2\n"
                "VCCX       2.375    3.465      2.5  2.5, 3.3\n"
                "VCC_LDO        -        -        -  no such supply\n"));
    const QString json = saidBy(run("voltage --part QX1NZ-1ZV-QFN48-C3 --device QX1NZ-1D --json"));
    QVERIFY(json.contains(
        R"("device":"QX1NZ-1D","errors":[],"format":1,"package":"QFN48","part":"QX1NZ-1ZV-QFN48-C3",)"
        R"("shorts":[["VCCX","VCC_LDO"]],"supplies":[{"choices":["0.9","1.0"],)"
        R"("default":"0.9","maximum":"1.05","minimum":"0.87","name":"VCC"},)"));
}

void TestOxaParts::estimates()
{
    const Result result = run("estimate UART ON");
    // The checks of tests/ip/cores compare these numbers with synthesis.
    static const QRegularExpression estimated(
        "(look-up tables +|registers +)\\d\\d\\d( +\\d+ +)\\d ");
    QCOMPARE(QString(result.out).replace(estimated, "\\1###\\2# "),
        uart
            + " on QX1N-9LV-QFN88-C6 (QX1N-9)\n"
              "\n"
              "CORE               RESOURCE        TAKES   HAS  SHARE\n"
              "0: 18 bits x 1024  block SRAM          1    26    4 %\n"
              "                   (registers)     18432  6912  267 %  does not fit\n"
              "                   (shadow SRAM)     320   270  119 %  does not fit\n"
              "analyzer           look-up tables    ###  9216    # %\n"
              "                   registers         ###  6912    # %\n"
              "                   block SRAM          1    26    4 %\n"
              "                   shadow SRAM         0   270    0 %\n");
}

void TestOxaParts::netlistsThatDoNotFit()
{
    const QString netlist = path("netlist.v");
    const QStringList engine("OXA_SYNTHESIS_ENGINE="
        + writeProgram(path("engine"),
            "{ echo 'module qx_oxa;'; for i in $(seq 2001); do echo \"  QX_LUT4 l$i (\"; echo '  "
            ");';"
            " done; echo endmodule; } >netlist.v\n"));
    const QString call(
        "generate UART --device-db DIR/parts.csv --work-dir DIR/work -o DIR/netlist.v --part ");
    const Result small = run(call + "ALPHA-1 --device D-1", engine);
    QVERIFY2(small.err.contains("look-up tables, ALPHA-1 has 100;"), qPrintable(small.err));
    QCOMPARE(small.status, 1);
    QVERIFY(!QFile::exists(netlist)); // no doubt before synthesis
    const Result large = run(call + "BETA.2", engine);
    QVERIFY2(large.err.contains("error: the netlist takes 2001 look-up tables, BETA.2 has 2000;"),
        qPrintable(large.err));
    QCOMPARE(large.status, 1);
    QVERIFY(QFile::exists(netlist));
}

QTEST_GUILESS_MAIN(TestOxaParts)
#include "test_oxa_parts.moc"
