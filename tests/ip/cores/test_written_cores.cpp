// SPDX-License-Identifier: Apache-2.0
#include "core_target.h"

#include "oxacapture/target/window_decoder.h"

#include <QtTest>

using namespace OXA_CAPTURE;

namespace {

constexpr int kRounds = 12;
constexpr int kCores = 4;
constexpr int kSamples = 250; // a round
constexpr int kEarly = 20; // of them, before a trigger is forced
constexpr int kToRest = 8; // edges that bring the last samples into memory
constexpr char kPart[] = "QX1N-9LV-QFN88-C6"; // has shadow SRAM

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

// A core at rest, or why it cannot be read.
QString captured(AnalyzerClient& client, const CoreIdentity& core, const TriggerSetup& setup)
{
    CoreStatus status;
    BitString memory;
    BitString windowWords;
    std::vector<DecodedWindow> decoded;
    QString error;
    if (!client.readStatus(core, status)
        || !(samplesSuffice(core, status, setup)
                ? client.readSamples(core, usedWords(core, status, setup), memory)
                : client.readMemory(core, usedWords(core, status, setup), memory))
        || !client.readWindows(core, setup.windowNum, windowWords))
        return client.error();
    if (!decodeWindows(core, status, setup, windowWords, memory, decoded, &error))
        return error;
    std::vector<CapturedWindow> windows;
    windows.reserve(decoded.size());
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
            core.trigType = i == 1;
            core.forceTriggerByFallingEdge = i == 0;
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

    // The samples of core `i` in this round, and what the model makes of them.
    SampleTable samples(size_t i) const
    {
        SampleTable part(target.waveform.cores[i].layout());
        const int first = round * (kSamples + kToRest);
        for (int sample = first; sample < first + kSamples; ++sample)
            part.append(target.waveform.cores[i].row(sample));
        return part;
    }
    ModelRun model(size_t i) const
    {
        return runModel(setups[i], samples(i), round % 3 == 2 ? kEarly : kNoSample);
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

    while (design.round + 1 < kRounds) {
        QVERIFY2(design.beginRound(), qPrintable(design.target.client().error()));
        QVERIFY(design.target.play(kEarly));
        QVERIFY(design.round % 3 != 2 || design.command(CoreCommand::Force));
        QVERIFY(design.target.play(kSamples - kEarly));
        QVERIFY(design.command(CoreCommand::Stop) && design.target.play(kToRest));
        for (size_t i = 0; i < design.cores.size(); ++i) {
            const ModelRun run = design.model(i);
            const QString expected
                = textOf(matchesOf(run), cutWindows(run.windows, design.samples(i)));
            const QString actual
                = captured(design.target.client(), design.target.identities[i], design.setups[i]);
            QVERIFY2(actual == expected,
                qPrintable(
                    QString("core %1 round %2\n%3\nexpected\n%4")
                        .arg(QString::number(i), QString::number(design.round), actual, expected)));
        }
    }
}

QTEST_APPLESS_MAIN(TestWrittenCores)
#include "test_written_cores.moc"
