#include "support/files.h"
#include "support/oxa_program.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
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

}

/// What the program says about parts, over a catalogue of the test's own.
class TestOxaParts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void listsTheCatalogue();
    void patterns_data();
    void patterns();
    void partsAsJson();
    void nothingFits();
    void voltages();
    void voltagesAsJson();
    void noVoltages();
    void netlistsThatDoNotFit_data();
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

void TestOxaParts::patterns_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("count");
    QTest::newRow("piece of a part number, other case") << "alpha" << 2;
    QTest::newRow("piece of a device name") << "D-1" << 2;
    QTest::newRow("wildcards cover the whole text") << "?-1*" << 2;
    QTest::newRow("one character is one") << "D-?" << 2;
    QTest::newRow("a dot is a dot") << "." << 1;
}

void TestOxaParts::patterns()
{
    QFETCH(QString, pattern);
    QFETCH(int, count);
    const Result result = devices({pattern});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out.count('\n'), 1 + count);
}

void TestOxaParts::partsAsJson()
{
    const Result result = devices({"BETA.2", "--json"});
    const QJsonArray parts
        = QJsonDocument::fromJson(result.out.toUtf8()).object().value("parts").toArray();
    QCOMPARE(parts.size(), 1);
    const QJsonObject expected {
        {"part",          "BETA.2"    },
        {"series",        "S"         },
        {"device",        "D-2"       },
        {"grade",         "Commercial"},
        {"speed",         "10"        },
        {"package",       "B256"      },
        {"variant",       ""          },
        {"luts",          2000        },
        {"adders",        1000        },
        {"registers",     1500        },
        {"ios",           200         },
        {"shadowSram",    "18Kb"      },
        {"blockSramKbit", 468         }
    };
    QCOMPARE(parts.first().toObject(), expected);
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
    QVERIFY(QJsonDocument::fromJson(json.out.toUtf8()).object().contains("parts"));
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
    const QJsonObject json = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(json.value("device").toString(), QString("QX1NZ-1D"));
    QCOMPARE(json.value("shorts").toArray(), QJsonArray({QJsonArray({"VCCX", "VCC_LDO"})}));
    const QJsonObject expected {
        {"name",    "VCC"                     },
        {"minimum", "0.87"                    },
        {"maximum", "1.05"                    },
        {"choices", QJsonArray({"0.9", "1.0"})},
        {"default", "0.9"                     }
    };
    QCOMPARE(json.value("supplies").toArray().first().toObject(), expected);
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

void TestOxaParts::netlistsThatDoNotFit_data()
{
    QTest::addColumn<QStringList>("part");
    QTest::addColumn<int>("tables");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("error");
    const QStringList small {"ALPHA-1", "--device", "D-1"};
    const QStringList large {"BETA.2"};
    QTest::newRow("no doubt before synthesis")
        << small << 0 << 1 << "look-up tables, ALPHA-1 has 100;";
    QTest::newRow("fits") << large << 2000 << 0 << "";
    QTest::newRow("one too many")
        << large << 2001 << 1 << "error: the netlist takes 2001 look-up tables, BETA.2 has 2000;";
}

void TestOxaParts::netlistsThatDoNotFit()
{
    QFETCH(QStringList, part);
    QFETCH(int, tables);
    QFETCH(int, status);
    QFETCH(QString, error);
    // An engine whose netlist has as many tables, and nothing else.
    const QString engine = writeFile(m_dir.filePath("engine"),
        QString(
            "#!/bin/sh\n{ echo 'module qx_oxa;'; for i in $(seq %1); do echo \"  QX_LUT4 l$i (\";"
            " echo '  );'; done; echo endmodule; } >netlist.v\n")
            .arg(tables)
            .toUtf8());
    QVERIFY(QFile::setPermissions(engine, QFile::permissions(engine) | QFile::ExeOwner));
    const QString netlist = m_dir.filePath("netlist.v");
    QFile::remove(netlist);
    const Result result = oxa(QStringList {"generate", kUart, "--device-db", m_catalogue,
                                  "--work-dir", m_dir.filePath("work"), "-o", netlist, "--part"}
            + part,
        {"OXA_SYNTHESIS_ENGINE=" + engine});
    QVERIFY2(result.err.contains(error) && result.status == status, qPrintable(result.err));
    QCOMPARE(QFile::exists(netlist), tables > 0);
}

QTEST_GUILESS_MAIN(TestOxaParts)
#include "test_oxa_parts.moc"
