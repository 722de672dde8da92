#include "oxacapture/trigger/trigger_model.h"

#include "oxacapture/sample_text.h"

#include "oxautils/model/limits.h"

#include <QtTest>

using namespace OXA_CAPTURE;

namespace {

// A core with one data signal and port 0 of the given width.
std::unique_ptr<OXA::AoCore> coreWithPort(int width)
{
    auto core = std::make_unique<OXA::AoCore>(0);
    OXA::SignalItem item;
    item.name = "d";
    core->captureSignals += item;
    for (int bit = width - 1; bit >= 0; --bit) {
        item.name = QString("p%1").arg(bit);
        core->triggers[0]->signalList += item;
    }
    return core;
}

OXA::MatchUnit& enableUnit(OXA::AoCore& core, int index, const QString& value)
{
    OXA::MatchUnit& unit = *core.matchUnits[index];
    unit.enabled = true;
    unit.matchType = OXA::MatchRangeEdges;
    unit.value0 = value;
    unit.trigger = core.triggers[0];
    return unit;
}

ModelRun run(const OXA::AoCore& core, const QString& port, qint64 forceAt = kNoSample)
{
    Messages messages;
    TriggerSetup setup;
    if (!triggerSetup(core, {}, setup, messages)) {
        qWarning() << messages.first().message();
        return {};
    }
    const QString data = QStringList(QVector<QString>(port.count(' ') + 1, "0").toList()).join(' ');
    return runModel(setup, samplesOf({data, port}), forceAt, true);
}

// A 1 for each sample at which bit `bit` of the member is set.
QString trace(const ModelRun& run, quint32 SampleEvents::*mask, int bit = 0)
{
    QString text;
    for (const SampleEvents& events : run.events)
        text += events.*mask >> bit & 1 ? '1' : '0';
    return text;
}

// "2+4@3": four samples from number 2 on, the trigger at number 3.
QString windowsText(const ModelRun& run)
{
    QStringList texts;
    for (const Window& window : run.windows)
        texts += QString("%1+%2@%3")
                     .arg(window.firstSample)
                     .arg(window.samples)
                     .arg(window.triggerSample);
    return texts.join(' ');
}

}

class TestTriggerModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comparisons_data();
    void comparisons();
    void comparisonsOfWidePorts();
    void counters_data();
    void counters();
    void sequences_data();
    void sequences();
    void windows_data();
    void windows();
    void edgesGoOnBehindAWindow();
    void unknownBitsCountAsZero();
    void expressions_data();
    void expressions();
    void dynamicTablesAreTheCompilers();
    void refusesWhatNoHardwareDoes();
};

void TestTriggerModel::comparisons_data()
{
    struct Row {
        const char* what;
        int type, func;
        const char *value0, *value1, *port, *matches;
    };
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("func");
    QTest::addColumn<QString>("value0");
    QTest::addColumn<QString>("value1");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("matches");
    const Row rows[] = {
        {"levels",                                          0, 0, "10X",  "",     "100 101 110 000 10x",      "11001" },
        {"other levels",                                    0, 1, "10X",  "",     "100 101 110 000",          "0011"  },
        {"short values get zeros",                          0, 0, "1",    "",     "001 101",                  "10"    },
        {"long values lose their end",                      0, 0, "1010", "",     "101 010",                  "10"    },
        {"unknown letters are any",                         0, 0, "1r?",  "",     "100 111 000",              "110"   },
        {"rising",                                          1, 0, "R",    "",     "1 0 1 1 0 1",              "001001"},
        {"falling",                                         1, 0, "F",    "",     "0 1 0 0 1 0",              "001001"},
        {"either edge",                                     1, 0, "B",    "",     "1 0 0 1 1",                "01010" },
        {"no edge, the first sample too",                   1, 0, "N",    "",     "1 0 0 1 1",                "10101" },
        {"not a rising edge",                               1, 1, "R",    "",     "0 1 0",                    "101"   },
        {"edge and level",                                  3, 0, "R1",   "",     "00 10 01 11 01 10",        "000100"},
        {"no edges without their hardware: R and F any",    0, 0, "RF",   "",     "00 10 01 11",              "1111"  },
        {"no edges without their hardware: B is 0, N is 1", 4, 0, "BN",   "",     "00 10 01 11",              "0010"  },
        {"greater",                                         2, 2, "0101", "",     "0100 0101 0110 1000",      "0011"  },
        {"less",                                            2, 3, "0101", "",     "0100 0101 0110 0000",      "1001"  },
        {"at least",                                        2, 4, "0101", "",     "0100 0101 0110",           "011"   },
        {"at most",                                         2, 5, "0101", "",     "0100 0101 0110",           "110"   },
        {"letters in numbers are 0",                        2, 4, "0X1B", "",     "0001 0010 0000",           "010"   },
        {"in range",                                        4, 6, "0010", "0100", "0001 0010 0011 0100 0101", "01110" },
        {"not in range",                                    4, 7, "0010", "0100", "0001 0010 0011 0100 0101", "10001" },
        {"in an empty range",                               5, 6, "100",  "010",  "011 100 010",              "000"   },
        {"outside of an empty range",                       5, 7, "100",  "010",  "011 100 010",              "111"   },
        {"value1 is a range's alone",                       2, 5, "01",   "11",   "01 10 11",                 "100"   },
    };
    for (const Row& row : rows)
        QTest::newRow(row.what) << row.type << row.func << row.value0 << row.value1 << row.port
                                << row.matches;
}

void TestTriggerModel::comparisons()
{
    QFETCH(int, type);
    QFETCH(int, func);
    QFETCH(QString, value0);
    QFETCH(QString, value1);
    QFETCH(QString, port);
    const auto core = coreWithPort(port.indexOf(' '));
    OXA::MatchUnit& unit = enableUnit(*core, 0, value0);
    unit.matchType = OXA::MatchType(type);
    unit.matchFunc = OXA::MatchFunc(func);
    unit.value1 = value1;
    QTEST(trace(run(*core, port), &SampleEvents::matches), "matches");
}

void TestTriggerModel::comparisonsOfWidePorts()
{
    for (const int width : {63, 64, 65, 130}) {
        const auto core = coreWithPort(width);
        const QString low = QString("0").repeated(width - 1) + '1';
        const QString high = '1' + QString("0").repeated(width - 1);
        enableUnit(*core, 0, high).matchFunc = OXA::MatchGreaterEqual;
        enableUnit(*core, 1, low).matchFunc = OXA::MatchLessEqual;
        enableUnit(*core, 2, QString(high).replace(0, 1, "R"));
        const ModelRun result = run(*core, low + ' ' + high + ' ' + QString("0").repeated(width));
        QCOMPARE(trace(result, &SampleEvents::matches, 0), QString("010"));
        QCOMPARE(trace(result, &SampleEvents::matches, 1), QString("101"));
        QCOMPARE(trace(result, &SampleEvents::matches, 2), QString("010"));
    }
}

void TestTriggerModel::counters_data()
{
    struct Row {
        const char* what;
        int counter;
        bool continuous;
        const char *port, *outputs;
    };
    QTest::addColumn<int>("counter");
    QTest::addColumn<bool>("continuous");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("outputs");
    const Row rows[] = {
        {"one is every match",                1, false, "1 0 1 1",           "1011"     },
        {"the third, and the third after it", 3, false, "1 0 1 0 1 1 1 1",   "00001001" },
        {"gaps start continuous ones over",   3, true,  "1 1 0 1 1 1 1 1 1", "000001001"},
    };
    for (const Row& row : rows)
        QTest::newRow(row.what) << row.counter << row.continuous << row.port << row.outputs;
}

void TestTriggerModel::counters()
{
    QFETCH(int, counter);
    QFETCH(bool, continuous);
    QFETCH(QString, port);
    const auto core = coreWithPort(1);
    OXA::MatchUnit& unit = enableUnit(*core, 0, "1");
    unit.counterEnable = true;
    unit.counter = counter;
    unit.continuous = continuous;
    QTEST(trace(run(*core, port), &SampleEvents::outputs), "outputs");
}

void TestTriggerModel::sequences_data()
{
    struct Row {
        const char *what, *expressions, *port;
        int reached;
        const char* windows;
    };
    QTest::addColumn<QString>("expressions");
    QTest::addColumn<QString>("port");
    QTest::addColumn<int>("reached");
    QTest::addColumn<QString>("windows");
    const Row rows[] = {
        {"one level",                 "M0",            "00 00 01 01",       1, "1+2@2"},
        {"no level, no trigger",      "",              "11 11 11",          0, ""     },
        {"levels take a sample each", "M0;M1",         "11 00 11 00",       2, "1+2@2"},
        {"levels in order only",      "M1;M0",         "01 01 10 10 01 00", 2, "3+2@4"},
        {"three of one unit",         "M0;M0;M0",      "01 01 00 01 00",    3, "2+2@3"},
        {"cut off on its way",        "M0;M1;M0",      "01 10 10 10",       2, ""     },
        {"what was not waited for",   "!M0&!M1;M0^M1", "11 11 00 11 10",    2, "3+2@4"},
    };
    for (const Row& row : rows)
        QTest::newRow(row.what) << row.expressions << row.port << row.reached << row.windows;
}

// Two samples a window, the trigger the second.
void TestTriggerModel::sequences()
{
    QFETCH(QString, expressions);
    QFETCH(QString, port);
    QFETCH(int, reached);
    for (const int expressionType : {0, 1}) {
        const auto core = coreWithPort(2);
        enableUnit(*core, 0, "X1");
        enableUnit(*core, 1, "1X");
        core->expressionType = expressionType;
        core->expressions = expressions.split(';', Qt::SkipEmptyParts);
        core->captureAmount = 2;
        core->triggerPos = 1;
        const ModelRun result = run(*core, port);
        QTEST(windowsText(result), "windows");
        QCOMPARE(result.progress.reached, reached);
    }
}

void TestTriggerModel::windows_data()
{
    struct Row {
        const char* what;
        int amount, position, count, forceAt;
        const char *port, *windows;
    };
    QTest::addColumn<int>("amount");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("forceAt");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("windows");
    const Row rows[] = {
        {"in the middle",             4, 2, 1, -1, "0 0 0 1 0 1 0",   "1+4@3"            },
        {"at its begin",              3, 0, 1, -1, "0 1 0 0 0",       "1+3@1"            },
        {"at its end",                3, 2, 1, -1, "0 0 0 1 0",       "1+3@3"            },
        {"early, shorter in front",   4, 2, 1, -1, "0 1 0 0 0",       "0+3@1"            },
        {"at the first sample",       4, 3, 1, -1, "1 1 1",           "0+1@0"            },
        {"cut short by the end",      5, 1, 1, -1, "0 0 1 0",         "1+3@2"            },
        {"no sample twice",           3, 1, 3, -1, "0 0 1 1 1 0 1 1", "1+3@2 4+2@4 6+2@6"},
        {"no more than asked for",    1, 0, 2, -1, "1 1 1",           "0+1@0 1+1@1"      },
        {"fewer than asked for",      2, 0, 4, -1, "1 0 0 1 0 0",     "0+2@0 3+2@3"      },
        {"forced",                    3, 1, 1, 2,  "0 0 0 0",         "1+3@2"            },
        {"forced inside of a window", 4, 0, 2, 2,  "0 1 0 0 0 0 0",   "1+4@1"            },
        {"forced behind a window",    2, 0, 2, 3,  "0 1 0 0 0 0 0",   "1+2@1 3+2@3"      },
    };
    for (const Row& row : rows)
        QTest::newRow(row.what) << row.amount << row.position << row.count << row.forceAt
                                << row.port << row.windows;
}

void TestTriggerModel::windows()
{
    QFETCH(int, amount);
    QFETCH(int, position);
    QFETCH(int, count);
    QFETCH(int, forceAt);
    QFETCH(QString, port);
    const auto core = coreWithPort(1);
    enableUnit(*core, 0, "1");
    core->expressions += "M0";
    core->captureAmount = amount;
    core->triggerPos = position;
    core->windowNum = count;
    QTEST(windowsText(run(*core, port, forceAt)), "windows");
}

void TestTriggerModel::edgesGoOnBehindAWindow()
{
    const auto core = coreWithPort(1);
    enableUnit(*core, 0, "R").counterEnable = true; // the second edge
    core->expressions += "M0";
    core->captureAmount = 2;
    core->windowNum = 2;
    // The edge inside the window is not counted, the one from its last sample on is.
    QCOMPARE(windowsText(run(*core, "0 1 0 1 0 1 0 1 0")), QString("3+2@3 7+2@7"));
    QCOMPARE(windowsText(run(*core, "0 1 0 1 1 0 1 0 1 0")), QString("3+2@3 8+2@8"));
}

void TestTriggerModel::unknownBitsCountAsZero()
{
    const auto core = coreWithPort(2);
    enableUnit(*core, 0, "X0");
    enableUnit(*core, 1, "1X");
    enableUnit(*core, 2, "00").matchFunc = OXA::MatchLess;
    const ModelRun result = run(*core, "11 1x x1");
    QCOMPARE(trace(result, &SampleEvents::matches, 0), QString("010"));
    QCOMPARE(result.progress.firstUnknown, (std::vector<qint64> {1, 2, 1}));
    QCOMPARE(result.progress.matches, (std::vector<qint64> {1, 2, 0}));
}

void TestTriggerModel::expressions_data()
{
    struct Row {
        const char *what, *text, *result;
    };
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");
    const Row rows[] = {
  // Row k of the table has M0 at bit 0.
        {"and before or",                              "M0|M1&M2",           "01010111"                         },
        {"xor between and and or",                     "M0^M1&M2|M0",        "01010111"                         },
        {"or before logical and",                      "M0&&M1|M2",          "00010101"                         },
        {"logical and before logical or",              "M0||M1&&M2",         "01010111"                         },
        {"to the left",                                "M0^M1^M2",           "01101001"                         },
        {"negations",                                  "!M0 & ~(M1 | ~!M2)", "10000000"                         },
        {"reductions",                                 "M0 & &M1 ^ |M2",     "00011110"                         },
        {"blanks and numbers",                         " M00\t&\n( M12 ) ",  "0001"                             },
        {"constants",                                  "M3 ^ 1'b1 & 1'B0",   "01"                               },
        {"nothing",                                    " ",                  "it is empty"                      },
        {"cut off",                                    "M0&",                "it ends too early"                },
        {"open parenthesis",                           "(M0|M1",             "a parenthesis is not closed"      },
        {"closed twice",                               "M0)",                "unexpected \")\""                 },
        {"two units",                                  "M0 M1",              "unexpected \"M\""                 },
        {"no such unit",                               "M16",                "there is no unit \"M16\""         },
        {"no number",                                  "M",                  "there is no unit \"M\""           },
        {"too large a number",                         "M99999999999",       "there is no unit \"M99999999999\""},
        {"arithmetic",                                 "M0+M1",              "unexpected \"+\""                 },
        {"a bare constant, whose width Verilog minds", "~1",                 "unexpected \"1\""                 },
    };
    for (const Row& row : rows)
        QTest::newRow(row.what) << row.text << row.result;
    QTest::newRow("absurdly deep") << QString(100000, '(') << "nested too deeply";
}

void TestTriggerModel::expressions()
{
    QFETCH(QString, text);
    const OXA::AoCore core(0);
    TriggerTable table;
    QString result;
    if (triggerTable(core, text, table, result)) {
        for (const bool row : table.rows)
            result += row ? '1' : '0';
    }
    QTEST(result, "result");
}

void TestTriggerModel::dynamicTablesAreTheCompilers()
{
    OXA::AoCore core(0);
    core.expressionType = OXA::DynamicExpressions;
    for (const int unit : {0, 3, 10})
        core.matchUnit(unit)->enabled = true;
    TriggerTable table;
    QString error;
    QVERIFY(triggerTable(core, "M3 & !M10", table, error));
    QCOMPARE(table.units, (std::vector<int> {0, 3, 10}));
    QCOMPARE(table.rows, (std::vector<bool> {0, 0, 1, 1, 0, 0, 0, 0}));
    QVERIFY(!table.at(1 << 10 | 1 << 3) && table.at(1 << 3 | 1 << 7));

    // "M10" hides M1: a table of one operand for two units, nothing above it.
    OXA::AoCore hidden(0);
    hidden.expressionType = OXA::DynamicExpressions;
    hidden.matchUnit(1)->enabled = hidden.matchUnit(10)->enabled = true;
    QVERIFY(triggerTable(hidden, "M10", table, error));
    QCOMPARE(table.rows, (std::vector<bool> {0, 1}));
    QVERIFY(table.at(1 << 1) && !table.at(1 << 10));

    for (const char* text : {"M0&&M3", "M0|", "~M0", "M00", "M0 & &M3", "!!M0", "", "1'b1"}) {
        QVERIFY2(!triggerTable(core, text, table, error), text);
        QVERIFY(!error.isEmpty());
    }
}

void TestTriggerModel::refusesWhatNoHardwareDoes()
{
    const struct {
        void (*change)(OXA::AoCore& core, OXA::MatchUnit& unit);
        const char* message;
    } rows[] = {
        {[](auto&,      auto& unit) { unit.trigger = nullptr; },
         "core 5, M0: it has no trigger port with signals"                                                            },
        {[](auto& core, auto& unit) { unit.trigger = core.triggers[1]; },
         "core 5, M0: it has no trigger port with signals"                                                            },
        {[](auto&,      auto& unit) { unit.matchType = OXA::MatchType(6); },
         "core 5, M0: there is no match type 6"                                                                       },
        {[](auto&,      auto& unit) { unit.matchType = OXA::MatchBasic; },
         "core 5, M0: its type, \"Basic\", has no function 3"                                                         },
        {[](auto&,      auto& unit) { unit.counter = 5; },
         "core 5, M0: a counter of 2 bits cannot count to 5"                                                          },
        {[](auto&,      auto& unit) { unit.counter = 0; },
         "core 5, M0: a counter of 2 bits cannot count to 0"                                                          },
        {[](auto&,      auto& unit) { unit.counterWidth = 0; },
         "core 5, M0: a counter cannot have 0 bits"                                                                   },
        {[](auto& core, auto&) { core.expressions += "M0+M1"; },
         "core 5, expression 1: unexpected \"+\""                                                                     },
        {[](auto& core, auto&) { core.captureSignals.clear(); },             "core 5: it captures no signal"          },
        {[](auto& core, auto&) { core.trigType = 2; },                       "core 5: there is no sampling edge 2"    },
        {[](auto& core, auto&) { core.triggerPos = 8; },
         "core 5: a window of 8 samples has no trigger position 8"                                                    },
        {[](auto& core, auto&) { core.windowNum = 3; },
         "core 5: its memory of 16 samples does not hold 3 windows of 8"                                              },
        {[](auto& core, auto&) { core.windowNum = 0; },                      "core 5: it takes 0 windows of 8 samples"},
    };
    for (const auto& row : rows) {
        const auto core = coreWithPort(1);
        OXA::MatchUnit& unit = enableUnit(*core, 0, "1");
        unit.matchFunc = OXA::MatchLess;
        unit.counterEnable = true;
        unit.counter = 4;
        core->expressions += "M0";
        core->captureAmount = 8;
        core->storageDepth = 16;
        TriggerSetup setup;
        Messages messages;
        QVERIFY(triggerSetup(*core, "core 5", setup, messages));
        row.change(*core, unit);
        QVERIFY(!triggerSetup(*core, "core 5", setup, messages));
        QCOMPARE(messages.first().message(), QString(row.message));
    }
}

QTEST_APPLESS_MAIN(TestTriggerModel)
#include "test_trigger_model.moc"
