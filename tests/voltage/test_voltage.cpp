// SPDX-License-Identifier: Apache-2.0
#include "oxautils/voltage/voltage.h"

#include "support/device_double.h"
#include "support/files.h"

#include <QDir>
#include <QtTest>

using OXA::Voltage;

namespace {

QString tablePath()
{
    return QCoreApplication::applicationDirPath() + "/../share/device/pn_voltage.csv";
}

Voltage read(const QByteArray& table, const QString& package = "QN48")
{
    DEV::ChipInfo& chip = DeviceDouble::instance().answer;
    chip.name = "QX1N-9";
    chip.variant = "LV";
    chip.package = package;
    writeFile(tablePath(), table);
    return Voltage("device", "part");
}

/// The supplies that the note shorts.
QString shortOf(const Voltage& voltage)
{
    return QString(voltage.isVCCVCCXShortCircuit() ? "VCC/VCCX" : "")
        + (voltage.isVCCXVCCLDOShortCircuit() ? "VCCX/VCC_LDO" : "")
        + (voltage.isVCCVCCLDOShortCircuit() ? "VCC/VCC_LDO" : "");
}

struct ShortRow {
    const char *note, *package, *shorted;
};

constexpr ShortRow kShorts[] = {
    {" VCC/VCCX Short Circuit \t\r\n",         "K1", "VCC/VCCX"    },
    {"VCC/VCCX Short Circuit except K1/K2\n",  "K2", ""            },
    {"VCC/VCCX Short Circuit except K1/K22",   "K2", "VCC/VCCX"    },
    {"VCC/VCCX Short Circuit of K1/K2\n",      "K3", ""            },
    {"VCC/VCCX Short Circuit of K1 /K2",       "K1", ""            },
    {"vcc/vccx short circuit",                 "K1", ""            },
    {"VCCX/VCC_LDO Short Circuit of K2/K1",    "K1", "VCCX/VCC_LDO"},
    {"VCC/VCC_LDO Short Circuit except K1/K2", "K3", "VCC/VCC_LDO" },
};

}

class TestVoltage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void columns();
    void choicesAndDefaults();
    void firstRowThatFits();
    void shortCircuits();
    void oddFiles();
    void withoutTable();
};

// The table has its place beside the program, which is in a folder of its own.
void TestVoltage::initTestCase() { QVERIFY(QDir().mkpath(QFileInfo(tablePath()).path())); }

void TestVoltage::columns()
{
    DeviceDouble::instance().lookups.clear();
    const Voltage voltage
        = read("device,variant,package\n"
               "QX1N-9,LV,ALL,1.2V,1.14,1.26,2.5V/3.3V,2.375,3.465,1.8,1.7,1.9,x\r\n");
    QCOMPARE(DeviceDouble::instance().lookups, QStringList("part|device"));
    const QStringList limits = {voltage.getVCCMin(), voltage.getVCCMax(), voltage.getVCCXMin(),
        voltage.getVCCXMax(), voltage.getVCCLDOMin(), voltage.getVCCLDOMax()};
    QCOMPARE(limits, QStringList({"1.14", "1.26", "2.375", "3.465", "1.7", "1.9"}));
    QCOMPARE(voltage.getData(12), QString("x\r\n"));
    QCOMPARE(voltage.getData(13) + voltage.getData(-1), QString());
}

void TestVoltage::choicesAndDefaults()
{
    const Voltage voltage
        = read("QX1N-9,LV,ALL,1.20V,,,any/3V/about 3.30 V//12.5.7,,,none/too,,,\n");
    QCOMPARE(voltage.getVCCOptionalValues(), QStringList("1.20"));
    QCOMPARE(voltage.getVCCDefaultValue(), QString("1.20V"));
    QCOMPARE(voltage.getVCCXOptionalValues(), QStringList({"3", "3.30", "12.5"}));
    QCOMPARE(voltage.getVCCXDefaultValue(), QString("3"));
    QCOMPARE(voltage.getVCCLDOOptionalValues(), QStringList());
    QCOMPARE(voltage.getVCCLDODefaultValue(), QString());
}

void TestVoltage::firstRowThatFits()
{
    const QByteArray others
        = "QX1N-9,UV,ALL,3\nQX1N-9,LV,QN48P,4\nQX1N-9C,LV,ALL,5\nqx1n-9,LV,ALL,6\n";
    QCOMPARE(read(others + "QX1N-9,LV,ALL,1\nQX1N-9,LV,QN48,2\n").getData(3), QString("1\n"));
    QCOMPARE(read(others + "QX1N-9,LV,QN48,2\nQX1N-9,LV,ALL,1\n").getData(3), QString("2\n"));
    QVERIFY(read(others).data.isEmpty());
}

void TestVoltage::shortCircuits()
{
    for (const ShortRow& row : kShorts) {
        const Voltage voltage = read(QByteArray("QX1N-9,LV,ALL,,,,,,,,,,") + row.note, row.package);
        QVERIFY2(shortOf(voltage) == row.shorted, row.note);
    }
}

void TestVoltage::oddFiles()
{
    const QByteArray row = "QX1N-9,LV,ALL,1,2\r\n";
    QCOMPARE(read("\xef\xbb\xbf" + row).getVCCMin(), QString("2\r\n"));
    QVERIFY(read("a\r\n\r\n" + row).data.isEmpty());
    QCOMPARE(read("a\n \n" + row).data.size(), 5); // a blank is not nothing
    QCOMPARE(read("\"a\"\n\"QX1N-9\",LV,ALL,0\n" + row).data.size(), 5);

    const Voltage cut = read(QByteArray("\xff\0\n", 3) + "QX1N-9,LV,ALL,");
    QCOMPARE(cut.data.size(), 4);
    QVERIFY(cut.getVCCOptionalValues().isEmpty() && cut.getVCCXDefaultValue().isEmpty());
    QCOMPARE(shortOf(cut), QString());
}

void TestVoltage::withoutTable()
{
    QFile::remove(tablePath());
    QTest::ignoreMessage(QtCriticalMsg, "read voltage error");
    const Voltage none("device", "part");
    QVERIFY(none.data.isEmpty() && none.getVCCMin().isEmpty());
    QVERIFY(none.getVCCOptionalValues().isEmpty() && none.getVCCDefaultValue().isEmpty());
    QCOMPARE(shortOf(none), QString());
}

QTEST_GUILESS_MAIN(TestVoltage)
#include "test_voltage.moc"
