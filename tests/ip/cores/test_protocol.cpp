// SPDX-License-Identifier: Apache-2.0
#include "core_target.h"

#include "support/signals.h"

#include <QtTest>

using namespace OXA_CAPTURE;

namespace {

constexpr int kToRest = 8; // samples
constexpr int kAmount = 4; // of a window

// Records the scans of a client; tests send them again with errors.
class RecordingLink : public JtagLink {
public:
    std::vector<BitString> scans;

    explicit RecordingLink(JtagLink& link)
        : m_link(link)
    {
    }
    bool reset() override { return m_link.reset(); }
    bool scanIr(const BitString& out) override { return m_link.scanIr(out); }
    bool scanDr(const BitString& out, BitString* in) override
    {
        scans.push_back(out);
        return m_link.scanDr(out, in);
    }

private:
    JtagLink& m_link;
};

BitString withFlips(const BitString& bits, int flip, int other)
{
    BitString result;
    for (int bit = 0; bit < bits.size(); ++bit)
        result.append(bits.at(bit) != (bit == flip || bit == other));
    return result;
}

// `count` bits of `bits` from `first`, and a zero for each behind its end.
BitString part(const BitString& bits, int first, int count)
{
    BitString result;
    for (int bit = first; bit < first + count; ++bit)
        result.append(bit < bits.size() && bits.at(bit));
    return result;
}

// The bits of the first `windows` windows in memory, and of the words about them; empty: no answer.
QByteArray windowsIn(AnalyzerClient& client, const CoreIdentity& core, int windows)
{
    BitString bits;
    BitString about;
    QByteArray text;
    if (!client.readMemory(core, qint64(windows) * kAmount, bits)
        || !client.readWindows(core, windows, about))
        return text;
    bits.append(about);
    for (int bit = 0; bit < bits.size(); ++bit)
        text += bits.at(bit) ? '1' : '0';
    return text;
}

// What Verilog refuses: the core's number, its window, and the function and the count of a unit of
// the type Extended, whose counter has 2 bits.
struct Impossible {
    const char* complaint;
    int index, amount, position, function, count;
};

constexpr Impossible kImpossible[] = {
    {"a_core_has_a_number_from_0_to_15",            16, 4,  0, 0,                 2},
    {"the_memory_holds_all_windows",                0,  17, 0, 0,                 2},
    {"the_trigger_position_lies_within_the_window", 0,  4,  6, 0,                 2},
    {"has_a_function_of_its_match_type",            0,  4,  0, OXA::MatchInRange, 2},
    {"fits_its_width",                              0,  4,  0, 0,                 5},
};

}

// A core whose trigger never comes, though its unit matches at every sample.
class TestProtocol : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void answersOnlyAtRest();
    void snapshotsOfARun();
    void windowsOfARun();
    void forcesAreForArmedCores();
    void damagedCommandsDoNothing();
    void damagedAddressesSelectNothing();
    void impossibleCoresStop();

private:
    CoreStatus status();
    bool command(CoreCommand command) { return m_target.client().command(0, command); }

    std::unique_ptr<OXA::AoCore> m_core;
    CoreTarget m_target;
    CoreIdentity m_identity;
};

void TestProtocol::initTestCase()
{
    Random random(1);
    m_core = coreOf(0, {signalOf("d")}, signalOf("t"), "X", 4, 0);
    m_core->expressions = QStringList {"M0", "M0&!M0"};
    m_target.configure({m_core.get()}, random, 1000);
    QCOMPARE(m_target.start({}), QString());
    QCOMPARE(m_target.identities.size(), size_t(1));
    m_identity = m_target.identities.front();
}

void TestProtocol::cleanup()
{
    QVERIFY(command(CoreCommand::Stop) && m_target.play(kToRest));
    QVERIFY(!status().armed && status().atRest());
}

CoreStatus TestProtocol::status()
{
    CoreStatus status;
    if (!m_target.client().readStatus(m_identity, status))
        qWarning() << m_target.client().error();
    return status;
}

// Armed cores answer no scan of settings or memory.
void TestProtocol::answersOnlyAtRest()
{
    AnalyzerClient& client = m_target.client();
    TriggerSetup setup;
    Messages messages;
    QVERIFY(triggerSetup(*m_core, {}, setup, messages));
    for (const bool rest : {true, false}) {
        BitString bits;
        QCOMPARE(client.readMemory(m_identity, 4, bits), rest);
        QCOMPARE(client.readSamples(m_identity, 4, bits), rest);
        QCOMPARE(client.readWindows(m_identity, 1, bits), rest);
        QCOMPARE(client.writeSettings(m_identity, setup), rest);
        QVERIFY(status().armed != rest && !status().running);
        QVERIFY(command(CoreCommand::Arm));
    }
    QVERIFY(m_target.play(kToRest));
    QVERIFY(status().armed && status().running && !status().finished);
    QVERIFY(command(CoreCommand::Stop) && command(CoreCommand::Arm)); // which is too early
    QVERIFY(!status().armed && status().running);
}

// The core waits for the second of two levels; matches are counted up to 255.
void TestProtocol::snapshotsOfARun()
{
    QVERIFY(command(CoreCommand::Arm) && m_target.play(kToRest));
    QCOMPARE(status().snapshot.level, 0); // of the run's beginning
    for (const int matches : {200 + kToRest, 255}) {
        QVERIFY(m_target.play(200));
        status(); // asks for the next one
        QVERIFY(m_target.play(kToRest));
        const CoreSnapshot now = status().snapshot;
        QVERIFY(!status().snapshot.fresh); // the clock has stood still since
        QVERIFY(now.fresh && now.level == 1 && !now.open);
        QVERIFY2(now.matches.at(0) <= matches && now.matches.at(0) > matches - kToRest,
            qPrintable(QString::number(now.matches.at(0))));
    }
}

// What the snapshot counts is in memory, though the sample clock stands still since; in a second
// run, it does not count windows of the first.
void TestProtocol::windowsOfARun()
{
    constexpr int kSamples = 500;
    Random random(2);
    const auto core = coreOf(0, {busOf("d", 8)}, signalOf("t"), "1", kAmount, 1);
    core->windowNum = 4;
    core->events.stamps = true;
    CoreTarget target;
    target.configure({core.get()}, random, kSamples);
    QCOMPARE(target.start({}), QString());
    const CoreIdentity& identity = target.identities.front();
    AnalyzerClient& client = target.client();
    QVERIFY(client.writeSettings(identity, target.plans.front().setup));
    for (const int last : {2, 3}) {
        QVERIFY(client.command(0, CoreCommand::Arm));
        QList<QByteArray> words; // of 1, 2 ... windows, read as soon as they are counted
        for (int sample = 0; sample < kSamples / 2 && words.size() < last; ++sample) {
            CoreStatus status;
            QVERIFY(target.play(1) && client.readStatus(identity, status));
            if (!status.running || status.snapshot.windows == words.size())
                continue;
            QCOMPARE(int(status.snapshot.windows), int(words.size()) + 1);
            words += windowsIn(client, identity, int(words.size()) + 1);
            QVERIFY(!words.last().isEmpty());
        }
        QCOMPARE(int(words.size()), last);
        QVERIFY(client.command(0, CoreCommand::Stop) && target.play(kToRest));
        for (int windows = 1; windows <= last; ++windows)
            QCOMPARE(words.at(windows - 1), windowsIn(client, identity, windows));
    }
}

void TestProtocol::forcesAreForArmedCores()
{
    QVERIFY(command(CoreCommand::Force) && command(CoreCommand::Arm) && m_target.play(kToRest));
    QVERIFY(!status().finished);
    QVERIFY(command(CoreCommand::Force) && m_target.play(kToRest));
    QVERIFY(status().finished);
}

// Also commands that are cut off by the end of a scan, or are at the end of a longer scan.
void TestProtocol::damagedCommandsDoNothing()
{
    RecordingLink link(m_target.link());
    QVERIFY(AnalyzerClient(link, BitString(8, 5)).command(0, CoreCommand::Arm));
    QVERIFY(command(CoreCommand::Stop) && m_target.play(kToRest));
    const BitString address = link.scans.at(0);
    const BitString good = link.scans.at(1);
    const BitString marks = part(good, 0, 2); // say that data follows
    const BitString arm = part(good, 2, good.size() - 2);
    std::vector<BitString> damaged;
    for (int bit = 0; bit < arm.size(); ++bit) {
        damaged.push_back(withFlips(good, 2 + bit, 2 + bit));
        damaged.insert(damaged.end(), 2, marks);
        damaged.back().append(part(arm, bit + 1, arm.size() - bit - 1));
        damaged.rbegin()[1].append(0, bit + 1);
        damaged.rbegin()[1].append(arm);
    }
    for (const BitString& scan : damaged) {
        BitString in;
        QVERIFY(link.scanDr(address, nullptr) && link.scanDr(scan, &in));
        QVERIFY(!status().armed);
    }
}

// An address with wrong or missing bits selects no core.
void TestProtocol::damagedAddressesSelectNothing()
{
    RecordingLink link(m_target.link());
    CoreStatus unused;
    QVERIFY(AnalyzerClient(link, BitString(8, 5)).readStatus(m_identity, unused));
    const BitString good = link.scans.at(0);
    std::vector<BitString> damaged {part(good, 0, good.size() - 1), part(good, 0, good.size() + 1),
        part(good, 3, good.size() - 3)};
    for (int i = 2; i < good.size(); ++i) {
        for (int j = 2; j <= i; ++j) // one bit when they are the same
            damaged.push_back(withFlips(good, i, j));
    }
    for (const BitString& address : damaged) {
        BitString in;
        QVERIFY(link.scanDr(address, nullptr) && link.scanDr(link.scans.at(1), &in));
        QCOMPARE(in.zerosFrom(0), in.size());
    }
}

void TestProtocol::impossibleCoresStop()
{
    for (const Impossible& row : kImpossible) {
        Random random(1);
        const auto core
            = coreOf(row.index, {signalOf("d")}, signalOf("t"), "1", row.amount, row.position);
        OXA::MatchUnit& unit = *core->matchUnits[0];
        unit.matchType = OXA::MatchExtended;
        unit.matchFunc = OXA::MatchFunc(row.function);
        unit.counterEnable = true;
        unit.counter = row.count;
        CoreTarget target;
        target.configure({core.get()}, random, 1);
        const QString error = target.start({});
        QVERIFY2(error.contains(row.complaint), qPrintable(error));
        QVERIFY2(!error.contains("impossible_core_0__impossible"), qPrintable(error));
    }
}

QTEST_GUILESS_MAIN(TestProtocol)
#include "test_protocol.moc"
