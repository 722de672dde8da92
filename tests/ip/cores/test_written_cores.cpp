#include "core_target.h"

#include "oxacapture/target/window_decoder.h"

#include <QtTest>

using namespace OXA_CAPTURE;

namespace {

constexpr int kRounds = 12;
constexpr int kCores = 4;
constexpr int kSamples = 250; // a round
constexpr int kEarly = 20; // of them, before the first snapshot of a round is asked for
constexpr int kAnswer = 3; // edges to a snapshot
constexpr int kToRest = 8; // edges that bring the last samples into memory
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

SampleTable part(const SampleTable& samples, int first, int count)
{
    SampleTable part(samples.layout());
    for (int sample = first; sample < first + count; ++sample)
        part.append(samples.row(sample));
    return part;
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
    if (!decodeWindows(core, status, setup, shortOnes, memory, decoded, &error))
        return error;
    std::vector<CapturedWindow> windows;
    for (const DecodedWindow& window : decoded)
        windows.push_back({
            {0, window.samples.size(), window.triggerOffset},
            window.samples
        });
    return textOf(status.snapshot.matches, windows);
}

// Cores in the simulator, with their settings of one round.
struct Design {
    Random random {1};
    std::vector<std::unique_ptr<OXA::AoCore>> cores;
    std::vector<TriggerSetup> setups {kCores};
    int round = -1;
    CoreTarget target;

    Design()
    {
        QList<OXA::AoCore*> list;
        for (int i = 0; i < kCores; ++i) {
            cores.push_back(randomCore(random, i));
            OXA::AoCore& core = *cores.back();
            core.sampleClock = "clk";
            core.captureInitDataEnabled = true;
            core.implementation = core.exImplementation = i % 3; // each memory
            core.expressionType = i % 2;
            list += &core;
        }
        target.configure(list, random, kRounds * (kSamples + kToRest));
    }

    // Writes other settings into all cores, and arms them. They are armed at power-up, too.
    bool beginRound()
    {
        if (++round == 0) {
            for (size_t i = 0; i < cores.size(); ++i) {
                setups[i] = target.plans[i].setup;
                setups[i].triggerPos = target.plans[i].powerUpPosition;
            }
            return true;
        }
        bool ok = true;
        for (size_t i = 0; i < cores.size(); ++i) {
            const CoreIdentity& core = target.identities[i];
            changeSettings(random, *cores[i]);
            Messages messages;
            ok = ok && triggerSetup(*cores[i], {}, setups[i], messages)
                && target.client().writeSettings(core, setups[i])
                && (!core.dynamic || target.client().writeTables(core, setups[i]));
        }
        return ok && command(CoreCommand::Arm);
    }

    bool command(CoreCommand command)
    {
        return std::all_of(
            target.identities.begin(), target.identities.end(), [&](const CoreIdentity& core) {
                return target.client().command(core.position, command);
            });
    }

    // The first `count` samples of core `i` in this round, and what the model makes of them.
    SampleTable samples(size_t i, int count) const
    {
        return part(target.waveform.cores[i], round * (kSamples + kToRest), count);
    }
    ModelRun model(size_t i, int count) const
    {
        return runModel(setups[i], samples(i, count), round % 3 == 2 ? kEarly : kNoSample);
    }

    // What core `i` tells of its run at a look.
    QString snapshot(size_t i, const Look& look, bool finished) const
    {
        // The last one is not decided yet when the question comes, with tables the last two are
        // not.
        const int decided = std::max(0, look.decided - 1 - cores[i]->expressionType);
        return snapshotText(
            finished ? kFinal : look.kind, matchesOf(model(i, finished ? kSamples : decided)));
    }

    // What the cores tell after so many more samples; nothing of one that is about to finish.
    bool snapshots(int samples, std::vector<QString>& texts)
    {
        texts.clear();
        if (!target.play(samples))
            return false;
        for (const CoreIdentity& core : target.identities) {
            CoreStatus status;
            if (!target.client().readStatus(core, status))
                return false;
            const CoreSnapshot& now = status.snapshot;
            texts.push_back(status.finished ? snapshotText(kFinal, now.matches)
                    : status.complete       ? QString()
                                      : snapshotText(now.fresh ? "fresh" : "old", now.matches));
        }
        return true;
    }
};

}

// What a client writes into cores is what they then do.
class TestWrittenCores : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void captureAsTheModel();
};

void TestWrittenCores::captureAsTheModel()
{
    Design design;
    QCOMPARE(design.target.start(kPart), QString());
    QCOMPARE(design.target.identities.size(), design.cores.size());
    for (size_t i = 0; i < design.cores.size(); ++i)
        QCOMPARE(
            design.target.identities[i].fallingEdge, design.target.plans[i].request.fallingEdge);

    int looks = 0;
    while (design.round + 1 < kRounds) {
        QVERIFY2(design.beginRound(), qPrintable(design.target.client().error()));
        for (const Look& look : kLooks) {
            std::vector<QString> texts;
            QVERIFY(design.snapshots(look.samples, texts));
            if (&look == kLooks && design.round % 3 == 2)
                QVERIFY(design.command(CoreCommand::Force));
            for (size_t i = 0; i < texts.size(); ++i) {
                if (texts[i].isEmpty())
                    continue;
                const QString where = QString("core %1 round %2 ").arg(i).arg(design.round);
                const bool finished = texts[i].startsWith(kFinal);
                QCOMPARE(where + texts[i], where + design.snapshot(i, look, finished));
                ++looks;
            }
        }
        QVERIFY(design.command(CoreCommand::Stop) && design.target.play(kToRest));
        for (size_t i = 0; i < design.cores.size(); ++i) {
            const ModelRun run = design.model(i, kSamples);
            const QString where = QString("core %1 round %2\n").arg(i).arg(design.round);
            QCOMPARE(where
                    + captured(
                        design.target.client(), design.target.identities[i], design.setups[i]),
                where
                    + textOf(matchesOf(run), cutWindows(run.windows, design.samples(i, kSamples))));
        }
    }
    QVERIFY2(looks > kRounds * kCores, qPrintable(QString::number(looks)));
}

QTEST_APPLESS_MAIN(TestWrittenCores)
#include "test_written_cores.moc"
