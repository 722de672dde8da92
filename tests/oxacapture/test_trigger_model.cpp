// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/trigger/trigger_model.h"

#include "oxacapture/files/every_sample.h"
#include "oxacapture/sample_text.h"
#include "oxacapture/trigger/joint_model.h"
#include "support/signals.h"

#include "oxautils/model/limits.h"

#include <QtTest>

using namespace OXA_CAPTURE;

namespace {

// A core with one data signal and port 0 of the given width.
std::unique_ptr<OXA::AoCore> coreWithPort(int width)
{
    auto core = std::make_unique<OXA::AoCore>(0);
    core->captureSignals += signalOf("d");
    core->triggers[0]->signalList = signalsOf("p", width);
    return core;
}

OXA::MatchUnit& enableUnit(OXA::AoCore& core, int index, const QString& value)
{
    OXA::MatchUnit& unit = ::enableUnit(core, index, 0, value);
    unit.matchType = OXA::MatchRangeEdges;
    return unit;
}

}

class TestTriggerModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void unknownBitsCountAsZero();
    void expressions();
    void dynamicTablesAreTheCompilers();
    void storesWhatIsAskedFor();
    void coresForceEachOther();
    void refusesWhatNoHardwareDoes();
};

void TestTriggerModel::unknownBitsCountAsZero()
{
    const auto core = coreWithPort(2);
    enableUnit(*core, 0, "X0");
    enableUnit(*core, 1, "1X");
    enableUnit(*core, 2, "00").matchFunc = OXA::MatchLess;
    TriggerSetup setup;
    Messages messages;
    QVERIFY(triggerSetup(*core, {}, setup, messages));
    const ModelRun result = runModel(setup, samplesOf({"0 0 0", "11 1x x1"}), kNoSample, true);
    QString matches;
    for (const SampleEvents& events : result.events)
        matches += events.matches & 1 ? '1' : '0';
    QCOMPARE(matches, QString("010"));
    QCOMPARE(result.progress.firstUnknown, (std::vector<qint64> {1, 2, 1}));
    QCOMPARE(result.progress.matches, (std::vector<qint64> {1, 2, 0}));
}

// Row k of the table has M0 at bit 0.
void TestTriggerModel::expressions()
{
    const struct {
        const char *text, *result;
    } rows[] = {
        {"M0|M1&M2",           "01010111"                          },
        {"M0^M1&M2|M0",        "01010111"                          },
        {"M0&&M1|M2",          "00010101"                          },
        {"M0||M1&&M2",         "01010111"                          },
        {"M0^M1^M2",           "01101001"                          },
        {"!M0 & ~(M1 | ~!M2)", "10000000"                          },
        {"M0 & &M1 ^ |M2",     "00011110"                          },
        {" M00\t&\n( M12 ) ",  "0001"                              },
        {"M3 ^ 1'b1 & 1'B0",   "01"                                },
        {" ",                  "it is empty"                       },
        {"M0&",                "it ends too early"                 },
        {"(M0|M1",             "a parenthesis is not closed"       },
        {"M0)",                "unexpected \")\""                  },
        {"M0 M1",              "there is no operator before \"M1\""},
        {"M16",                "there is no unit \"M16\""          },
        {"M",                  "there is no unit \"M\""            },
        {"M99999999999",       "there is no unit \"M99999999999\"" },
        {"M0+M1",              "unexpected \"+\""                  },
        {"~1",                 "unexpected \"1\""                  },
    };
    const OXA::AoCore core(0);
    for (const auto& row : rows) {
        TriggerTable table;
        QString result;
        if (triggerTable(core, row.text, table, &result)) {
            for (const bool bit : table.rows)
                result += bit ? '1' : '0';
        }
        QVERIFY2(result == row.result, qPrintable(row.text + (": " + result)));
    }
    TriggerTable unused;
    QString error;
    QVERIFY(!triggerTable(core, QString(100000, '('), unused, &error));
    QCOMPARE(error, QString("it is nested deeper than 200 levels"));
}

void TestTriggerModel::dynamicTablesAreTheCompilers()
{
    OXA::AoCore core(0);
    core.expressionType = OXA::DynamicExpressions;
    for (const int unit : {0, 3, 10})
        core.matchUnit(unit)->enabled = true;
    TriggerTable table;
    QString error;
    QVERIFY(triggerTable(core, "M3 & !M10", table, &error));
    QCOMPARE(table.units, (std::vector<int> {0, 3, 10}));
    QCOMPARE(table.rows, (std::vector<bool> {0, 0, 1, 1, 0, 0, 0, 0}));
    QVERIFY(!table.at(1 << 10 | 1 << 3) && table.at(1 << 3 | 1 << 7));

    // "M10" hides M1: a table of one operand for two units, nothing above it.
    OXA::AoCore hidden(0);
    hidden.expressionType = OXA::DynamicExpressions;
    hidden.matchUnit(1)->enabled = hidden.matchUnit(10)->enabled = true;
    QVERIFY(triggerTable(hidden, "M10", table, &error));
    QCOMPARE(table.rows, (std::vector<bool> {0, 1}));
    QVERIFY(table.at(1 << 1) && !table.at(1 << 10));

    for (const char* text : {"M0&&M3", "M0|", "~M0", "M00", "M0 & &M3", "!!M0", "", "1'b1"}) {
        QVERIFY2(!triggerTable(core, text, table, &error), text);
        QVERIFY(!error.isEmpty());
    }
}

// Windows of 4 stored samples, 1 of them before the trigger. In a result "*" marks the trigger, "|"
// begins a window.
void TestTriggerModel::storesWhatIsAskedFor()
{
    using OXA::CoreStorage;
    const struct {
        CoreStorage storage;
        const char *data, *trigger, *result;
    } rows[] = {
        {{CoreStorage::Changes, 4, {}, {}, 0}, "0 0 1 1 0 0 0 0 1 0 0 0 0",
         "0 0 0 0 0 0 1 0 0 0 0 0 0",                                                                    "4 *6 8 9"          },
        {{CoreStorage::Changes, 1, {}, {}, 0}, "0 0 0 0 0 0 0 0 0 0 0 0 0",
         "0 0 0 0 0 1 0 0 0 0 0 0 0",                                                                    "4 *5 7 9"          },
        {{CoreStorage::Changes, 4, {}, {}, 0}, "0 0 0 0 0 0 0 0 0 0 0 0 0",
         "0 0 0 0 0 1 0 0 0 0 0 0 0",                                                                    "0 *5 12"           }, // stopped
        {{CoreStorage::Changes, 4, {}, {}, 3}, "0 0 0 0 0 0 0 0 0 0 0 0 0",
         "0 0 0 0 0 1 0 0 0 0 1 0 0",                                                                    "0 *5 8|9 *10 12"   },
        {{CoreStorage::Changes, 4, {}, {}, 0}, "0 1 0 1 0 1 0 1 0 1 0 1 0",
         "0 0 1 0 0 0 0 0 1 0 0 0 0",                                                                    "1 *2 3 4|7 *8 9 10"},
        {{CoreStorage::When, 4, {}, "M0", 0},  "0 1 0 1 0 1 0 1 0 1 0 1 0",
         "0 0 1 1 0 0 0 1 1 0 0 0 1",                                                                    "0 *2 3 7|*8 12"    },
        {{CoreStorage::When, 0, {}, "M0", 0},  "0 0 0 0 0 0 0 0 0 0 0 0 0",
         "1 0 0 0 0 0 0 0 0 0 0 0 1",                                                                    "*0 12"             },
        {{CoreStorage::All, 4, {}, {}, 0},     "0 0 0 0 0 0 0 0 0 0 0 0 0", "0 0 0 1 0 0 0 0 0 1 0 0 0",
         "2 *3 4 5|8 *9 10 11"                                                                                               },
    };
    for (const auto& row : rows) {
        const auto core = coreOf(0, {signalOf("d")}, signalOf("t"), "1", 4, 1);
        core->windowNum = 2;
        core->storage = row.storage;
        CorePlan plan;
        plan.core = core.get();
        Messages messages;
        QVERIFY(triggerSetup(*core, {}, plan.setup, messages));
        const SampleTable samples = samplesOf({row.data, row.trigger});
        CapturedCore captured = capturedCore(plan, samples, runModel(plan.setup, samples));
        QStringList windows;
        for (const CapturedWindow& window : captured.windows) {
            QStringList numbers;
            for (qint64 i = 0; i < window.samples.size(); ++i)
                numbers += (i == window.triggerOffset() ? "*" : "")
                    + QString::number(window.place.firstSample + window.place.offset(i));
            windows += numbers.join(' ');
        }
        QCOMPARE(windows.join('|'), QString(row.result));
        const bool holds = captured.holds();
        QVERIFY(addPassedOver(captured, 100));
        for (const CapturedWindow& window : captured.windows) {
            for (qint64 i = 0; holds && i < window.samples.size(); ++i)
                QCOMPARE(
                    *window.samples.value(i, 0), *samples.value(window.place.firstSample + i, 0));
        }
    }
}

// A core in words: its clock, a character a time; its trigger's signal, a character for each active
// edge; the places of cores that force it; "dynamic", "falling", "stamps" or "single", windows of
// one sample; and its windows, the first and the trigger sample with "F" between them when a pulse
// was seen, and behind "=" the stamp.
void TestTriggerModel::coresForceEachOther()
{
    const QString fast = "010101010101010101010101 ";
    const QString slow = "0000111100001111000011110000 ";
    const QString never = "0000000000000000 ";
    const struct {
        const char* what;
        QString first, second;
        qint64 forceAt;
    } rows[] = {
        {"three edges after the sample, and then the next one", fast + "001000000000 - - 1*2",
         fast + never + "0 stamps 5F6=6",                                                                                                   kNoSample},
        {"four with tables",                                    fast + "001000000000 - dynamic 1*2",     fast + never + "0 - 6F7",
         kNoSample                                                                                                                                   },
        {"the first edge strictly later",                       fast + "010000000000 - - 0*1",           slow + never + "0 - 0F1",
         kNoSample                                                                                                                                   },
        {"an edge at the same time is not",                     fast + "001000000000 - - 1*2",
         "00010000000101 " + never + "0 - 1F2",                                                                                             kNoSample},
        {"at falling edges",                                    fast + "001000000000 - - 1*2",           fast + never + "0 falling 4F5",
         kNoSample                                                                                                                                   },
        {"a forced trigger is not passed on",                   fast + "0010000000000000 1 - 1*2",
         fast + never + "0 - 5F6",                                                                                                          kNoSample},
        {"one that is an own one at the same time is",          fast + "001000000010 1 - 1*2|9F10",
         fast + "000000100000 0 - 5F6",                                                                                                     kNoSample},
        {"two between two edges cancel each other",             fast + "000110000000 - single 3*3|4*4",
         slow + never + "0 - ",                                                                                                             kNoSample},
        {"a stopped clock tells nothing",                       "0101010000000000 001000000000 - - 1*2",
         fast + never + "0 - ",                                                                                                             kNoSample},
        {"an open window is not forced",                        fast + "001000000000 - - 1*2",
         fast + "000001000000 0 - 4*5",                                                                                                     kNoSample},
        {"a client's force is told",                            fast + never + "- - 1*2",                fast + never + "0 single 2*2|6F6",
         2                                                                                                                                           },
    };
    enum Word { Clock, Trigger, ForcedBy, Kind, Result };
    for (const auto& row : rows) {
        std::vector<std::unique_ptr<OXA::AoCore>> owned;
        QList<OXA::AoCore*> list;
        SampledWaveform waveform;
        std::vector<QString> clocks;
        for (const QString& text : {row.first, row.second}) {
            const QStringList words = text.split(' ');
            const QString& kind = words.at(Kind);
            const int amount = kind == "single" ? 1 : 3;
            owned.push_back(
                coreOf(list.size(), {signalOf("d")}, signalOf("t"), "1", amount, amount / 2));
            OXA::AoCore& core = *owned.back();
            core.sampleClock = QString("clk%1").arg(list.size());
            core.windowNum = 2;
            core.expressionType = kind == "dynamic";
            core.trigType = kind == "falling";
            core.events.stamps = kind == "stamps";
            if (words.at(ForcedBy) != "-")
                core.events.forcedBy += words.at(ForcedBy).toInt();
            const QString samples = words.at(Trigger).split("", Qt::SkipEmptyParts).join(' ');
            waveform.cores.push_back(samplesOf({samples, samples}));
            waveform.clocks += core.sampleClock;
            clocks.push_back(words.at(Clock));
            list += &core;
        }
        for (int time = 1; time < fast.size() + slow.size(); ++time) {
            bool isFirst = true;
            for (size_t core = 0; core < clocks.size(); ++core) {
                const QString& clock = clocks[core];
                if (time >= clock.size() || clock.at(time) == clock.at(time - 1))
                    continue;
                waveform.edges.push_back({quint16(core), clock.at(time) == '1', !isFirst});
                isFirst = false;
            }
        }
        Messages messages;
        const std::vector<CorePlan> plans = corePlans(list, {}, {}, messages);
        QVERIFY(messages.isEmpty());
        const std::vector<ModelRun> runs = runModels(plans, waveform, {row.forceAt});
        for (size_t core = 0; core < runs.size(); ++core) {
            QStringList windows;
            for (const Window& window : runs[core].windows)
                windows += QString::number(window.firstSample) + (window.forced ? 'F' : '*')
                    + QString::number(window.triggerSample)
                    + (window.stamp ? '=' + QString::number(*window.stamp) : QString());
            const QString& expected = core == 0 ? row.first : row.second;
            QVERIFY2(windows.join('|') == expected.section(' ', Result),
                qPrintable(row.what + (": " + windows.join('|'))));
        }
    }
}

void TestTriggerModel::refusesWhatNoHardwareDoes()
{
    const struct {
        void (*change)(OXA::AoCore& core, OXA::MatchUnit& unit);
        const char* message;
    } rows[] = {
        {[](auto&,      auto& unit) { unit.trigger = nullptr; },             "M0: it has no trigger port"               },
        {[](auto& core, auto& unit) { unit.trigger = core.triggers[1]; },
         "M0: it has no trigger port"                                                                                   },
        {[](auto&,      auto& unit) { unit.matchType = OXA::MatchType(6); },
         "M0: there is no match type 6"                                                                                 },
        {[](auto&,      auto& unit) { unit.matchType = OXA::MatchBasic; },   "has no function 3"                        },
        {[](auto&,      auto& unit) { unit.counter = 5; },                   "M0: a counter of 2 bits cannot count to 5"},
        {[](auto&,      auto& unit) { unit.counter = 0; },                   "M0: a counter of 2 bits cannot count to 0"},
        {[](auto&,      auto& unit) { unit.counterWidth = 0; },              "M0: a counter cannot have 0 bits"         },
        {[](auto& core, auto&) { core.expressions += "M0+M1"; },             "expression 1: unexpected \"+\""           },
        {[](auto& core, auto&) { core.captureSignals.clear(); },             "it captures no signal"                    },
        {[](auto& core, auto&) { core.trigType = 2; },                       "its sampling edge is 2, neither"          },
        {[](auto& core, auto&) { core.triggerPos = 8; },                     "8 samples has no trigger position 8"      },
        {[](auto& core, auto&) { core.windowNum = 3; },                      "3 windows of 8 samples do not fit"        },
        {[](auto& core, auto&) { core.windowNum = 0; },                      "it takes 0 windows of 8 samples"          },
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
        const QString said = messages.first().message();
        QVERIFY2(said.startsWith("core 5") && said.contains(row.message), qPrintable(said));
    }
}

QTEST_APPLESS_MAIN(TestTriggerModel)
#include "test_trigger_model.moc"
