// SPDX-License-Identifier: Apache-2.0
#include "dev/device_db.h"
#include "support/files.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace DEV;

namespace {

constexpr char kHeader[] = "part_number,series,name,grade,speed,package,variant,"
                           "luts,adders,registers,ios,shadow_sram,block_sram_kbit\n";
constexpr char kPart[] = "P1,S,D1,Commercial,6,QFN48,LV,1,2,3,4,4.5Kb,72\n";

struct Malformed {
    const char *row, *error; // how the error goes on behind the path
};

// The rows stand behind the header and kPart, so the first is line 3.
constexpr Malformed kMalformed[] = {
    {"P2,S,D1,C,6,Q,LV,1,2,3,4,",             "3:26: 12 columns instead of 13"                       },
    {"P2,S,D1,C,6,Q,LV,1,2,3,4,,72,x",        "3:30: 14 columns instead of 13"                       },
    {",S,D1,C,6,Q,LV,1,2,3,4,,72",            "3:1: part_number is \"\", but has to be a part number"},
    {"P2,S, ,C,6,Q,LV,1,2,3,4,,72",           "3:6: name is \" \", but has to be a device name"      },
    {"\nP1,,D1,,,,,1,2,3,4,,72",              "4:1: part number P1 of device D1 is there already"    },
    {"P2,S,D1,C,6,Q,LV,1,2,many,4,,72",       "3:22: registers is \"many\", but has to be a whole"   },
    {"P2,S,D1,C,6,Q,LV,1,2,3,4,,-72",         "3:27: block_sram_kbit is \"-72\", but has to be"      },
    {"P2,S,D1,C,6,Q,LV,4294967297,2,3,4,,72", "3:18: luts is \"4294967297\", but has to be"          },
    {"P2,S,D1,C,6,Q,LV,1,2,3,4,18,72",        "3:26: shadow_sram is \"18\", but has to be empty or"  },
    {"P2,S,\"D1,C,6",                         "4:1: a quote that is never closed"                    },
    {"P2,\"S\"x,D1,C,6,Q,LV,1,2,3,4,,72",     "3:7: text after a closing quote"                      },
    {"P2,S\xff,D1,C,6,Q,LV,1,2,3,4,,72",      " not UTF-8 text"                                      },
};

}

class TestDeviceDb : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void environmentNamesTheFirstCatalogue();
    void quotesAndLineEnds();
    void refusesMalformedRows();
    void refusesOtherFiles();
    void findsByNumberAndName();

private:
    QString write(const QByteArray& text)
    {
        return writeFile(m_dir.filePath("catalogue.csv"), text);
    }

    DeviceDb& db() { return DeviceDb::instance(); }

    QTemporaryDir m_dir;
};

// Runs first: the catalogue is read at the first use.
void TestDeviceDb::environmentNamesTheFirstCatalogue()
{
    qputenv("OXA_DEVICE_DB", write(QByteArray(kHeader) + kPart).toUtf8());
    QCOMPARE(db().chips().size(), 1);
    QCOMPARE(db().find("P1", "").name, QString("D1"));
}

void TestDeviceDb::quotesAndLineEnds()
{
    const QByteArray quoted = "\"P,\"\"2\"\"\",S,D2,Indu\xc3\xa9,7,Q,ZV,5,6,7,8,,0";
    QByteArray text = QByteArray("\xef\xbb\xbf") + kHeader + kPart + quoted;
    QVERIFY(db().load(write(text.replace("\n", "\r\n"))));
    QCOMPARE(db().chips().size(), 2);
    const ChipInfo chip = db().chips().last();
    QCOMPARE(chip.partNumber, QString("P,\"2\""));
    QCOMPARE(chip.grade, QString::fromUtf8("Indu\xc3\xa9"));
    QCOMPARE(chip.resources, QStringList({"5", "6", "7", "8", "", "0"}));
}

void TestDeviceDb::refusesMalformedRows()
{
    QVERIFY(db().load(write(QByteArray(kHeader) + "KEPT,S,D1,C,6,Q,LV,1,2,3,4,,72\n")));
    for (const Malformed& row : kMalformed) {
        QString error;
        const QString path = write(QByteArray(kHeader) + kPart + row.row + '\n');
        QVERIFY(!db().load(path, &error) && !db().load(path));
        QVERIFY2(error.startsWith(path + ":" + row.error), qPrintable(error));
        QCOMPARE(db().chips().size(), 1);
        QCOMPARE(db().chips().first().partNumber, QString("KEPT"));
    }
}

void TestDeviceDb::refusesOtherFiles()
{
    const QString empty = writeFile(m_dir.filePath("empty.csv"), "");
    const QList<QPair<QString, QString>> rows = {
        {write(kPart), ":1:1: the first row has to contain column names, here \"part_number\""},
        {empty,        ":1:1: no row with column names"                                       },
        {"/dev/zero",  ": larger than 64 MiB"                                                 },
    };
    for (const auto& row : rows) {
        QString error;
        QVERIFY(!db().load(row.first, &error));
        QVERIFY2(error.startsWith(row.first + row.second), qPrintable(error));
    }
}

struct Search {
    const char *number, *name, *device, *grade; // device: of the part found
};

constexpr Search kSearches[] = {
    {"A", "",   "D1", "C"},
    {"A", "D2", "D2", "C"},
    {"",  "D2", "D2", "C"}, // the first of several
    {"B", "D1", "",   "" },
    {"a", "D1", "",   "" },
    {"",  "",   "",   "" },
};

void TestDeviceDb::findsByNumberAndName()
{
    QVERIFY(db().load(write(QByteArray(kHeader)
        + "A,S,D1,C,6,Q,LV,1,2,3,4,,72\n"
          "A,S,D2,C,6,Q,LV,1,2,3,4,,72\n"
          "B,S,D2,I,6,Q,LV,1,2,3,4,,72\n")));
    for (const Search& row : kSearches) {
        const ChipInfo found = db().find(row.number, row.name);
        QCOMPARE(found.name, QString(row.device));
        QCOMPARE(found.grade, QString(row.grade));
        QCOMPARE(found.resources.isEmpty(), found.name.isEmpty());
    }
}

QTEST_GUILESS_MAIN(TestDeviceDb)
#include "test_device_db.moc"
