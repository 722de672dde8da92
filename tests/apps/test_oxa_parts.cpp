#include "support/files.h"
#include "support/oxa_program.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
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

QTEST_GUILESS_MAIN(TestOxaParts)
#include "test_oxa_parts.moc"
