#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/live_target.h"
#include "support/oxa_program.h"
#include "support/waveforms.h"

#include <QtTest>

#include <random>

namespace {

constexpr int kSamples = 600;
constexpr char kPart[] = "QX3A-10ALV-QFN88-C8";

OXA::SignalItem item(const QString& name, const QStringList& bits = {})
{
    OXA::SignalItem result;
    result.name = name;
    for (const QString& bit : bits)
        result.subItems += item(bit);
    return result;
}

OXA::SignalItem counter()
{
    OXA::SignalItem bus = item("n");
    for (int bit = 9; bit >= 0; --bit)
        bus.subItems += item(QString("n[%1]").arg(bit));
    return bus;
}

// Windows of 50 samples around the second of two levels. The counter n numbers the samples.
std::unique_ptr<OXA::AoCore> core(int index, const QString& clock)
{
    auto core = std::make_unique<OXA::AoCore>(index);
    core->sampleClock = clock;
    core->signalList = {counter(), item("a,b"), item("top/x_y")};
    core->captureSignals = core->signalList;
    core->triggers[0]->signalList = {counter()};
    core->triggers[1]->signalList = {item("a,b"), item("top/x_y")};
    const char* values[] = {"0010000000", "1X"};
    for (int unit = 0; unit < 2; ++unit) {
        core->matchUnits[unit]->enabled = true;
        core->matchUnits[unit]->trigger = core->triggers[unit];
        core->matchUnits[unit]->value0 = values[unit];
    }
    core->matchUnits[1]->counterEnable = true;
    core->matchUnits[1]->counterWidth = 4;
    core->matchUnits[1]->counter = 3;
    core->expressions = QStringList {"M0", "M1"};
    core->storageDepth = 256;
    core->captureAmount = 50;
    core->triggerPos = 20;
    core->windowNum = 2;
    return core;
}

QByteArray waveform()
{
    std::minstd_rand random(7);
    QStringList names = OXA::flattenedNames({counter()});
    names += QStringList {"a,b", "x_y"};
    QStringList samples;
    for (int i = 0; i < kSamples; ++i)
        samples += QString::number(i % 280, 2).rightJustified(10, '0')
            + QString::number(random() >> 8 & 3, 2).rightJustified(2, '0');
    return vcdOf(names, samples, {"clk", "slow"});
}

}

// `oxa target`, the real openocd and `oxa capture`, held to `oxa simulate --model`.
class TestCapture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void capturesAsTheModel_data();
    void capturesAsTheModel();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    Result capture(const QStringList& more);
    Result model(const QString& configuration, const QStringList& more = {});

    QTemporaryDir m_dir;
    LiveTarget m_live;
};

void TestCapture::initTestCase()
{
    writeFile(path("wave.vcd"), waveform());
    const auto fast = core(4, "clk");
    const auto slow = core(9, "slow");
    OXA::writeOXAConfigToXml({fast.get(), slow.get()}, path("c.oxa"));
    QVERIFY2(m_live.start(path("c.oxa"), path("wave.vcd")), m_live.target.said());
}

Result TestCapture::capture(const QStringList& more)
{
    return oxa(QStringList {"capture", path("c.oxa"), "--openocd", m_live.address()} + more);
}

Result TestCapture::model(const QString& configuration, const QStringList& more)
{
    return oxa(QStringList {"simulate", configuration, "--part", kPart, "--stimulus",
                   path("wave.vcd"), "--model"}
        + more);
}

void TestCapture::capturesAsTheModel_data()
{
    QTest::addColumn<QString>("ending");
    for (const char* ending : {"csv", "vcd", "sr"})
        QTest::newRow(ending) << ending;
}

void TestCapture::capturesAsTheModel()
{
    QFETCH(QString, ending);
    QCOMPARE(model(path("c.oxa"), {"-o", path("model." + ending)}).status, 0);
    const Result result = capture({"-o", path("live." + ending), "--timeout", "30"});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.status, 0);
    QVERIFY2(result.out.startsWith("core 4, window 0: trigger at sample 20, 50 samples from 0 on"),
        qPrintable(result.out));
    QCOMPARE(bytesOf(path("live." + ending)), bytesOf(path("model." + ending)));
}

QTEST_GUILESS_MAIN(TestCapture)
#include "test_capture.moc"
