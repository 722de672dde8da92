#include "core_bench.h"
#include "core_client.h"
#include "random_core.h"

#include "oxacapture/trigger/trigger_table.h"
#include "support/files.h"

#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"
#include <dev/device_db.h>

#include <QRegularExpression>
#include <QtTest>

namespace {

quint32 crcOfWord(quint32 crc, quint64 value)
{
    return crcOf(bitsOf(value & 0xffffffffU, 32), crc);
}

// The values of "parameter NAME = VALUE;" lines, as bits, the lowest first.
QByteArrayList parameterValues(const QString& path)
{
    static const QRegularExpression line("parameter \\w+ = (?:\\d+'([hb]))?(?:0*)(-?[0-9a-f]*);");
    QByteArrayList values;
    auto matches = line.globalMatch(QString::fromUtf8(bytesOf(path)));
    while (matches.hasNext()) {
        const auto match = matches.next();
        const QString digits = match.captured(2);
        const QString base = match.captured(1);
        if (digits.startsWith('-')) { // in two's complement
            values += bitsOf(~(digits.mid(1).toULongLong(nullptr, 16) - 1), 64)
                          .leftJustified(256, '1');
            continue;
        }
        QByteArray bits;
        if (base == "h") {
            for (int i = digits.size() - 1; i >= 0; --i)
                bits += bitsOf(digits.mid(i, 1).toUInt(nullptr, 16), 4);
        } else {
            bits = bitsOf(digits.toUInt(nullptr, base == "b" ? 2 : 10), 32);
        }
        values += bits.leftJustified(256, '0');
    }
    return values;
}

// The tables that stand for expressions in a fingerprint.
QByteArray fingerprintTables(const OXA::AoCore& core, const QByteArrayList& init)
{
    const QList<OXA::MatchUnit*> units = core.enabledMatchUnits();
    QByteArray bits;
    for (int e = 0; e < core.expressions.size(); ++e) {
        if (core.expressionType == 1) {
            bits += init.at(84 + e).left(std::max(32, 1 << units.size()));
            continue;
        }
        OXA_CAPTURE::TriggerTable table;
        QString error;
        OXA_CAPTURE::triggerTable(core, core.expressions.at(e), table, error);
        constexpr quint32 kMasks[] = {1, 2, 4, 8, 16, 32, 7, 11, 13, 14, 19, 21, 22, 25, 26, 28};
        for (quint32 row = 0; row < 64; ++row) {
            quint32 outputs = 0;
            for (int j = 0; j < units.size(); ++j)
                outputs |= quint32(qPopulationCount(row & kMasks[j]) & 1) << units.at(j)->index;
            bits += table.at(outputs) ? '1' : '0';
        }
    }
    return bits;
}

quint32 fingerprintOf(const OXA::AoCore& core, int position, const CoreBench& bench)
{
    const QString directory = bench.path("work/ao_%1/").arg(position);
    const QByteArrayList init = parameterValues(directory + "qx_ao_init.v");
    quint32 crc = crcOfWord(0, 1);
    for (const QByteArray& value : parameterValues(directory + "qx_ao_parameter.v"))
        crc = crcOf(value.left(32), crc);
    const int width = core.dataOutShiftWidth();
    const int words = (width + 31) / 32;
    for (int i = 0; i < 84; ++i)
        crc = crcOf(
            i < 4 ? init.at(i).left(32) : init.at(i).left(width).leftJustified(32 * words, '0'),
            crc);
    crc = crcOf(fingerprintTables(core, init), crc);
    quint32 ports = 0;
    for (const OXA::TriggerPort* port : core.availableTriggers())
        ports |= 1U << port->index;
    crc = crcOfWord(crc, ports);
    crc = crcOfWord(crc, core.expressionType == 1);
    const QByteArray defines = bytesOf(directory + "qx_ao_top_define.v");
    const bool shadow = defines.contains("SSRAM"); // or what asks for it gets block SRAM
    const auto kind = [&](int code) { return quint64(code == 2 && !shadow ? 0 : code); };
    crc = crcOfWord(crc, core.expressionType == 1 ? kind(core.exImplementation) : 3);
    crc = crcOfWord(crc, kind(core.implementation));
    crc = crcOfWord(crc, core.forceTriggerByFallingEdge);
    crc = crcOfWord(crc, core.captureInitDataEnabled);
    return crcOfWord(crc, defines.contains("ZV1_EN"));
}

// The sum of names, each with its length in front.
quint32 sumOfNames(const QStringList& names)
{
    quint32 crc = 0;
    for (const QString& name : names) {
        const QByteArray text = name.toUtf8();
        crc = crcOfWord(crc, quint64(text.size()));
        for (const char byte : text)
            crc = crcOf(bitsOf(uchar(byte), 8), crc);
    }
    return crc;
}

// What was answered about the check.
QByteArray checkOf(const QByteArray& tdo, const Answer& answer)
{
    const QByteArray all = tdo.mid(answer.at, answer.length);
    return all.mid(all.indexOf('1') + 1, 32);
}

struct IdentityField {
    const char* what;
    int first;
    int bits;
    quint64 value;
};

std::vector<IdentityField> identityOf(const OXA::AoCore& core, int position)
{
    const int windows = int(OXA::fixedWindowNum(unsigned(core.windowNum)));
    const bool falling = core.trigType == 1 || core.forceTriggerByFallingEdge;
    std::vector<IdentityField> fields {
        {"magic",       0,   32, 0x3141584f                              },
        {"version",     32,  8,  3                                       },
        {"kind",        40,  8,  1                                       },
        {"falling",     48,  1,  falling                                 },
        {"armed",       49,  1,  core.captureInitDataEnabled             },
        {"dynamic",     50,  1,  quint64(core.expressionType)            },
        {"signals",     64,  16, quint64(core.dataSignals().size())      },
        {"expressions", 80,  8,  quint64(core.expressions.size())        },
        {"ports",       88,  8,  quint64(core.availableTriggers().size())},
        {"units",       96,  8,  quint64(core.enabledMatchUnits().size())},
        {"position",    104, 8,  quint64(position)                       },
        {"depth",       128, 32, quint64(core.storageDepth)              },
        {"windows",     160, 32, quint64(windows)                        },
    };
    int at = 192;
    for (const OXA::TriggerPort* port : core.availableTriggers()) {
        const int width = port->singleSignals().size();
        fields.push_back({"port", at, 32, quint64(port->index | width << 8)});
        at += 32;
    }
    for (const OXA::MatchUnit* unit : core.enabledMatchUnits()) {
        fields.push_back({"unit", at, 32,
            quint64(unit->index | unit->trigger->index << 8 | unit->matchType << 16
                | (unit->counterEnable ? unit->counterWidth : 0) << 24)});
        at += 32;
    }
    return fields;
}

// A part of a device; empty when there is none.
QString partOf(const QString& device, const QString& variant)
{
    for (const DEV::ChipInfo& chip : DEV::DeviceDb::instance().chips()) {
        if (chip.name == device && (variant.isEmpty() || chip.variant == variant))
            return chip.partNumber;
    }
    return {};
}

// A random core in a bench of its own.
struct OneCore {
    CoreBench bench;
    std::unique_ptr<OXA::AoCore> core;

    explicit OneCore(unsigned seed)
    {
        Random random(seed);
        core = randomCore(random, 0);
        core->captureInitDataEnabled = false;
    }

    QString build()
    {
        for (const OXA::SignalItem& item : core->captureSignals)
            bench.signalNames += item.name;
        for (const OXA::TriggerPort* port : core->availableTriggers())
            bench.signalNames += port->singleSignals();
        const bool falling = core->trigType == 1 || core->forceTriggerByFallingEdge;
        (falling ? bench.fallingClocks : bench.risingClocks) += core->sampleClock;
        QList<OXA::AoCore*> cores {core.get()};
        OXA::writeOXAConfigToXml(cores, bench.arg.configFile);
        return bench.build();
    }
};

// A Lite core of `width` signals in its bench.
QString build(OXA::AOCore_Lite& core, int width, CoreBench& bench)
{
    core.sampleClock = "clk";
    for (int i = 0; i < width; ++i) {
        OXA::SignalItem item;
        item.name = QString("d%1").arg(i);
        core.signalList += item;
        bench.signalNames += item.name;
    }
    (core.trigType ? bench.fallingClocks : bench.risingClocks) += core.sampleClock;
    QList<OXA::AOCore_Lite*> cores {&core};
    OXA::writeOXAConfigToXml_Lite(cores, bench.arg.configFile);
    return bench.build();
}

}

class TestProtocol : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void identityAndFingerprint_data();
    void identityAndFingerprint();
    void answersOnlyWhatItMay();
    void commandsTakeEffectOnce();
    void takesWholeWritesOnly();
    void bitsThatComeLateAreOne();
    void damagedAddressesSelectNothing();
    void liteSamples_data();
    void liteSamples();
    void impossibleCoresStop_data();
    void impossibleCoresStop();
};

void TestProtocol::identityAndFingerprint_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<QString>("device");
    QTest::addColumn<unsigned>("seed");
    QTest::newRow("unknown device") << ""
                                    << "" << 1U;
    QTest::newRow("another core") << ""
                                  << "" << 2U;
    QTest::newRow("shadow SRAM") << partOf("QX1N-9", "") << "QX1N-9" << 5U;
    QTest::newRow("one stage to TDO") << partOf("QX3AN-6A", "") << "QX3AN-6A" << 3U;
    QTest::newRow("two stages to TDO") << partOf("QX5A-138B", "") << "QX5A-138B" << 4U;
    QTest::newRow("lowest voltage") << partOf("QX1NZ-1", "ZV") << "QX1NZ-1" << 6U;
}

void TestProtocol::identityAndFingerprint()
{
    QFETCH(QString, part);
    QFETCH(QString, device);
    QFETCH(unsigned, seed);
    OneCore one(seed);
    one.core->signalList.first().name = QString::fromUtf8("größe.✓");
    one.core->captureSignals = one.core->signalList;
    one.bench.arg.device = part;
    one.bench.arg.package = device;
    QVERIFY(part.isEmpty() == device.isEmpty());
    QCOMPARE(one.build(), QString());
    CoreClient client;
    client.devicesBefore = int(seed % 3);
    const Answer identity = client.read(0, Register::Identity, 512);
    const Answer fingerprint = client.read(0, Register::Fingerprint, 32);
    QList<QStringList> lists {{one.core->sampleClock}, one.core->dataSignals()};
    for (const OXA::TriggerPort* port : one.core->availableTriggers())
        lists += port->singleSignals();
    const Answer names = client.read(0, Register::Names, 32 * lists.size());
    const BenchRun run = one.bench.run(client.script, {});
    QCOMPARE(run.error, QString());
    QVERIFY(replyOf(run.tdo, names).intact);
    for (int i = 0; i < lists.size(); ++i)
        QCOMPARE(
            number(replyOf(run.tdo, names).bits, 32 * i, 32), quint64(sumOfNames(lists.at(i))));
    const Reply reply = replyOf(run.tdo, identity);
    QVERIFY(reply.intact);
    for (const IdentityField& field : identityOf(*one.core, 0))
        QVERIFY2(number(reply.bits, field.first, field.bits) == field.value, field.what);
    QVERIFY(replyOf(run.tdo, fingerprint).intact);
    QCOMPARE(number(replyOf(run.tdo, fingerprint).bits, 0, 32),
        quint64(fingerprintOf(*one.core, 0, one.bench)));
}

// Armed cores keep their settings and memory to themselves, and absent ones keep quiet.
void TestProtocol::answersOnlyWhatItMay()
{
    OneCore one(2);
    one.core->expressionType = 0;
    QCOMPARE(one.build(), QString());
    CoreClient client;
    const Answer noCore = client.read(1, Register::Identity, 32);
    const Answer noRegister = client.read(0, 11, 32);
    const Answer noTables = client.write(0, Register::Tables, "1");
    const Answer settings = client.write(0, Register::Settings, QByteArray(8, '1'));
    client.command(0, Command::kArm);
    const Answer memory = client.read(0, Register::Memory, 32);
    const Answer samples = client.read(0, Register::Samples, 32);
    const Answer settingsArmed = client.write(0, Register::Settings, QByteArray(8, '1'));
    const Answer status = client.read(0, Register::Status, 32);
    client.edges(8);
    const Answer running = client.read(0, Register::Status, 32);
    const BenchRun run = one.bench.run(client.script, {});
    QCOMPARE(run.error, QString());
    for (const Answer& silent : {noCore, noRegister, noTables, memory, samples, settingsArmed})
        QVERIFY(!replyOf(run.tdo, silent).answered);
    QVERIFY(replyOf(run.tdo, settings).answered);
    QCOMPARE(number(replyOf(run.tdo, status).bits, 0, 3), quint64(1));
    QCOMPARE(number(replyOf(run.tdo, running).bits, 0, 3), quint64(3));
}

// Damaged commands do nothing, neither does one that a scan's end cuts off, nor one at the end of
// what was meant for another register.
void TestProtocol::commandsTakeEffectOnce()
{
    OneCore one(3);
    QCOMPARE(one.build(), QString());
    CoreClient client;
    QList<Answer> quiet;
    QByteArrayList none {"", "000000", "111111"};
    for (int bit = 0; bit < 6; ++bit) {
        QByteArray flipped = Command::kArm;
        flipped[bit] = flipped.at(bit) == '0' ? '1' : '0';
        none << flipped << QByteArray(Command::kArm).mid(bit + 1)
             << QByteArray(bit + 1, '0') + Command::kArm;
    }
    for (const QByteArray& bits : qAsConst(none)) {
        client.command(0, bits);
        quiet += client.read(0, Register::Status, 32);
    }
    client.command(0, Command::kForce); // of a core that is not armed
    client.command(0, Command::kArm);
    client.edges(8);
    const Answer unforced = client.read(0, Register::Status, 32);
    client.command(0, Command::kStop);
    const Answer stopping = client.read(0, Register::Status, 32);
    client.edges(8);
    const Answer stopped = client.read(0, Register::Status, 32);
    const BenchRun run = one.bench.run(client.script, {});
    QCOMPARE(run.error, QString());
    for (const Answer& answer : quiet)
        QCOMPARE(number(replyOf(run.tdo, answer).bits, 0, 4), quint64(0));
    QCOMPARE(number(replyOf(run.tdo, unforced).bits, 3, 1), quint64(0));
    QCOMPARE(number(replyOf(run.tdo, stopping).bits, 0, 2), quint64(2));
    QCOMPARE(number(replyOf(run.tdo, stopped).bits, 0, 3), quint64(0));
}

// The check tells what arrived, so a flipped bit shows.
void TestProtocol::takesWholeWritesOnly()
{
    OneCore one(4);
    QCOMPARE(one.build(), QString());
    CoreClient client;
    const QByteArray data = bitsOf(0x123456789abcdefU, 60);
    client.write(0, Register::Settings, data);
    const Answer good = client.read(0, Register::Check, 0);
    QByteArray flipped = data;
    flipped[17] = flipped.at(17) == '0' ? '1' : '0';
    client.write(0, Register::Settings, flipped);
    const Answer bad = client.read(0, Register::Check, 0);
    const BenchRun run = one.bench.run(client.script, {});
    QCOMPARE(run.error, QString());
    const QByteArray expected = bitsOf(crcAt(Register::Settings, data), 32);
    QCOMPARE(checkOf(run.tdo, good), expected);
    QVERIFY(checkOf(run.tdo, bad) != expected);
}

// A bit that changes with TCK may be taken for either value, but for the same one by the command
// and by its check.
void TestProtocol::bitsThatComeLateAreOne()
{
    OneCore one(3);
    QCOMPARE(one.build(), QString());
    const QByteArray arm = Command::kArm;
    CoreClient client;
    QList<Answer> checks, states;
    for (int bit = 0; bit + 1 < arm.size(); ++bit) {
        for (const bool late : {false, true}) { // of the bit that arms, or of another one
            QByteArray bits = arm;
            bits[bit] = (arm.at(bit) == '1') == late ? 'u' : 'd';
            client.write(0, Register::Command, bits);
            checks += client.read(0, Register::Check, 0);
            states += client.read(0, Register::Status, 32);
            client.command(0, Command::kStop);
            client.edges(8);
        }
    }
    const BenchRun run = one.bench.run(client.script, {});
    QCOMPARE(run.error, QString());
    const QByteArray armed = bitsOf(crcAt(Register::Command, arm), 32);
    for (int i = 0; i < checks.size(); ++i)
        QCOMPARE(number(replyOf(run.tdo, states.at(i)).bits, 0, 1),
            quint64(checkOf(run.tdo, checks.at(i)) == armed));
}

// An address that lost bits is none, nor does it move data of the register addressed before.
void TestProtocol::damagedAddressesSelectNothing()
{
    OneCore one(3);
    QCOMPARE(one.build(), QString());
    CoreClient client;
    const QByteArray good = client.addressBits(0, Register::Identity);
    QByteArrayList damaged {good.chopped(1), good + '0', good + '1', good.mid(3)};
    for (int i = 2; i < good.size(); ++i) {
        for (int j = 2; j <= i; ++j) { // one bit when they are the same
            damaged += good;
            for (const int bit : QSet<int> {i, j})
                damaged.last()[bit] = good.at(bit) == '0' ? '1' : '0';
        }
    }
    QList<Answer> answers;
    for (const QByteArray& bits : qAsConst(damaged)) {
        client.scan(bits);
        answers += client.readAgain(0, 32);
    }
    QList<Answer> quiet;
    for (int core = 0; core < 16; ++core) {
        client.address(0, Register::Command);
        QByteArray dataScan = client.addressBits(core, Register::Check);
        dataScan[1] = '0';
        client.scan(dataScan);
        quiet += client.read(0, Register::Status, 32);
    }
    const BenchRun run = one.bench.run(client.script, {});
    QCOMPARE(run.error, QString());
    for (const Answer& answer : qAsConst(answers))
        QVERIFY(!replyOf(run.tdo, answer).answered);
    for (const Answer& answer : qAsConst(quiet)) {
        QVERIFY(replyOf(run.tdo, answer).intact);
        QCOMPARE(number(replyOf(run.tdo, answer).bits, 0, 4), quint64(0));
    }
}

void TestProtocol::liteSamples_data()
{
    QTest::addColumn<int>("signalCount");
    QTest::addColumn<int>("amount");
    QTest::addColumn<bool>("inputRegister");
    QTest::addColumn<bool>("armed");
    QTest::addColumn<int>("sampleCount");
    QTest::newRow("armed by command") << 5 << 16 << false << false << 30;
    QTest::newRow("armed at power-up, falling") << 33 << 20 << true << true << 30;
    QTest::newRow("one bit, one more edge than samples") << 1 << 10 << true << false << 11;
    QTest::newRow("cut short") << 4 << 32 << false << false << 7;
}

void TestProtocol::liteSamples()
{
    QFETCH(int, signalCount);
    QFETCH(int, amount);
    QFETCH(bool, inputRegister);
    QFETCH(bool, armed);
    QFETCH(int, sampleCount);
    CoreBench bench;
    OXA::AOCore_Lite core;
    core.trigType = armed;
    core.captureAmount = amount;
    core.inputRegisterEnabled = inputRegister;
    core.captureInitDataEnabled = armed;
    QCOMPARE(build(core, signalCount, bench), QString());

    Random random(1);
    QByteArrayList samples;
    QByteArray sample(signalCount, '0');
    for (int i = 0; i < sampleCount; ++i)
        samples += sample = randomSample(random, sample);
    CoreClient client;
    QList<Answer> early, late; // statuses, and when the clock ran on
    if (!armed) {
        for (int hurry = 0; hurry < 20; ++hurry) {
            client.hurry(random, 1);
            client.edges(between(random, 0, 7));
            early += client.read(0, Register::Status, 96);
            client.edges(8);
            late += client.read(0, Register::Status, 96);
        }
        client.command(0, Command::kArm);
    }
    client.samples(sampleCount);
    client.command(0, Command::kStop);
    client.edges(8);
    const Answer status = client.read(0, Register::Status, 96);
    const Answer memory = client.read(0, Register::Memory, signalCount * amount);
    const BenchRun run = bench.run(client.script, samples);
    QCOMPARE(run.error, QString());

    for (int hurry = 0; hurry < early.size(); ++hurry) {
        const QByteArray before = replyOf(run.tdo, early.at(hurry)).bits;
        const QByteArray behind = replyOf(run.tdo, late.at(hurry)).bits;
        QCOMPARE(number(behind, 0, 3), quint64(0));
        if (number(before, 0, 3) == 0)
            QCOMPARE(before, behind);
    }
    const Reply state = replyOf(run.tdo, status);
    const Reply words = replyOf(run.tdo, memory);
    QVERIFY(state.intact && words.intact);
    const int taken = std::min(amount, sampleCount);
    QCOMPARE(state.bits.at(10), taken == amount ? '1' : '0');
    if (taken < amount)
        QCOMPARE(number(state.bits, 64, 32), quint64(taken));
    for (int i = 0; i < taken; ++i) {
        QByteArray word = words.bits.mid(i * signalCount, signalCount);
        std::reverse(word.begin(), word.end());
        QCOMPARE(word, samples.at(i));
    }
}

void TestProtocol::impossibleCoresStop_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("windows") << "windows"
                             << "the_memory_holds_all_windows";
    QTest::newRow("position") << "position"
                              << "the_trigger_position_lies_within_the_window";
    QTest::newRow("function") << "function"
                              << "has_a_function_of_its_match_type";
    QTest::newRow("counter") << "counter"
                             << "fits_its_width";
    QTest::newRow("index") << "index"
                           << "a_core_has_a_number_from_0_to_15";
    QTest::newRow("Lite") << "Lite"
                          << "a_core_captures_at_least_one_sample";
}

void TestProtocol::impossibleCoresStop()
{
    QFETCH(QString, field);
    QFETCH(QString, complaint);
    OneCore one(5);
    OXA::MatchUnit& unit = *one.core->enabledMatchUnits().first();
    if (field == "windows")
        one.core->captureAmount = one.core->storageDepth / one.core->windowNum + 1;
    if (field == "position")
        one.core->triggerPos = one.core->captureAmount + 2;
    if (field == "function") {
        unit.matchType = OXA::MatchExtended;
        unit.matchFunc = OXA::MatchInRange;
    }
    if (field == "counter") {
        unit.counterEnable = true;
        unit.counterWidth = 3;
        unit.counter = 9;
    }
    if (field == "index")
        one.core->index = 16;
    CoreBench bench;
    OXA::AOCore_Lite lite;
    lite.captureAmount = 0;
    const QString error = field == "Lite" ? build(lite, 1, bench) : one.build();
    QVERIFY2(error.contains(complaint), qPrintable(error));
    QVERIFY2(!error.contains("impossible_core_0__impossible"), qPrintable(error));
}

QTEST_GUILESS_MAIN(TestProtocol)
#include "test_protocol.moc"
