// SPDX-License-Identifier: Apache-2.0
#include "dev/device_db.h"
#include "dev/device_facts.h"
#include "oxautils/resource/capture_memory.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

using namespace DEV;

namespace {

struct Column {
    const char *fact, *devices; // all of which it holds, in the order of the table
};

// The sizes of shadow SRAM are compared with the catalogue.
constexpr Column kColumns[] = {
    {"9 kbit",      "QX3A-10A QX3A-20A QX3A-50A QX3AN-6A QX3ANRT-6A QX3ANT-6A QX3AR-20A"  },
    {"narrow",      "QX1N-9C"                                                             },
    {"no shadow",
     "QX5A-25A QX5A-60B QX5A-138B QX5AR-25A QX5AS-25A QX5AS-138B QX5AST-138B QX5AT-60B "
        "QX5AT-75B QX5AT-138B"                                                            },
    {"shadow size",
     "QX1AN-5 QX1AN-9 QX1N-1P5 QX1N-2 QX1N-9 QX1NR-2 QX1NR-9 QX1NZ-1 QX1NZ-2 QX2A-18 QX2A-55 "
        "QX2AN-9X QX2AN-18X QX2AN-55 QX2ANR-18 QX2AR-18 QX3A-20 QX3AR-20 QX5A-25 QX5A-60 QX5A-138 "
        "QX5ANRT-15 QX5ANT-15 QX5AR-25 QX5ART-15 QX5AS-25 QX5AS-138 QX5AST-138 QX5AT-15 QX5AT-60 "
        "QX5AT-75 QX5AT-138"                                                              },
    {"1 stage",
     "QX1A-1C QX1AN-1C QX1N-1 QX1N-2B QX1N-4 QX1N-4B QX1N-6 QX1N-9 QX1NR-4 QX1NR-4B QX1NR-9 "
        "QX1NRF-4B QX1NS-2 QX1NS-2C QX1NSE-2C QX1NSR-2 QX1NSR-2C QX2A-18 QX2A-55 QX2AR-18"},
    {"wide die",
     "QX5A-138B QX5A-138C QX5AS-138B QX5AS-138C QX5AST-138B QX5AST-138C QX5AT-75B QX5AT-75C "
        "QX5AT-138B QX5AT-138C"                                                           },
    {"early",       "QX3AN-6A QX3ANRT-6A QX3ANT-6A"                                       },
    {"ZV",          "QX1NZ-1 QX1NZ-1D"                                                    },
};

/// What `facts` says, as kColumns names it.
QStringList factsOf(const DeviceFacts& facts)
{
    const char* const blocks[] = {"", "9 kbit", "narrow"};
    const char* const tops[] = {"", "wide die", "early"};
    QStringList all = {blocks[facts.blocks], tops[facts.controlTop]};
    if (facts.shadowBits != kCatalogued)
        all += facts.shadowBits == kNoShadowSram ? "no shadow" : "shadow size";
    if (facts.extraStages != 0)
        all += QString("%1 stage").arg(facts.extraStages);
    if (facts.hasZv)
        all += "ZV";
    all.removeAll("");
    return all;
}

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

}

class TestReferenceCatalogue : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void compiledInEqualsTheFile();
    void factsHoldOfTheseDevices();
    void resourcesAgreeWithTheEstimates();
    void suppliesAgreeWithTheParts();
};

// Runs first: the catalogue is read at the first use, where the environment names an unusable one.
void TestReferenceCatalogue::compiledInEqualsTheFile()
{
    qputenv("OXA_DEVICE_DB", "/absent.csv");
    QTest::ignoreMessage(
        QtCriticalMsg, "OXA_DEVICE_DB ignored: /absent.csv: No such file or directory");
    QStringList lines;
    for (const ChipInfo& chip : DeviceDb::instance().chips())
        lines << textOf(chip).join(',');
    QCOMPARE(lines, linesOf(dataFile("devices.csv")).mid(1));
    QVERIFY(DeviceDb::instance().load(dataFile("devices.csv"))); // which no row breaks, by itself
}

void TestReferenceCatalogue::factsHoldOfTheseDevices()
{
    QMap<QString, QString> expected;
    for (const Column& column : kColumns)
        expected[column.fact] = column.devices;
    QMap<QString, QString> actual;
    for (const DeviceFacts& row : kDeviceFacts) {
        QVERIFY2(!DeviceDb::instance().find("", row.name).partNumber.isEmpty(), row.name);
        for (const QString& fact : factsOf(row))
            actual[fact] += (actual[fact].isEmpty() ? "" : " ") + QString(row.name);
    }
    QCOMPARE(actual, expected);
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

// Each row has parts and each part a row; what a row notes is what Voltage understands.
void TestReferenceCatalogue::suppliesAgreeWithTheParts()
{
    static const QRegularExpression known("^((VCC/VCCX|VCCX/VCC_LDO|VCC/VCC_LDO) Short Circuit"
                                          "( (except|of) [^ ]+)?)?\\s*$");
    QSet<QString> rows;
    QSet<QString> named;
    for (const QString& row : linesOf(dataFile("pn_voltage.csv")).mid(1)) {
        QCOMPARE(row.count(','), 12);
        QVERIFY2(known.match(row.section(',', 12)).hasMatch(), qPrintable(row));
        const QString key = row.section(',', 0, 2);
        const QString all = row.section(',', 0, 1) + ",ALL"; // what follows it is never read
        QVERIFY2(!rows.contains(key) && !rows.contains(all), qPrintable(row));
        rows += key;
    }
    for (const ChipInfo& chip : DeviceDb::instance().chips()) {
        const QString device = chip.name + ',' + chip.variant + ',';
        named += device + (rows.contains(device + chip.package) ? chip.package : "ALL");
    }
    QCOMPARE(named, rows);
}

QTEST_GUILESS_MAIN(TestReferenceCatalogue)
#include "test_reference_catalogue.moc"
