#include "core_bench.h"
#include "core_client.h"
#include "core_samples.h"
#include "random_core.h"

#include "oxacapture/trigger/trigger_model.h"

#include "oxautils/config/standard_config.h"
#include "oxautils/encoding/match_registers.h"

#include <QtTest>

using namespace OXA_CAPTURE;

namespace {

QByteArray reversed(QByteArray text)
{
    std::reverse(text.begin(), text.end());
    return text;
}

QByteArray charactersOf(const QBitArray& bits) { return OXA::BitToString(bits).toLatin1(); }

int bitsFor(int count)
{
    int bits = 0;
    while (1 << bits < count)
        ++bits;
    return bits;
}

// The row of settings of a core whose hardware was built for `built` (its windows and levels).
QByteArray settingsOf(OXA::AoCore& core)
{
    const int addressBits = std::max(1, bitsFor(core.storageDepth));
    QByteArray row = bitsOf(quint64(core.captureAmount - 1), addressBits)
        + bitsOf(quint64(core.captureAmount - core.triggerPos - 1), addressBits)
        + bitsOf(quint64(core.windowNum - 1), bitsFor(core.windowNum));
    const int levels = core.expressions.size();
    if (levels > 1)
        row += bitsOf(quint64(1) << (levels - 1), levels);
    for (OXA::MatchUnit* unit : core.enabledMatchUnits()) {
        QBitArray m0;
        QBitArray m1;
        QBitArray m2;
        OXA::bitForM(unit, m0, m1, m2);
        row += reversed(charactersOf(m0)) + reversed(charactersOf(m1));
        if (OXA::matchTypeHasEdges(unit->matchType))
            row += reversed(charactersOf(m2));
        row += bitsOf(quint64(unit->matchFunc), unit->matchType < 2 ? 1 : 3);
        if (unit->counterEnable)
            row += bitsOf(unit->continuous, 1)
                + bitsOf(quint64(unit->counter - 1), unit->counterWidth);
    }
    return row;
}

// The words of dynamic expressions' tables.
QByteArray tablesOf(const OXA::AoCore& core, const TriggerSetup& setup)
{
    QByteArray bits;
    const int units = core.enabledMatchUnits().size();
    for (quint32 word = 0; word < (1U << units); ++word) {
        for (const TriggerTable& table : setup.levels)
            bits += word < table.rows.size() && table.rows[word] ? '1' : '0';
    }
    return bits;
}

struct Capture {
    QByteArrayList samples; ///< data signals' characters
    int trigger = -1;
};

struct Answers {
    Answer status;
    Answer windows;
    Answer memory;
    Answer samples;
};

Answers readAll(CoreClient& client, int position, const OXA::AoCore& core)
{
    const int width = core.dataSignals().size() + 1;
    return {client.read(position, Register::Status, 288),
        client.read(position, Register::Windows, core.windowNum),
        client.read(position, Register::Memory, width * core.storageDepth),
        client.read(position, Register::Samples, (width - 1) * core.storageDepth)};
}

// One window of a core's memory, as docs/jtag-protocol.md says to find it.
Capture windowAt(const OXA::AoCore& core, int triggerPos, const QByteArray& memory, int window,
    bool isShort, int open)
{
    const int width = core.dataSignals().size() + 1;
    const int amount = core.captureAmount;
    const int post = amount - triggerPos - 1;
    const auto word = [&](int i) {
        return reversed(memory.mid((window * amount + i % amount) * width, width));
    };
    int mark = 0;
    while (mark < amount && !word(mark).startsWith('1'))
        ++mark;
    int behind = post; // samples behind the trigger
    if (open >= 0)
        behind = (open - 1 - mark + amount) % amount;
    const int before = isShort ? std::min(mark, triggerPos) : triggerPos;
    Capture capture;
    capture.trigger = before;
    for (int i = mark - before; i <= mark + behind; ++i)
        capture.samples += word(i + amount).mid(1);
    return capture;
}

QByteArray unmarked(const QByteArray& memory, int width)
{
    QByteArray samples;
    for (int word = 0; word < memory.size(); word += width)
        samples += memory.mid(word, width - 1);
    return samples;
}

// The window of a run of one, that is complete, from the samples and the place of its end.
Capture windowBefore(
    const OXA::AoCore& core, int triggerPos, const QByteArray& samples, int end, bool isShort)
{
    const int width = core.dataSignals().size();
    const int amount = core.captureAmount;
    Capture capture;
    for (int i = isShort ? 0 : end; i < (isShort ? end : end + amount); ++i)
        capture.samples += reversed(samples.mid(i % amount * width, width));
    capture.trigger = capture.samples.size() - (amount - triggerPos);
    return capture;
}

QList<Capture> capturesOf(
    const OXA::AoCore& core, int triggerPos, const QByteArray& tdo, const Answers& answers)
{
    const Reply status = replyOf(tdo, answers.status);
    const Reply windows = replyOf(tdo, answers.windows);
    const Reply memory = replyOf(tdo, answers.memory);
    const Reply samples = replyOf(tdo, answers.samples);
    if (!status.intact || !windows.intact || !memory.intact || !samples.intact) {
        qWarning() << "not intact" << status.intact << windows.intact << memory.intact;
        return {};
    }
    if (samples.bits != unmarked(memory.bits, core.dataSignals().size() + 1)) {
        qWarning() << "memory and samples differ";
        return {};
    }
    const bool all = status.bits.at(10) == '1';
    const int complete = all ? core.windowNum : int(number(status.bits, 96, 32));
    QList<Capture> captures;
    if (all && core.windowNum == 1)
        return {windowBefore(core, triggerPos, samples.bits, int(number(status.bits, 64, 32)),
            windows.bits.startsWith('1'))};
    for (int window = 0; window < complete; ++window)
        captures
            += windowAt(core, triggerPos, memory.bits, window, windows.bits.at(window) == '1', -1);
    if (!all && status.bits.at(8) == '1')
        captures += windowAt(core, triggerPos, memory.bits, complete, status.bits.at(9) == '0',
            int(number(status.bits, 64, 32)));
    return captures;
}

QList<Capture> capturesOf(const ModelRun& run, const SampleTable& table)
{
    QList<Capture> captures;
    for (const Window& window : run.windows) {
        Capture capture;
        capture.trigger = int(window.triggerSample - window.firstSample);
        for (qint64 i = 0; i < window.samples; ++i) {
            QByteArray sample;
            for (int bit = 0; bit < table.layout().width(0); ++bit)
                sample += "01x"[int(table.bit(window.firstSample + i, 0, bit))];
            capture.samples += sample;
        }
        captures += capture;
    }
    return captures;
}

QString textOf(const QList<Capture>& captures)
{
    QString text;
    for (const Capture& capture : captures)
        text += QString("trigger %1: ").arg(capture.trigger) + capture.samples.join(' ') + "\n";
    return text;
}

// Random cores in one bench.
struct Analyzer {
    std::vector<std::unique_ptr<OXA::AoCore>> owned;
    QList<OXA::AoCore*> cores;
    CoreBench bench;

    explicit Analyzer(Random& random)
    {
        const int count = between(random, 0, 3) ? 1 : between(random, 2, 4);
        for (int i = 0; i < count; ++i) {
            owned.push_back(randomCore(random, i));
            cores += owned.back().get();
            const SampleRequest request = sampleRequest(*cores.last());
            for (const QStringList& field : request.fields)
                bench.signalNames += field;
            (request.fallingEdge ? bench.fallingClocks : bench.risingClocks) += request.clock;
        }
    }

    QString build()
    {
        OXA::writeOXAConfigToXml(cores, bench.arg.configFile);
        return bench.build();
    }
};

// Stops cores that power-up armed, and gives all of them their settings.
void rewrite(
    CoreClient& client, const QList<OXA::AoCore*>& cores, const std::vector<TriggerSetup>& setups)
{
    for (int i = 0; i < cores.size(); ++i)
        client.command(i, Command::kStop);
    client.edges(8);
    for (int i = 0; i < cores.size(); ++i) {
        client.write(i, Register::Settings, settingsOf(*cores.at(i)));
        if (cores.at(i)->expressionType == 1)
            client.write(i, Register::Tables, tablesOf(*cores.at(i), setups[size_t(i)]));
    }
}

// What a core tells of itself before and behind an arming that its client did not wait for.
struct Arming {
    bool mustRest; // its clock ran since the stop
    Answer before, behind;
};

// One run of an analyzer: with the settings of power-up, or with others that its client writes.
struct Round {
    Analyzer& analyzer;
    CoreClient client;
    QByteArrayList stimulus;
    int forceAt = -1;
    std::vector<TriggerSetup> setups;
    std::vector<Arming> armings;
    std::vector<Answers> answers;
    QString error;

    Round(Random& random, Analyzer& analyzer, bool rewritten)
        : analyzer(analyzer)
    {
        for (int i = 0; rewritten && i < analyzer.cores.size(); ++i)
            changeSettings(random, *analyzer.cores.at(i));
        makeStimulus(random);
        for (const OXA::AoCore* core : analyzer.cores) {
            Messages messages;
            setups.emplace_back();
            if (!triggerSetup(*core, {}, setups.back(), messages))
                error = messages.first().message();
            if (!rewritten)
                setups.back().triggerPos = powerUpPosition(*core, analyzer.bench.arg);
        }
        if (rewritten) {
            rewrite(client, analyzer.cores, setups);
            hurryAndArm(random);
        }
        writeScript(rewritten);
    }

    // Arms all cores while their clocks stand still, after commands that came too fast for them.
    void hurryAndArm(Random& random)
    {
        constexpr int kEdgesToRest = 7;
        client.hurry(random, analyzer.cores.size());
        const int edges = between(random, 0, 2) ? between(random, 0, 2) : kEdgesToRest;
        client.edges(edges);
        for (int i = 0; i < analyzer.cores.size(); ++i) {
            const Answer before = client.read(i, Register::Status, 32);
            client.command(i, Command::kArm);
            armings.push_back(
                {edges >= kEdgesToRest, before, client.read(i, Register::Status, 32)});
        }
    }

    // Whether core `i` began the run; what it told of itself is wrong when `message` is set.
    bool begins(int i, const QByteArray& tdo, QString& message) const
    {
        if (armings.empty())
            return true;
        const Arming& arming = armings[size_t(i)];
        const quint64 before = number(replyOf(tdo, arming.before).bits, 0, 4);
        const quint64 behind = number(replyOf(tdo, arming.behind).bits, 0, 4);
        const bool rested = (before & 7) == 0;
        if (arming.mustRest && !rested)
            message = QString("it does not come to rest: %1").arg(before);
        if (behind != (rested ? 1 : before) || (rested && before != 0))
            message = QString("armed at %1, it is at %2").arg(before).arg(behind);
        return rested;
    }

    void makeStimulus(Random& random)
    {
        QByteArray sample(analyzer.bench.signalNames.size(), '0');
        const int length = between(random, 1, 300);
        for (int i = 0; i < length; ++i)
            stimulus += sample = randomSample(random, sample);
        if (!between(random, 0, 2))
            forceAt = between(random, 0, length - 1);
    }

    void writeScript(bool rewritten)
    {
        for (int i = 0; i < analyzer.cores.size(); ++i) {
            if (!rewritten && !analyzer.cores.at(i)->captureInitDataEnabled)
                client.command(i, Command::kArm);
        }
        client.samples(std::max(forceAt, 0));
        for (int i = 0; forceAt >= 0 && i < analyzer.cores.size(); ++i)
            client.command(i, Command::kForce);
        client.samples(stimulus.size() - std::max(forceAt, 0));
        for (int i = 0; i < analyzer.cores.size(); ++i)
            client.command(i, Command::kStop);
        client.edges(8);
        for (int i = 0; i < analyzer.cores.size(); ++i)
            answers.push_back(readAll(client, i, *analyzer.cores.at(i)));
    }

    QString captured(int i, const QByteArray& tdo) const
    {
        const OXA::AoCore& core = *analyzer.cores.at(i);
        const TriggerSetup& setup = setups[size_t(i)];
        const QByteArray status = replyOf(tdo, answers[size_t(i)].status).bits;
        QString text = textOf(capturesOf(core, int(setup.triggerPos), tdo, answers[size_t(i)]));
        for (size_t unit = 0; unit < setup.units.size(); ++unit)
            text += QString("%1 matches\n").arg(number(status, 160 + 8 * int(unit), 8));
        return text;
    }

    QString modelled(int i) const
    {
        const SampleTable table
            = tableOf(*analyzer.cores.at(i), analyzer.bench.signalNames, stimulus);
        const ModelRun run = runModel(setups[size_t(i)], table, forceAt);
        QString text = textOf(capturesOf(run, table));
        for (const qint64 matches : run.progress.matches)
            text += QString("%1 matches\n").arg(std::min(matches, qint64(255)));
        return text;
    }
};

}

class TestCores : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void capturesAsTheModel_data();
    void capturesAsTheModel();
};

void TestCores::capturesAsTheModel_data()
{
    QTest::addColumn<unsigned>("seed");
    const int first = qEnvironmentVariableIntValue("CORES_FIRST_SEED");
    const int count = std::max(6, qEnvironmentVariableIntValue("CORES_SEEDS"));
    for (int seed = first; seed < first + count; ++seed)
        QTest::addRow("seed %d", seed) << unsigned(seed);
}

void TestCores::capturesAsTheModel()
{
    QFETCH(unsigned, seed);
    Random random(seed);
    Analyzer analyzer(random);
    // A window lies a sample earlier on this device.
    analyzer.bench.arg.package = seed % 3 ? "" : "QX1N-9";
    QCOMPARE(analyzer.build(), QString());
    for (int number = 0; number < 4; ++number) {
        Round round(random, analyzer, number > 0);
        QCOMPARE(round.error, QString());
        const BenchRun run = analyzer.bench.run(round.client.script, round.stimulus);
        QCOMPARE(run.error, QString());
        for (int i = 0; i < analyzer.cores.size(); ++i) {
            const QString where = QString("core %1 round %2\n").arg(i).arg(number);
            QString message;
            const bool begins = round.begins(i, run.tdo, message);
            QCOMPARE(where + message, where);
            if (!begins)
                continue;
            QCOMPARE(where + round.captured(i, run.tdo), where + round.modelled(i));
        }
    }
}

QTEST_GUILESS_MAIN(TestCores)
#include "test_cores.moc"
