#include "random_core.h"

#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/waveforms.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int kSamples = 250;
constexpr int kCounterBits = 8;

OXA::SignalItem item(const QString& name)
{
    OXA::SignalItem result;
    result.name = name;
    return result;
}

// Numbers the samples, so that no two of a core are alike.
OXA::SignalItem counterBus()
{
    OXA::SignalItem bus = item("n");
    for (int bit = kCounterBits - 1; bit >= 0; --bit)
        bus.subItems += item(QString("n[%1]").arg(bit));
    return bus;
}

QByteArray randomWaveform(Random& random, QStringList names, const QStringList& clocks)
{
    const int values = names.size();
    names += OXA::flattenedNames({counterBus()});
    QStringList samples;
    QByteArray sample(values, '0');
    for (int i = 0; i < kSamples; ++i) {
        sample = randomSample(random, sample);
        samples += sample + QString::number(i, 2).rightJustified(kCounterBits, '0');
    }
    return vcdOf(names, samples, clocks);
}

}

// What `oxa simulate` gets out of the generated Verilog is what the trigger model says.
class TestSimulatedCores : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void randomCores_data();
    void randomCores();

private:
    QTemporaryDir m_dir;
};

void TestSimulatedCores::randomCores_data()
{
    QTest::addColumn<unsigned>("seed");
    QTest::addColumn<int>("cores");
    const int seeds = std::max(8, qEnvironmentVariableIntValue("CORES_SEEDS"));
    for (int seed = 0; seed < seeds; ++seed)
        QTest::addRow("seed %d", seed) << unsigned(seed) << (seed % 8 == 7 ? 16 : 1 + seed % 4);
}

void TestSimulatedCores::randomCores()
{
    QFETCH(unsigned, seed);
    QFETCH(int, cores);
    Random random(seed);
    std::vector<std::unique_ptr<OXA::AoCore>> owned;
    QList<OXA::AoCore*> list;
    QStringList names;
    QStringList clocks;
    for (int position = 0; position < cores; ++position) {
        owned.push_back(randomCore(random, position));
        OXA::AoCore& core = *owned.back();
        names += core.dataSignals();
        for (const OXA::TriggerPort* port : core.availableTriggers())
            names += port->singleSignals();
        core.sampleClock = QString("clk%1").arg(position % 3);
        clocks += core.sampleClock;
        core.signalList.prepend(counterBus());
        list += &core;
    }
    clocks.removeDuplicates();
    const QString file = m_dir.filePath("c.oxa");
    OXA::writeOXAConfigToXml(list, file);
    const QString wave = writeFile(m_dir.filePath("w.vcd"), randomWaveform(random, names, clocks));
    const char* part = seed % 2 ? "QX3A-10ALV-QFN88-C8" : "QX1N-9LV-QFN88-C6";
    QStringList call {"simulate", file, "--part", part, "--stimulus", wave, "--json", "-o",
        m_dir.filePath("out.csv")};
    if (seed % 3 == 1)
        call += QStringList {"--force-trigger-at", QString::number(between(random, 0, kSamples))};

    const Result model = oxa(call + QStringList {"--model"});
    const QByteArray modelSamples = bytesOf(m_dir.filePath("out.csv"));
    const Result verilog = oxa(call);
    QVERIFY2(model.status == 0 || model.status == 1, qPrintable(model.err));
    QCOMPARE(verilog.err, model.err);
    QCOMPARE(verilog.out, model.out);
    QCOMPARE(verilog.status, model.status);
    QCOMPARE(bytesOf(m_dir.filePath("out.csv")), modelSamples);
}

QTEST_APPLESS_MAIN(TestSimulatedCores)
#include "test_simulated_cores.moc"
