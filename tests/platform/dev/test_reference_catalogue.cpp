#include "dev/device_db.h"
#include "dev/device_facts.h"
#include "oxautils/resource/capture_memory.h"

#include <QFile>
#include <QSet>
#include <QtTest>

using namespace DEV;

namespace {

// A fact, and the devices of which it holds.
struct Column {
    const char* what;
    bool (*holds)(const DeviceFacts& facts);
    const char* devices; // all of which it holds, in the order of the table
};

constexpr Column kColumns[] = {
    {"blocks of 9 kbit",            [](const DeviceFacts& facts) { return facts.blocks == Blocks9k; },
     "QX3A-10A QX3A-20A QX3A-50A QX3AN-6A QX3ANRT-6A QX3ANT-6A QX3AR-20A"                                                         },
    {"narrow words take four bits",
     [](const DeviceFacts& facts) { return facts.blocks == Blocks1N9C; },                                       "QX1N-9C"         },
    {"no shadow SRAM",              [](const DeviceFacts& facts) { return facts.shadowBits == kNoShadowSram; },
     "QX5A-25A QX5A-60B QX5A-138B QX5AR-25A QX5AS-25A QX5AS-138B QX5AST-138B QX5AT-60B "
        "QX5AT-75B QX5AT-138B"                                                                                                    },
    {"4608 bits",                   [](const DeviceFacts& facts) { return facts.shadowBits == 4608; },          "QX1NZ-1"         },
    {"12672 bits",                  [](const DeviceFacts& facts) { return facts.shadowBits == 12672; },         "QX1N-1P5"        },
    {"13312 bits",                  [](const DeviceFacts& facts) { return facts.shadowBits == 13312; },         "QX1AN-5"         },
    {"17280 bits",                  [](const DeviceFacts& facts) { return facts.shadowBits == 17280; },
     "QX1N-9 QX1NR-9"                                                                                                             },
    {"18432 bits",                  [](const DeviceFacts& facts) { return facts.shadowBits == 18432; },
     "QX1N-2 QX1NR-2 QX1NZ-2"                                                                                                     },
    {"41472 bits",                  [](const DeviceFacts& facts) { return facts.shadowBits == 41472; },
     "QX1AN-9 QX2A-18 QX2AN-9X QX2AN-18X QX2ANR-18 QX2AR-18"                                                                      },
    {"109440 bits",                 [](const DeviceFacts& facts) { return facts.shadowBits == 109440; },
     "QX2A-55 QX2AN-55"                                                                                                           },
    {"120960 bits",                 [](const DeviceFacts& facts) { return facts.shadowBits == 120960; },
     "QX5ANRT-15 QX5ANT-15 QX5ART-15 QX5AT-15"                                                                                    },
    {"184320 bits",                 [](const DeviceFacts& facts) { return facts.shadowBits == 184320; },
     "QX3A-20 QX3AR-20 QX5A-25 QX5AR-25 QX5AS-25"                                                                                 },
    {"479232 bits",                 [](const DeviceFacts& facts) { return facts.shadowBits == 479232; },
     "QX5A-60 QX5AT-60"                                                                                                           },
    {"693504 bits",                 [](const DeviceFacts& facts) { return facts.shadowBits == 693504; },
     "QX5AT-75"                                                                                                                   },
    {"1105920 bits",                [](const DeviceFacts& facts) { return facts.shadowBits == 1105920; },
     "QX5A-138 QX5AS-138 QX5AST-138 QX5AT-138"                                                                                    },
    {"one more stage",              [](const DeviceFacts& facts) { return facts.extraStages == 1; },
     "QX1A-1C QX1AN-1C QX1N-1 QX1N-2B QX1N-4 QX1N-4B QX1N-6 QX1N-9 QX1NR-4 QX1NR-4B QX1NR-9 "
        "QX1NRF-4B QX1NS-2 QX1NS-2C QX1NSE-2C QX1NSR-2 QX1NSR-2C QX2A-18 QX2A-55 QX2AR-18"                                        },
    {"wide dies",                   [](const DeviceFacts& facts) { return facts.controlTop == Top138; },
     "QX5A-138B QX5A-138C QX5AS-138B QX5AS-138C QX5AST-138B QX5AST-138C QX5AT-75B QX5AT-75C "
        "QX5AT-138B QX5AT-138C"                                                                                                   },
    {"answers half a period early",
     [](const DeviceFacts& facts) { return facts.controlTop == Top6k; },
     "QX3AN-6A QX3ANRT-6A QX3ANT-6A"                                                                                              },
    {"a ZV variant",                [](const DeviceFacts& facts) { return facts.hasZv; },                       "QX1NZ-1 QX1NZ-1D"},
};

QString dataFile(const QString& name) { return OXA_SOURCE_DIR "/share/device/" + name; }

QStringList linesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no %s", qPrintable(path));
    return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
}

QStringList textOf(const ChipInfo& chip)
{
    return QStringList {chip.partNumber, chip.series, chip.name, chip.grade, chip.speed,
               chip.package, chip.variant}
    + chip.resources;
}

const char* const kPairs[] = {"VCC/VCCX", "VCCX/VCC_LDO", "VCC/VCC_LDO"};
const char* const kForms[] = {"", " except", " of"};

}

class TestReferenceCatalogue : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void unusableEnvironmentLeavesTheCompiledIn();
    void compiledInEqualsTheFile();
    void factsHoldOfTheseDevices();
    void everyNamedDeviceHasAPart();
    void resourcesAgreeWithTheEstimates();
    void lowPowerVariantComesBothWays();
    void everyPartHasAVoltageRow();
    void everyVoltageRowIsReachedByAPart();
    void notesTakeEveryForm();
};

// Runs first: the catalogue is read at the first use.
void TestReferenceCatalogue::unusableEnvironmentLeavesTheCompiledIn()
{
    qputenv("OXA_DEVICE_DB", "/absent.csv");
    QTest::ignoreMessage(
        QtCriticalMsg, "OXA_DEVICE_DB ignored: /absent.csv: No such file or directory");
    QVERIFY(!DeviceDb::instance().chips().isEmpty());
}

void TestReferenceCatalogue::compiledInEqualsTheFile()
{
    QStringList lines;
    for (const ChipInfo& chip : DeviceDb::instance().chips())
        lines << textOf(chip).join(',');
    QCOMPARE(lines, linesOf(dataFile("devices.csv")).mid(1));
    QVERIFY(DeviceDb::instance().load(dataFile("devices.csv"))); // which no row breaks, by itself
}

void TestReferenceCatalogue::factsHoldOfTheseDevices()
{
    int facts = 0;
    for (const Column& column : kColumns) {
        QStringList devices;
        for (const DeviceFacts& row : kDeviceFacts) {
            if (column.holds(row))
                devices += row.name;
        }
        QCOMPARE(devices.join(' '), column.devices);
        facts += devices.size();
    }
    for (const DeviceFacts& row : kDeviceFacts)
        facts -= (row.blocks != Blocks18k) + (row.shadowBits != kCatalogued) + row.extraStages
            + (row.controlTop != TopCommon) + row.hasZv;
    QCOMPARE(facts, 0); // every fact of the table is in a column
}

void TestReferenceCatalogue::everyNamedDeviceHasAPart()
{
    for (const DeviceFacts& facts : kDeviceFacts)
        QVERIFY2(!DeviceDb::instance().find("", facts.name).partNumber.isEmpty(), facts.name);
}

// Some sizes of shadow SRAM are known by device name, whatever the text says: it says the same.
void TestReferenceCatalogue::resourcesAgreeWithTheEstimates()
{
    for (const ChipInfo& chip : DeviceDb::instance().chips()) {
        const OXA_TOOL::MemoryAmounts has = OXA_TOOL::deviceMemory(chip.partNumber, chip.name);
        const QString shadow = chip.resources.value(ShadowSramEntry);
        QVERIFY(shadow.isEmpty() || shadow.endsWith("Kb"));
        QCOMPARE(
            has.shadowSram, int(shadow.chopped(qMin(2, shadow.size())).toDouble() * 1024 / 64));
        QCOMPARE(has.registers, chip.resources.value(RegisterEntry).toInt());
        const int kbit = chip.resources.value(BlockSramEntry).toInt();
        QVERIFY(has.blockSram * 18 == kbit || has.blockSram * 9 == kbit);
        QVERIFY(has.blockSram > 0 && has.registers > 0);
    }
}

void TestReferenceCatalogue::lowPowerVariantComesBothWays()
{
    for (const char* name : {"QX1NZ-1", "QX1NZ-1D"}) {
        QSet<bool> zv;
        for (const ChipInfo& chip : DeviceDb::instance().chips()) {
            if (chip.name == name)
                zv << (chip.variant == "ZV");
        }
        QCOMPARE(zv.size(), 2);
    }
}

void TestReferenceCatalogue::everyPartHasAVoltageRow()
{
    const QStringList rows = linesOf(dataFile("pn_voltage.csv"));
    for (const ChipInfo& chip : DeviceDb::instance().chips()) {
        int found = 0;
        const QString device = chip.name + "," + chip.variant + ",";
        for (const QString& row : rows)
            found += row.startsWith(device + "ALL,") || row.startsWith(device + chip.package + ",");
        QVERIFY2(found > 0, qPrintable(chip.partNumber + " " + chip.name));
    }
}

void TestReferenceCatalogue::everyVoltageRowIsReachedByAPart()
{
    QSet<QString> keys;
    for (const ChipInfo& chip : DeviceDb::instance().chips())
        keys << chip.name + "," + chip.variant + "," + chip.package
             << chip.name + "," + chip.variant + ",ALL";
    QSet<QString> seen;
    for (const QString& row : linesOf(dataFile("pn_voltage.csv")).mid(1)) {
        QCOMPARE(row.count(','), 12);
        const QString key = row.section(',', 0, 2);
        QVERIFY2(keys.contains(key), qPrintable(row));
        const QString device = row.section(',', 0, 1);
        QVERIFY2(!seen.contains(key) && !seen.contains(device + ",ALL"), qPrintable(row));
        seen << key;
    }
}

void TestReferenceCatalogue::notesTakeEveryForm()
{
    QSet<QString> notes;
    for (const QString& row : linesOf(dataFile("pn_voltage.csv")).mid(1)) {
        const QStringList words = row.section(',', 12).split(' ');
        notes << words.mid(0, 4).join(' ');
    }
    QVERIFY(notes.remove(""));
    for (const char* pair : kPairs) {
        for (const char* form : kForms)
            QVERIFY(notes.remove(QString(pair) + " Short Circuit" + form));
    }
    QCOMPARE(notes, QSet<QString>());
}

QTEST_GUILESS_MAIN(TestReferenceCatalogue)
#include "test_reference_catalogue.moc"
