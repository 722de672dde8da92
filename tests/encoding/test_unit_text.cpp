// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/signals_text.h"
#include "oxautils/encoding/unit_text.h"
#include "support/rows.h"
#include "support/signals.h"

#include <random>

using namespace OXA;

namespace {

struct TextRow {
    const char *what, *text, *shown;
};

// T0 has 1 signal, T4 has 4, T8 has 8, T9 has 9, T12 has none. "IDLE" is 11 at any port.
constexpr TextRow kTexts[] = {
    {"digits",           "T4 == 1X0R",                                  "Basic w/edges: T4 == 1X0R"                             },
    {"binary digits",    "T4==0010",                                    "Basic: T4 == 0010"                                     },
    {"decimal",          "T4 != 10",                                    "Basic: T4 != 1010"                                     },
    {"0b",               "T4 == 0b1X",                                  "Basic: T4 == 001X"                                     },
    {"0x is no 0, any",  "T4 == 0x0d",                                  "Basic: T4 == 1101"                                     },
    {"any is no 0x",     "T4 == 0X01",                                  "Basic: T4 == 0X01"                                     },
    {"X of four",        "T9 == 0xXX4",                                 "Basic: T9 == XXXXX0100"                                },
    {"not wide",         "T8 == 0xa1",                                  "Basic: T8 == 10100001"                                 },
    {"small letters",    "T4 == xxbn",                                  "Basic w/edges: T4 == XXBN"                             },
    {"wide",             "  T9 < 0x43 ",                                "Extended: T9 < 0x043"                                  },
    {"name",             "T4 == IDLE",                                  "Basic: T4 == 0011"                                     },
    {"range",            "T4 in 3..IDLE",                               "Range: T4 in 0011..0011"                               },
    {"not in",           "T4 not  in 0b1 .. 7",                         "Range: T4 not in 0001..0111"                           },
    {"edges of a range", "T4 in R000..1111",                            "Range w/edges: T4 in R000..1111"                       },
    {"rises",            "T0 rises",                                    "Basic w/edges: T0 rises"                               },
    {"falls",            "T0 == F",                                     "Basic w/edges: T0 falls"                               },
    {"counted",          "T0 changes, 4 times",                         "Basic w/edges: T0 changes, 4 times (counter of 2 bits)"},
    {"counted in a row", "T0 >= 1, 1 time in a row(counter of 8 bits)",
     "Extended: T0 >= 1, 1 times in a row (counter of 8 bits)"                                                                  },
    {"type",             "range W/edges : T4 <= 2",                     "Range w/edges: T4 <= 0010"                             },
    {"not of the width", "T4 == \"1R?\"",                               "Basic w/edges: T4 == \"1R?\""                          },
    {"no signals",       "Basic: T12 == \"\"",                          "Basic: T12 == \"\""                                    },
    {"no port",          "nothing > \"01\", 2147483647 times",
     "Extended: nothing > \"01\", 2147483647 times (counter of 31 bits)"                                                        },
    {"off",              "off",                                         "off"                                                   },
};

// One after the other, for a unit with "T4 == 1X01".
constexpr TextRow kParts[] = {
    {"value",       "0x3",              "Basic: T4 == 0011"                                     },
    {"and counter", "4, 9 times",       "Basic: T4 == 0100, 9 times (counter of 4 bits)"        },
    {"edges",       " R00X",            "Basic w/edges: T4 == R00X, 9 times (counter of 4 bits)"},
    {"counter",     "3 times in a row",
     "Basic w/edges: T4 == R00X, 3 times in a row (counter of 4 bits)"                          },
    {"whole",       "T4 in 1..2",       "Range: T4 in 0001..0010"                               },
    {"bounds",      "IDLE .. 7",        "Range: T4 in 0011..0111"                               },
};

constexpr TextRow kFaults[] = {
    {"empty",          "",                          "at the end: write a trigger port"           },
    {"no such port",   "T16 == 1",                  "character 1, \"T16 == 1\": write a trigger" },
    {"no such type",   "Best: T4 == 1",             "character 1, \"Best: T4 == 1\": the types"  },
    {"assignment",     "T4 = 1",                    "character 4, \"= 1\": write one of ==, !=," },
    {"no value",       "T4 ==",                     "at the end: write a value"                  },
    {"octal?",         "T4 == 017",                 "character 7, \"017\": write 4 digits 0, 1," },
    {"only a value",   "1X00",                      "the unit has no port yet; write a trigger"  },
    {"few digits",     "T4 == 1X0",                 "character 7, \"1X0\": write 4 digits"       },
    {"unknown name",   "T4 == BUSY",                "character 7, \"BUSY\": write 4 digits"      },
    {"bare 0b",        "T4 == 0b",                  "character 7, \"0b\": write 4 digits"        },
    {"too large",      "T4 == 16",                  "it has 5 bits, the port has 4 signals"      },
    {"second bound",   "T4 in 1..0x1F, 2 times",    "character 10, \"0x1F, 2 times\": it has 5"  },
    {"no bound",       "T4 in 3",                   "at the end: write \"..\" and the range's"   },
    {"bus that rises", "T4 rises",                  "the port has 4 signals, \"rises\" is for"   },
    {"no signals",     "T12 == 1",                  "the port has no signals"                    },
    {"counter",        "T0 == 1, often",            "character 8, \", often\": write \", N times"},
    {"large counter",  "T0 == 1, 2147483648 times", "write numbers up to 2147483647"             },
    {"more",           "T0 rises && T4 == 1",       "character 10, \"&& T4 == 1\": write"        },
};

std::unique_ptr<AoCore> makeCore()
{
    auto core = std::make_unique<AoCore>(0);
    for (const int width : {1, 4, 8, 9})
        core->getTrigger(width == 1 ? 0 : width)->signalList = {busOf("a", width)};
    return core;
}

QString valueOf(const TriggerPort&, const QString& name, QStringList&)
{
    return name == "IDLE" ? "11" : "";
}

QString randomValue(std::mt19937& random, int width)
{
    QString value;
    while (value.size() < width)
        value += "01XRFBN01"[random() % 9];
    return value;
}

}

class TestUnitText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads_data() { addRows(kTexts); }
    void reads();
    void faults_data() { addRows(kFaults); }
    void faults();
    void readsWhatItShows();
    void keepsOtherSettings();
    void signalNamesWithCommas();
};

void TestUnitText::reads()
{
    const TextRow& row = rowOf(kTexts);
    const auto core = makeCore();
    MatchUnit& unit = *core->matchUnit(3);
    QString error;
    QVERIFY2(unitFromText(row.text, unit, &error, valueOf), qPrintable(error));
    QCOMPARE(unitText(unit), QString(row.shown));
}

void TestUnitText::faults()
{
    const TextRow& row = rowOf(kFaults);
    const auto core = makeCore();
    QString error;
    QVERIFY(!unitFromText(row.text, *core->matchUnit(3), &error, valueOf));
    QVERIFY2(error.contains(row.shown), qPrintable(error));
    QVERIFY(!core->matchUnit(3)->enabled);
}

void TestUnitText::readsWhatItShows()
{
    std::mt19937 random(1);
    const auto core = makeCore();
    for (int i = 0; i < 400; ++i) {
        const int port = std::array {0, 4, 9, 12}[random() % 4];
        const int width = core->getTrigger(port)->singleSignals().size() + (random() % 8 == 0);
        MatchUnit& unit = enableUnit(*core, 0, port, randomValue(random, width));
        unit.matchType = MatchType(random() % 6);
        unit.matchFunc = MatchFunc(random() % 8);
        unit.value1 = isRangeFunction(unit.matchFunc) ? randomValue(random, width) : QString();
        unit.counterEnable = random() % 2;
        unit.continuous = unit.counterEnable && random() % 2;
        unit.counter = unit.counterEnable ? int(random() % 70000) : 2;
        unit.counterWidth = unit.counterEnable ? 1 + int(random() % 32) : 2;
        MatchUnit& other = *core->matchUnit(1);
        QString error;
        QVERIFY2(unitFromText(unitText(unit), other, &error), qPrintable(error + unitText(unit)));
        const auto fields = [](const MatchUnit& u) {
            return std::make_tuple(u.enabled, u.matchType, u.matchFunc, u.counterEnable,
                u.continuous, u.counter, u.counterWidth, u.value0, u.value1, u.trigger);
        };
        QVERIFY2(fields(other) == fields(unit), qPrintable(unitText(unit)));
    }
}

// What a text does not name is kept only when nothing changes.
void TestUnitText::keepsOtherSettings()
{
    const auto core = makeCore();
    MatchUnit& unit = enableUnit(*core, 0, 4, "1X00");
    unit.counter = 9;
    QVERIFY(unitFromText("off", unit, nullptr) && !unit.enabled);
    QVERIFY(unitFromText("on", unit, nullptr) && unit.enabled);
    QVERIFY(unitFromText("T4 == 1X00", unit, nullptr));
    QCOMPARE(unit.counter, 9);
    QVERIFY(unitFromText("T4 == 1X01", unit, nullptr));
    QCOMPARE(unit.counter, 2);
    for (const TextRow& row : kParts) {
        QString error;
        QVERIFY2(unitFromText(row.text, unit, &error, valueOf), qPrintable(error));
        QCOMPARE(unitText(unit), QString(row.shown));
    }
    QVERIFY(!unitFromText("9, 3 apples", unit, nullptr));
    QVERIFY(!unitFromText("5", unit, nullptr));
}

void TestUnitText::signalNamesWithCommas()
{
    AoCore core(0);
    core.signalList = {signalOf("a"), busOf("a, b", 2)};
    core.signalList[1].captureEnable = false;
    QList<SignalItem> items;
    QString error;
    QVERIFY2(signalsFromText(signalsText(core.signalList), core, items, &error), qPrintable(error));
    QCOMPARE(signalsText(items), QString("a, a, b (2)"));
    QVERIFY(signalsFromText("a, b[0], a, b,a", core, items, &error));
    QCOMPARE(flattenedNames(items).join(' '), QString("a, b[0] a, b[1] a, b[0] a"));
}

QTEST_APPLESS_MAIN(TestUnitText)
#include "test_unit_text.moc"
