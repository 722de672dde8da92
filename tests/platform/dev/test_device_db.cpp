#include "dev/device_db.h"

#include "support/rows.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace DEV;

namespace {

constexpr char kHeader[] = "part_number,series,name,grade,speed,package,variant,"
                           "luts,adders,registers,ios,shadow_sram,block_sram_kbit\n";
constexpr char kPart[] = "P1,S,D1,Commercial,6,QFN48,LV,1,2,3,4,4.5Kb,72\n";

struct Malformed {
    const char *what, *rows, *error; // the error without its path
};

// The rows stand behind the header and kPart, so the first is line 3.
constexpr Malformed kMalformed[] = {
    {"a column short",                     "P2,S,D1,C,6,Q,LV,1,2,3,4,\n",             "3:26: 12 columns where there have to be 13"},
    {"a column over",                      "P2,S,D1,C,6,Q,LV,1,2,3,4,,72,x\n",
     "3:30: 14 columns where there have to be 13"                                                                                 },
    {"no part number",                     ",S,D1,C,6,Q,LV,1,2,3,4,,72\n",
     "3:1: part_number is \"\", but has to be a part number"                                                                      },
    {"no device name",                     "P2,S, ,C,6,Q,LV,1,2,3,4,,72\n",
     "3:6: name is \" \", but has to be a device name"                                                                            },
    {"a part twice, behind an empty line", "\nP1,,D1,,,,,1,2,3,4,,72\n",
     "4:1: part number P1 of device D1 is there already"                                                                          },
    {"letters for a number",               "P2,S,D1,C,6,Q,LV,1,2,many,4,,72\n",
     "3:22: registers is \"many\", but has to be a whole number"                                                                  },
    {"a negative number",                  "P2,S,D1,C,6,Q,LV,1,2,3,4,,-72\n",
     "3:27: block_sram_kbit is \"-72\", but has to be a whole number of kbit"                                                     },
    {"a number past 31 bits",              "P2,S,D1,C,6,Q,LV,4294967297,2,3,4,,72\n",
     "3:18: luts is \"4294967297\", but has to be a whole number"                                                                 },
    {"shadow SRAM without unit",           "P2,S,D1,C,6,Q,LV,1,2,3,4,18,72\n",
     "3:26: shadow_sram is \"18\", but has to be empty or a number and its two-letter unit"                                       },
    {"an open quote",                      "P2,S,\"D1,C,6\n",                         "4:1: a quote that is never closed"         },
    {"text behind a quote",                "P2,\"S\"x,D1,C,6,Q,LV,1,2,3,4,,72\n",
     "3:7: text behind a closing quote"                                                                                           },
    {"not UTF-8",                          "P2,S\xff,D1,C,6,Q,LV,1,2,3,4,,72\n",      " not a text in UTF-8"                      },
};

}

class TestDeviceDb : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void environmentNamesTheFirstCatalogue();
    void readsEveryField();
    void refusesMalformedRows_data();
    void refusesMalformedRows();
    void refusesAFileWithoutHeader();
    void refusesAFileThatCannotBeRead();
    void findsByNumberAndName_data();
    void findsByNumberAndName();

private:
    QString write(const QByteArray& text)
    {
        const QString path = m_dir.filePath("catalogue.csv");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("no temporary file");
        return path;
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

void TestDeviceDb::readsEveryField()
{
    const QByteArray quoted = "\"P,\"\"2\"\"\",S,D2,Indu\xc3\xa9,7,Q,ZV,5,6,7,8,,0";
    QByteArray text = QByteArray("\xef\xbb\xbf") + kHeader + kPart + quoted;
    QVERIFY(db().load(write(text.replace("\n", "\r\n"))));

    QCOMPARE(db().chips().size(), 2);
    const ChipInfo first = db().chips().first();
    QCOMPARE(first.partNumber, QString("P1"));
    QCOMPARE(first.series, QString("S"));
    QCOMPARE(first.name, QString("D1"));
    QCOMPARE(first.grade, QString("Commercial"));
    QCOMPARE(first.speed, QString("6"));
    QCOMPARE(first.package, QString("QFN48"));
    QCOMPARE(first.variant, QString("LV"));
    QCOMPARE(first.resources, QStringList({"1", "2", "3", "4", "4.5Kb", "72"}));

    const ChipInfo second = db().chips().last();
    QCOMPARE(second.partNumber, QString("P,\"2\""));
    QCOMPARE(second.grade, QString::fromUtf8("Indu\xc3\xa9"));
    QCOMPARE(second.resources, QStringList({"5", "6", "7", "8", "", "0"}));
}

void TestDeviceDb::refusesMalformedRows_data() { addRows(kMalformed); }

void TestDeviceDb::refusesMalformedRows()
{
    const Malformed& row = rowOf(kMalformed);
    const QString kept = write(QByteArray(kHeader) + "KEPT,S,D1,C,6,Q,LV,1,2,3,4,,72\n");
    QVERIFY(db().load(kept));

    QString error;
    const QString path = write(QByteArray(kHeader) + kPart + row.rows);
    QVERIFY(!db().load(path, &error));
    QCOMPARE(error, path + ":" + row.error);
    QVERIFY(!db().load(path));
    QCOMPARE(db().chips().size(), 1);
    QCOMPARE(db().chips().first().partNumber, QString("KEPT"));
}

void TestDeviceDb::refusesAFileWithoutHeader()
{
    QString error;
    QVERIFY(!db().load(write(kPart), &error));
    QVERIFY2(
        error.endsWith(":1:1: the first row has to name the columns, this one \"part_number\""),
        qPrintable(error));
    QVERIFY(!db().load(write(""), &error));
    QVERIFY2(error.endsWith(":1:1: no row that names the columns"), qPrintable(error));
}

void TestDeviceDb::refusesAFileThatCannotBeRead()
{
    QString error;
    QVERIFY(!db().load(m_dir.filePath("absent.csv"), &error));
    QVERIFY(error.startsWith(m_dir.filePath("absent.csv: ")));
    QVERIFY(!db().load(m_dir.path(), &error));
    QVERIFY(error.startsWith(m_dir.path() + ": "));
    QVERIFY(!db().load("/dev/zero", &error));
    QCOMPARE(error, QString("/dev/zero: larger than 64 MiB, which no catalogue is"));
}

struct Search {
    const char *what, *number, *name, *device, *grade; // device: of the part found
};

constexpr Search kSearches[] = {
    {"by number",          "A", "",   "D1", "C"},
    {"by both",            "A", "D2", "D2", "C"},
    {"by name, the first", "",  "D2", "D2", "C"},
    {"of another device",  "B", "D1", "",   "" },
    {"unknown",            "C", "D1", "",   "" },
    {"other case",         "a", "D1", "",   "" },
    {"nothing asked for",  "",  "",   "",   "" },
};

void TestDeviceDb::findsByNumberAndName_data() { addRows(kSearches); }

void TestDeviceDb::findsByNumberAndName()
{
    const Search& row = rowOf(kSearches);
    QVERIFY(db().load(write(QByteArray(kHeader)
        + "A,S,D1,C,6,Q,LV,1,2,3,4,,72\n"
          "A,S,D2,C,6,Q,LV,1,2,3,4,,72\n"
          "B,S,D2,I,6,Q,LV,1,2,3,4,,72\n")));
    const ChipInfo found = db().find(row.number, row.name);
    QCOMPARE(found.name, QString(row.device));
    QCOMPARE(found.grade, QString(row.grade));
    QCOMPARE(found.resources.isEmpty(), found.name.isEmpty());
}

QTEST_GUILESS_MAIN(TestDeviceDb)
#include "test_device_db.moc"
