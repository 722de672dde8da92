#include "core_bench.h"
#include "core_samples.h"
#include "random_core.h"

#include "oxacapture/files/capture_result.h"
#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/remote_bitbang_link.h"
#include "oxacapture/target/window_decoder.h"
#include "support/files.h"
#include "support/patience.h"
#include "support/signals.h"

#include "oxautils/config/standard_config.h"

#include <QLocalSocket>
#include <QSet>
#include <QtTest>

using namespace OXA_CAPTURE;

namespace {

constexpr int kRounds = 12;
constexpr int kRoundsOfGates = 4; // which are the same cores, slower
constexpr int kSamples = 250; // a round
constexpr int kEarly = 20; // of them, before the first snapshot of a round is asked for
constexpr int kAnswer = 3; // edges to a snapshot
constexpr int kLeadOut = 8; // edges that bring the last samples into memory
constexpr char kPart[] = "QX1N-9LV-QFN88-C6"; // has shadow SRAM

// Looks at running cores: the first one shows the run's beginning, not the run before. Then there
// is an answer to its question, which a clock that stands still makes no younger.
struct Look {
    int samples; // further ones
    int decided; // of the run, in the snapshot of a core that goes on
    const char* kind; // of that
};

constexpr char kFinal[] = "final"; // of a core that has finished

constexpr Look kLooks[] = {
    {kEarly,                      0,                "fresh"},
    {kAnswer,                     kEarly,           "fresh"},
    {0,                           kEarly,           "old"  },
    {kSamples - kEarly - kAnswer, kEarly + kAnswer, "fresh"},
};

struct Kind {
    int memory; // as in AoCore::implementation
    int expressions; // static 0, dynamic 1
    int tables; // as in AoCore::exImplementation
    int windows;
    bool falling;
    bool forcedFalling;
};

constexpr Kind kKinds[] = {
    {0, 0, 0, 4, false, false},
    {1, 1, 0, 1, true,  false},
    {2, 1, 1, 2, false, true },
    {0, 1, 2, 1, false, false},
};

// A core with a unit of every match type, half of them with counters.
std::unique_ptr<OXA::AoCore> coreOf(const Kind& kind, int position, Random& random)
{
    auto core = std::make_unique<OXA::AoCore>(position);
    core->sampleClock = QString("clk%1").arg(position);
    core->trigType = kind.falling;
    core->forceTriggerByFallingEdge = kind.forcedFalling;
    core->implementation = kind.memory;
    core->expressionType = kind.expressions;
    core->exImplementation = kind.tables;
    core->storageDepth = 32;
    core->windowNum = kind.windows;
    for (int bit = 0; bit < 6; ++bit)
        core->signalList += signalOf(QString("d%1[%2]").arg(position).arg(bit));
    core->captureSignals = core->signalList;
    OXA::TriggerPort& port = *core->triggers[3 * position];
    for (int bit = 0; bit < 3; ++bit)
        port.signalList += signalOf(QString("t%1[%2]").arg(position).arg(bit));
    for (int type = 0; type < 6; ++type) {
        OXA::MatchUnit& unit = *core->matchUnits[2 * (type + position % 2)];
        unit.enabled = true;
        unit.trigger = &port;
        unit.matchType = OXA::MatchType(type);
        unit.counterEnable = (type + position) % 2;
        unit.counterWidth = 3;
    }
    const QList<OXA::MatchUnit*> units = core->enabledMatchUnits();
    for (int level = 0; level < 3; ++level)
        core->expressions += QString("M%1|M%2")
                                 .arg(units.at(2 * level)->index)
                                 .arg(units.at(2 * level + 1)->index);
    changeSettings(random, *core);
    return core;
}

QString textOf(const std::vector<int>& matches, const std::vector<CapturedWindow>& windows)
{
    QString text;
    for (const CapturedWindow& window : windows) {
        text += QString("trigger %1:").arg(window.triggerOffset());
        for (qint64 sample = 0; sample < window.samples.size(); ++sample)
            text += ' ' + QString::number(*window.samples.value(sample, 0), 16);
        text += '\n';
    }
    for (const int count : matches)
        text += QString("%1 matches\n").arg(count);
    return text;
}

std::vector<int> matchesOf(const ModelRun& run)
{
    std::vector<int> matches;
    for (const qint64 count : run.progress.matches)
        matches.push_back(int(std::min(count, kCountedMatches)));
    return matches;
}

QString snapshotText(const QString& kind, const std::vector<int>& matches)
{
    QString text = kind;
    for (const int count : matches)
        text += ' ' + QString::number(count);
    return text + '\n';
}

QString modelled(const TriggerSetup& setup, const SampleTable& samples)
{
    const ModelRun run = runModel(setup, samples);
    return textOf(matchesOf(run), cutWindows(run.windows, samples));
}

// A core at rest, or why it cannot be read.
QString captured(AnalyzerClient& client, const CoreIdentity& core, const TriggerSetup& setup)
{
    CoreStatus status;
    BitString memory;
    BitString shortOnes;
    std::vector<DecodedWindow> decoded;
    QString error;
    if (!client.readStatus(core, status)
        || !(samplesSuffice(core, status, setup)
                ? client.readSamples(core, usedWords(core, status, setup), memory)
                : client.readMemory(core, usedWords(core, status, setup), memory))
        || !client.readWindows(core, setup.windowNum, shortOnes))
        return client.error();
    if (!decodeWindows(core, status, setup, shortOnes, memory, decoded, error))
        return error;
    std::vector<CapturedWindow> windows;
    for (const DecodedWindow& window : decoded)
        windows.push_back({
            {0, window.samples.size(), window.triggerOffset},
            window.samples
        });
    return textOf(status.snapshot.matches, windows);
}

// The cores of all kinds with what they are to sample.
struct Design {
    Random random {3};
    std::vector<std::unique_ptr<OXA::AoCore>> cores;
    CoreBench bench;
    QByteArrayList samples; // of all rounds

    Design()
    {
        QList<OXA::AoCore*> list;
        for (const Kind& kind : kKinds) {
            cores.push_back(coreOf(kind, int(cores.size()), random));
            OXA::AoCore& core = *cores.back();
            list += &core;
            bench.signalNames += core.dataSignals();
            for (const OXA::TriggerPort* port : core.availableTriggers())
                bench.signalNames += port->singleSignals();
            (kind.falling || kind.forcedFalling ? bench.fallingClocks : bench.risingClocks)
                += core.sampleClock;
        }
        bench.arg.device = kPart;
        OXA::writeOXAConfigToXml(list, bench.arg.configFile);
        writeStimulus();
    }

    // What core `i` tells of a run over `samples`.
    QString snapshot(size_t i, const TriggerSetup& setup, const QByteArrayList& samples,
        const Look& look, bool finished) const
    {
        // The last one is not decided yet when the question comes, with tables the last two are
        // not.
        const int decided = std::max(0, look.decided - 1 - cores[i]->expressionType);
        const SampleTable table
            = tableOf(*cores[i], bench.signalNames, finished ? samples : samples.mid(0, decided));
        return snapshotText(finished ? kFinal : look.kind, matchesOf(runModel(setup, table)));
    }

    void writeStimulus()
    {
        QByteArray text;
        QByteArray sample(bench.signalNames.size(), '0');
        for (int i = 0; i < kRounds * (kSamples + kLeadOut); ++i) {
            sample = randomSample(random, sample);
            samples += sample;
            text += QByteArray::number(sample.toULongLong(nullptr, 2), 16) + " 1\n- 0\n";
        }
        writeFile(bench.path("stimulus"), text);
    }
};

// A design in the simulator, and its client.
struct Running {
    QProcess vvp;
    QLocalSocket control;
    RemoteBitbangLink link;
    AnalyzerClient client {link, BitString(8, 5)};
    std::vector<CoreIdentity> cores;

    bool start(const CoreBench& bench)
    {
        link.setPatience(isWorthWaiting);
        vvp.start("vvp",
            {"-n", "-M", OXA_BINARY_DIR "/lib/oxautils", "-m", "oxa_target",
                bench.path("target.vvp"), "+oxa_jtag=unix:" + bench.path("jtag"),
                "+oxa_control=unix:" + bench.path("control"),
                "+oxa_stimulus=" + bench.path("stimulus"), "+oxa_settle=1"});
        while (!link.connectTo("unix:" + bench.path("jtag"))) {
            if (vvp.waitForFinished(10))
                return false;
        }
        control.connectToServer(bench.path("control"));
        return control.waitForConnected(kPatience) && client.begin() && client.discover(cores);
    }

    bool play(int samples)
    {
        control.write("run " + QByteArray::number(2 * samples) + '\n');
        while (!control.canReadLine() && control.waitForReadyRead(kPatience)) { }
        return control.readLine() == "ran " + QByteArray::number(2 * samples) + '\n';
    }

    bool command(CoreCommand command)
    {
        return std::all_of(cores.begin(), cores.end(),
            [&](const CoreIdentity& core) { return client.command(core.position, command); });
    }

    // What the cores tell after so many more samples; nothing of one that is about to finish.
    bool snapshots(int samples, std::vector<QString>& texts)
    {
        texts.clear();
        for (const CoreIdentity& core : cores) {
            CoreStatus status;
            if (!play(core.position == 0 ? samples : 0) || !client.readStatus(core, status))
                return false;
            const CoreSnapshot& now = status.snapshot;
            texts.push_back(status.finished ? snapshotText(kFinal, now.matches)
                    : status.complete       ? QString()
                                      : snapshotText(now.fresh ? "fresh" : "old", now.matches));
        }
        return true;
    }

    bool write(const CoreIdentity& core, const TriggerSetup& setup)
    {
        return client.writeSettings(core, setup)
            && (!core.dynamic || client.writeTables(core, setup));
    }
};

}

// What a client writes into cores is what they then do, be they Verilog or gates.
class TestWrittenCores : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void captureAsTheModel_data();
    void captureAsTheModel();
};

void TestWrittenCores::captureAsTheModel_data()
{
    QTest::addColumn<bool>("gates");
    QTest::newRow("Verilog") << false;
    QTest::newRow("gates") << true;
}

void TestWrittenCores::captureAsTheModel()
{
    QFETCH(bool, gates);
    Design design;
    QString netlist;
    if (gates) {
        netlist = design.bench.path("netlist.v");
        QProcess synthesis;
        synthesis.start(OXA_PROGRAM,
            {"generate", design.bench.arg.configFile, "--part", kPart, "--work-dir",
                design.bench.arg.workDir, "-o", netlist});
        QVERIFY(finished(synthesis));
        QVERIFY2(synthesis.exitCode() == 0, synthesis.readAllStandardError().right(500));
    }
    QCOMPARE(design.bench.buildTarget(netlist), QString());
    Running target;
    QVERIFY2(target.start(design.bench), qPrintable(target.client.error()));
    QCOMPARE(target.cores.size(), design.cores.size());

    int looks = 0;
    QSet<int> seen; // match types and functions that held in one sample at least
    const int rounds = gates ? kRoundsOfGates : kRounds;
    for (int round = 0; round < rounds; ++round) {
        std::vector<TriggerSetup> setups(design.cores.size());
        for (size_t i = 0; i < design.cores.size(); ++i) {
            changeSettings(design.random, *design.cores[i]);
            Messages messages;
            QVERIFY(triggerSetup(*design.cores[i], {}, setups[i], messages));
            QVERIFY2(target.write(target.cores[i], setups[i]), qPrintable(target.client.error()));
        }
        const QByteArrayList samples = design.samples.mid(round * (kSamples + kLeadOut), kSamples);
        QVERIFY(target.command(CoreCommand::Arm));
        for (const Look& look : kLooks) {
            std::vector<QString> texts;
            QVERIFY(target.snapshots(look.samples, texts));
            for (size_t i = 0; i < texts.size(); ++i) {
                if (texts[i].isEmpty())
                    continue;
                const QString where = QString("core %1 round %2 ").arg(i).arg(round);
                const bool finished = texts[i].startsWith(kFinal);
                QCOMPARE(where + texts[i],
                    where + design.snapshot(i, setups[i], samples, look, finished));
                ++looks;
            }
        }
        QVERIFY(target.command(CoreCommand::Stop) && target.play(kLeadOut));
        for (size_t i = 0; i < design.cores.size(); ++i) {
            const OXA::AoCore& core = *design.cores[i];
            const SampleTable table = tableOf(core, design.bench.signalNames, samples);
            const QString where = QString("core %1 round %2\n").arg(i).arg(round);
            QCOMPARE(where + captured(target.client, target.cores[i], setups[i]),
                where + modelled(setups[i], table));
            const std::vector<qint64> matches = runModel(setups[i], table).progress.matches;
            for (size_t unit = 0; unit < matches.size(); ++unit) {
                const OXA::MatchUnit& made = *core.enabledMatchUnits().at(int(unit));
                if (matches[unit] > 0)
                    seen += int(made.matchType) * 8 + int(made.matchFunc);
            }
        }
    }
    QVERIFY2(looks > rounds * int(std::size(kLooks)), qPrintable(QString::number(looks)));
    QVERIFY(gates || seen.size() == 2 + 2 + 6 + 6 + 8 + 8);
    target.control.abort();
    QVERIFY(finished(target.vvp));
}

QTEST_APPLESS_MAIN(TestWrittenCores)
#include "test_written_cores.moc"
