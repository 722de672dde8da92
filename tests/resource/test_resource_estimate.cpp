#include "oxautils/resource/resource_estimate.h"

#include "support/device_double.h"

#include <QtTest>

#include <limits>

using namespace OXA_TOOL;

namespace {

constexpr int kMost = std::numeric_limits<int>::max();

struct Row {
    const char* what;
    int (*rule)(int width, int depth);
    int width, depth, number;
};

constexpr Row kRows[] = {
    {"half a block",                       bsramNumberRequired,                  8,     1024,  1      },
    {"a ninth bit a byte",                 bsramNumberRequired,                  9,     2048,  1      },
    {"17 bits use the ninth ones",         bsramNumberRequired,                  17,    1025,  1      },
    {"16 bits do not, but have them",      bsramNumberRequired,                  16,    2048,  2      },
    {"more than 16384 bits",               bsramNumberRequired,                  16,    1100,  1      },
    {"wider than 32",                      bsramNumberRequired,                  33,    257,   1      },
    {"no ninth bits from 4096 on",         bsramNumberRequired,                  9,     4096,  3      },
    {"with them it would be one less",     bsramNumberRequired,                  9,     4095,  2      },
    {"8 bits from 4096 on",                bsramNumberRequired,                  8,     4096,  2      },
    {"widest mode",                        bsramNumberRequired,                  36,    256,   1      },
    {"two side by side",                   bsramNumberRequired,                  37,    256,   2      },
    {"past the widest mode",               bsramNumberRequired,                  72,    257,   2      },
    {"no width",                           bsramNumberRequired,                  0,     5000,  0      },
    {"the mark counts",                    bsramNumberRequiredWithAdjust,        36,    256,   2      },
    {"no width has no mark",               bsramNumberRequiredWithAdjust,        0,     5000,  0      },
    {"16 and the mark fit ninth bits",     bsramNumberRequiredWithAdjust,        16,    1084,  1      },
    {"narrow: a begun block is none",      bsramNumberRequiredFor1N9C,           2,     5000,  1      },
    {"narrow: two full ones",              bsramNumberRequiredFor1N9C,           2,     9000,  2      },
    {"narrow: at least one",               bsramNumberRequiredFor1N9C,           1,     16,    1      },
    {"narrow: not with 3 bits",            bsramNumberRequiredFor1N9C,           3,     9000,  2      },
    {"narrow: 1 and the mark",             bsramNumberRequiredWithAdjustFor1N9C, 1,     9000,  2      },
    {"narrow: 2 and the mark are general", bsramNumberRequiredWithAdjustFor1N9C, 2,     16384, 3      },
    {"narrow: no width",                   bsramNumberRequiredWithAdjustFor1N9C, 0,     16384, 0      },
    {"9k: ninth bits",                     bsramNumberRequiredAdjustFor20k,      9,     1024,  1      },
    {"9k: 2048 by 8 uses them",            bsramNumberRequiredAdjustFor20k,      8,     2048,  2      },
    {"9k: 2048 by more does not",          bsramNumberRequiredAdjustFor20k,      9,     2048,  3      },
    {"9k: 2047 by more does",              bsramNumberRequiredAdjustFor20k,      9,     2047,  2      },
    {"9k: none from 4096 on",              bsramNumberRequiredAdjustFor20k,      9,     4096,  5      },
    {"9k: widest mode",                    bsramNumberRequiredAdjustFor20k,      37,    256,   2      },
    {"9k: past the widest mode",           bsramNumberRequiredAdjustFor20k,      36,    257,   2      },
    {"9k: no width",                       bsramNumberRequiredAdjustFor20k,      0,     16,    0      },
    {"9k: the mark makes it more than 8",  bsramNumberRequiredWithAdjustFor20k,  8,     2048,  3      },
    {"9k: the mark in the widest mode",    bsramNumberRequiredWithAdjustFor20k,  36,    100,   2      },
    {"9k: no width has no mark",           bsramNumberRequiredWithAdjustFor20k,  0,     16,    0      },
    {"a product of 2^31 is negative",      bsramNumberRequired,                  65536, 32768, -131072},
    {"a product of 2^32 is nothing",       bsramNumberRequired,                  65536, 65536, 0      },
    {"the mark wraps as well",             bsramNumberRequiredWithAdjust,        kMost, 16,    1      },
    {"four bits a sample wrap",            bsramNumberRequiredFor1N9C,           1,     kMost, 1      },
};

struct Amounts {
    const char *name, *ssram, *bsram, *registers;
    int ssramBlocks, bsramBlocks, registerCount;
};

// The device asked for is the one found.
constexpr Amounts kAmounts[] = {
    {"QX1N-9",     "17Kb",      "468",  "6693",  270,  26,  6693 },
    {"QX2AN-55",   "no",        "2520", "x",     1710, 140, 0    },
    {"QX5AT-138",  "",          "6120", "138",   0,    340, 138  },
    {"QX1AN-5",    "13Kb",      "17",   " 7 ",   208,  0,   7    },
    {"QX5A-25A",   "180Kb",     "1008", "23040", 0,    56,  23040},
    {"QX3AN-6A",   "64Kb",      "99",   "5760",  1024, 11,  5760 },
    {"of our own", "100Kb",     "36",   "1.5",   1600, 2,   0    },
    {"no unit",    "1",         "",     "",      0,    0,   0    },
    {"beyond",     "4194305Kb", "18",   "1",     16,   1,   1    },
};

}

class TestResourceEstimate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bsram();
    void ssramAndRegisters();
    void amounts();
    void unknownParts();
};

void TestResourceEstimate::bsram()
{
    for (const Row& row : kRows) {
        const int number = row.rule(row.width, row.depth);
        QVERIFY2(number == row.number, qPrintable(QString("%1: %2").arg(row.what).arg(number)));
    }
}

void TestResourceEstimate::ssramAndRegisters()
{
    QCOMPARE(ssramNumberRequiredWithAdjust(7, 16, true), 2);
    QCOMPARE(ssramNumberRequiredWithAdjust(8, 16, true), 3);
    QCOMPARE(ssramNumberRequiredWithAdjust(7, 64, false), 8);
    QCOMPARE(ssramNumberRequiredWithAdjust(7, 79, false), 8); // 15 samples do not count
    QCOMPARE(ssramNumberRequiredWithAdjust(5, 17, false), 2);
    QCOMPARE(ssramNumberRequiredWithAdjust(0, 16, true), 1);
    QCOMPARE(ssramNumberRequiredWithAdjust(kMost, 64, false), std::numeric_limits<int>::min());

    QCOMPARE(regNumberRequiredWidthAdjust(7, 16, true), 128);
    QCOMPARE(regNumberRequiredWidthAdjust(7, 16, false), 112);
    QCOMPARE(regNumberRequiredWidthAdjust(65536, 65537, false), 65536);
}

void TestResourceEstimate::amounts()
{
    for (const Amounts& row : kAmounts) {
        DEV::ChipInfo& chip = DeviceDouble::instance().answer;
        chip.name = row.name;
        chip.resources = QStringList {"1", "2", row.registers, "4", row.ssram, row.bsram};
        QCOMPARE(currentDeviceSsramAmount("pn", row.name), row.ssramBlocks);
        QCOMPARE(currentDeviceBsramAmount("pn", row.name), row.bsramBlocks);
        QCOMPARE(currentDeviceRegAmount("pn", row.name), row.registerCount);
    }
}

void TestResourceEstimate::unknownParts()
{
    DeviceDouble::instance().answer = DEV::ChipInfo();
    QCOMPARE(currentDeviceSsramAmount("pn", "QX1N-9"), 0);
    QCOMPARE(currentDeviceBsramAmount("pn", "QX1N-9"), 0);
    QCOMPARE(currentDeviceRegAmount("pn", "QX1N-9"), 0);

    // These have none whatever the database says: it is not asked.
    DeviceDouble::instance().lookups.clear();
    QCOMPARE(currentDeviceSsramAmount("pn", "QX5AT-60B"), 0);
    QVERIFY(DeviceDouble::instance().lookups.isEmpty());
    currentDeviceBsramAmount("pn", "QX5AT-60B");
    QCOMPARE(DeviceDouble::instance().lookups, QStringList("pn|QX5AT-60B"));
}

QTEST_GUILESS_MAIN(TestResourceEstimate)
#include "test_resource_estimate.moc"
