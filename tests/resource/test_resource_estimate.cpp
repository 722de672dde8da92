// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/ao_core_lite.h"
#include "oxautils/model/limits.h"
#include "oxautils/resource/analyzer_estimate.h"
#include "oxautils/resource/capture_memory.h"
#include "oxautils/resource/resource_estimate.h"
#include "support/device_double.h"
#include "support/signals.h"

#include <QtTest>

#include <limits>

using namespace OXA_TOOL;

namespace {

constexpr int kMost = std::numeric_limits<int>::max();

struct Row {
    const char *what, *device;
    bool mark;
    int width, depth, blocks;
};

constexpr Row kRows[] = {
    {"17 bits use the ninth ones",     "QX1N-9",   false, 17, 1025,  1},
    {"16 bits do not, but have them",  "QX1N-9",   false, 16, 2048,  2},
    {"more than 16384 bits",           "QX1N-9",   false, 16, 1100,  1},
    {"wider than 32",                  "QX1N-9",   false, 33, 257,   1},
    {"no ninth bits from 4096 on",     "QX1N-9",   false, 9,  4096,  3},
    {"with them it would be one less", "QX1N-9",   false, 9,  4095,  2},
    {"past the widest mode",           "QX1N-9",   false, 72, 257,   2},
    {"the mark counts",                "QX1N-9",   true,  36, 256,   2},
    {"a begun block is none",          "QX1N-9C",  false, 2,  5000,  1},
    {"two full ones",                  "QX1N-9C",  false, 2,  9000,  2},
    {"not with 3 bits",                "QX1N-9C",  false, 3,  9000,  2},
    {"1 and the mark",                 "QX1N-9C",  true,  1,  16384, 4},
    {"2 and the mark are general",     "QX1N-9C",  true,  2,  16384, 3},
    {"2048 by more does not",          "QX3A-20A", false, 9,  2048,  3},
    {"2047 by more does",              "QX3A-20A", false, 9,  2047,  2},
    {"widest mode",                    "QX3A-20A", false, 37, 256,   2},
    {"past the widest mode",           "QX3A-20A", false, 36, 257,   2},
    {"the mark makes it more than 8",  "QX3A-20A", true,  8,  2048,  3},
    {"the mark in the widest mode",    "QX3A-20A", true,  36, 100,   2},
};

struct Amounts {
    const char *name, *ssram, *bsram, *registers;
    int ssramBlocks, bsramBlocks, registerCount;
};

// The device asked for is the one found.
constexpr Amounts kAmounts[] = {
    {"QX1N-9",     "17Kb",      "468",  "6693",  270,  26,  6693 },
    {"QX2AN-55",   "no",        "2520", "x",     1710, 140, 0    },
    {"QX5A-25A",   "180Kb",     "1008", "23040", 0,    56,  23040},
    {"of our own", "100Kb",     "36",   "1.5",   1600, 2,   0    },
    {"no unit",    "1",         "",     "",      0,    0,   0    },
    {"no entry",   "",          "6120", "138",   0,    340, 138  },
    {"beyond",     "4194305Kb", "18",   "1",     16,   1,   1    },
};

}

class TestResourceEstimate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void blockSram();
    void shadowSramAndRegisters();
    void numbersThatWrap();
    void amounts();
    void wholeAnalyzers();
};

void TestResourceEstimate::blockSram()
{
    for (const Row& row : kRows) {
        const int blocks = captureMemory(row.width, row.depth, row.mark, row.device).blockSram;
        QVERIFY2(blocks == row.blocks,
            qPrintable(QString("%1, %2: %3").arg(row.device, row.what).arg(blocks)));
    }
    QCOMPARE(captureMemory(65536, 32768, false, "QX1N-9").blockSram, kMost);
    QCOMPARE(captureMemory(0, 5000, true, "QX1N-9").blockSram, 0);
}

void TestResourceEstimate::shadowSramAndRegisters()
{
    QCOMPARE(ssramNumberRequiredWithAdjust(7, 16, true), 2);
    QCOMPARE(ssramNumberRequiredWithAdjust(8, 16, true), 3);
    QCOMPARE(ssramNumberRequiredWithAdjust(7, 79, false), 8); // 15 samples do not count
    QCOMPARE(ssramNumberRequiredWithAdjust(0, 16, true), 1);
    QCOMPARE(regNumberRequiredWidthAdjust(7, 16, true), 128);
    QCOMPARE(regNumberRequiredWidthAdjust(7, 16, false), 112);
}

// Products keep their low 32 bits.
void TestResourceEstimate::numbersThatWrap()
{
    QCOMPARE(bsramNumberRequired(65536, 32768), -131072);
    QCOMPARE(bsramNumberRequiredWithAdjust(kMost, 16), 1);
    QCOMPARE(bsramNumberRequiredFor1N9C(1, kMost), 1);
    QCOMPARE(ssramNumberRequiredWithAdjust(kMost, 64, false), std::numeric_limits<int>::min());
    for (const auto rule : {bsramNumberRequired, bsramNumberRequiredWithAdjust,
             bsramNumberRequiredFor1N9C, bsramNumberRequiredWithAdjustFor1N9C,
             bsramNumberRequiredAdjustFor20k, bsramNumberRequiredWithAdjustFor20k})
        QCOMPARE(rule(0, 5000), 0);
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

// Of a core with windows, and of two Lite cores.
void TestResourceEstimate::wholeAnalyzers()
{
    const auto registersOf = [](int windows) {
        OXA::AoCore core(0); // of 1024 samples
        core.windowNum = windows;
        AnalyzerEstimate estimate({});
        estimate.add(core);
        return estimate.amounts().registers;
    };
    // Four counts of 2 bits, two places of 10, the register of each window and of the one read, and
    // the bits selected of the numbers of windows in the status and in its snapshot.
    QCOMPARE(registersOf(4) - registersOf(1), 4 * 2 + 2 * 10 + 5 + 2 - 1);

    // A word of registers has 8 bits of a gap and the mark of a window's end more.
    const auto amountsOf = [](OXA::CoreStorage::Keep keep) {
        OXA::AoCore core(0);
        core.implementation = OXA::Registers;
        core.captureSignals = core.signalList = signalsOf("a", 20);
        core.storage.keep = keep;
        core.storage.gapBits = 8;
        core.storage.limit = 1;
        core.storage.watch = QStringList("a[3]");
        core.storage.when = "M0";
        AnalyzerEstimate estimate({});
        estimate.add(core);
        return estimate.amounts();
    };
    const AnalyzerAmounts all = amountsOf(OXA::CoreStorage::All);
    const AnalyzerAmounts changes = amountsOf(OXA::CoreStorage::Changes);
    const AnalyzerAmounts when = amountsOf(OXA::CoreStorage::When);
    QVERIFY(changes.luts > all.luts && when.luts > all.luts);
    // A word of 30 bits is selected from in four parts, one of 21 in three.
    QCOMPARE(when.registers - all.registers, (1024 + 1) * (8 + 1) + 2 * 8 + 2 + 2 + 1);
    QCOMPARE(changes.registers - when.registers, 3 + 1); // comparison of 20 signals

    // The second core on a clock takes the first one's synchronizer of three registers.
    const auto amountsOfForced = [](int forced, bool stamps) {
        AnalyzerEstimate estimate({});
        for (int index = 0; index < 3; ++index) {
            OXA::AoCore core(index);
            core.sampleClock = index == 0 ? "a" : "b";
            core.windowNum = 4;
            if (index > 0 && index <= forced)
                core.events.forcedBy = {0};
            core.events.stamps = stamps;
            estimate.add(core);
        }
        return estimate.amounts();
    };
    const AnalyzerAmounts alone = amountsOfForced(0, false);
    // Setting, the force and its cause, a bit of each window, of the one read, and its selected bit
    const int own = 1 + 2 + 4 + 1 + 1;
    QCOMPARE(amountsOfForced(1, false).registers - alone.registers, 1 + 3 + own);
    QCOMPARE(amountsOfForced(2, false).registers - alone.registers, 1 + 3 + 2 * own);
    QCOMPARE(amountsOfForced(0, true).blockSram, 3); // of the windows

    AnalyzerEstimate lite({});
    OXA::AOCore_Lite core;
    core.signalList = signalsOf("a", 20);
    lite.add(core);
    const AnalyzerAmounts one = lite.amounts();
    lite.add(core); // which is not built
    QCOMPARE(lite.amounts().registers, one.registers);
    QCOMPARE(lite.amounts().blockSram, one.blockSram);
}

QTEST_GUILESS_MAIN(TestResourceEstimate)
#include "test_resource_estimate.moc"
