// SPDX-License-Identifier: Apache-2.0
#include "random_core.h"

#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/signals.h"
#include "support/waveforms.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int kSamples = 250;
constexpr int kCounterBits = 8; // of the signal n, which numbers the samples

struct Part {
    const char *part, *device;
};

// At power-up, the trigger of the first one has a position of its own. Others have registers in the
// way of TDO, or another supply.
constexpr Part kParts[] = {
    {"QX1N-9LV-QFN88-C6",    "QX1N-9"   },
    {"QX3A-10ALV-QFN88-C8",  "QX3A-10A" },
    {"QX3AN-6ALV-CSP81-C8",  "QX3AN-6A" },
    {"QX5A-138LV-BGA484-C2", "QX5A-138B"},
    {"QX1NZ-1ZV-QFN48-C3",   "QX1NZ-1"  },
};

QByteArray randomWaveform(Random& random, QStringList names, const QStringList& clocks)
{
    const int values = names.size();
    names += OXA::flattenedNames({busOf("n", kCounterBits)});
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
    void coresInVerilator();
    void coresAsNetlist();
    void aTriggerAtTheFirstSample();
    void liteCores();

private:
    QStringList call(const QByteArray& waveform, const Part& part);
    QStringList randomCall(unsigned seed, int cores);
    void compare(const QStringList& call, const QStringList& how = {});
    bool hasForcedWindow() const;
    QString path(const QString& name) const { return m_dir.filePath(name); }

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

QStringList TestSimulatedCores::call(const QByteArray& waveform, const Part& part)
{
    return {"simulate", path("c.oxa"), "--part", part.part, "--device", part.device, "--stimulus",
        writeFile(path("w.vcd"), waveform), "--json", "-o", path("out.csv")};
}

// Writes a configuration with a waveform, and returns the call that simulates it, with its own
// settings or others.
QStringList TestSimulatedCores::randomCall(unsigned seed, int cores)
{
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
        // The numbers tell where a window is, but a changing signal leaves nothing to pass over.
        if (core.storage.isDefault())
            core.signalList.prepend(busOf("n", kCounterBits));
        list += &core;
    }
    addEvents(random, list);
    clocks.removeDuplicates();
    OXA::writeOXAConfigToXml(list, path("c.oxa"));
    QStringList result
        = call(randomWaveform(random, names, clocks), kParts[seed % 2 ? 1 + seed / 2 % 4 : 0]);
    if (seed % 4 > 1) {
        for (OXA::AoCore* core : list)
            changeSettings(random, *core);
        OXA::writeOXAConfigToXml(list, result[1] = path("run.oxa"));
        result += {"--built-from", path("c.oxa")};
    }
    if (seed % 3 == 1)
        result += {"--force-trigger-at", QString::number(between(random, 0, kSamples))};
    return result;
}

// The model's answers to `call` against those of the Verilog, simulated with the options `how`.
void TestSimulatedCores::compare(const QStringList& call, const QStringList& how)
{
    const Result model = oxa(call + QStringList {"--model"});
    const QByteArray modelSamples = bytesOf(path("out.csv"));
    const Result verilog = oxa(call + how);
    QVERIFY2(!model.out.isEmpty() && !model.err.contains("error:"), qPrintable(model.err));
    QCOMPARE(verilog.err, model.err);
    QCOMPARE(verilog.out, model.out);
    QCOMPARE(verilog.status, model.status);
    QCOMPARE(bytesOf(path("out.csv")), modelSamples);
}

// In what was captured last, by cores that can be forced.
bool TestSimulatedCores::hasForcedWindow() const
{
    static const QRegularExpression row(",forced by core,[^\\n]*(\\n.*)*\\n\\d+,\\d+,\\d+,1,1,");
    return QString(bytesOf(path("out.csv"))).contains(row);
}

void TestSimulatedCores::randomCores()
{
    QFETCH(unsigned, seed);
    QFETCH(int, cores);
    compare(randomCall(seed, cores));
}

// Several clocks, a first core that runs from power-up on, and cores that force each other.
void TestSimulatedCores::coresInVerilator()
{
    for (const unsigned seed : {2, 26})
        compare(randomCall(seed, 3), {"--simulator", "verilator"});
    QVERIFY(hasForcedWindow());
}

// Cores with other settings than those they were built with, one of which forces the other, as what
// was synthesized.
void TestSimulatedCores::coresAsNetlist()
{
    const int seeds = std::max(11, qEnvironmentVariableIntValue("NETLIST_SEEDS"));
    for (int seed = 10; seed < seeds; seed += 4) {
        const QStringList call = randomCall(unsigned(seed), 2);
        const Result built = oxa(
            QStringList {"generate", path("c.oxa"), "--work-dir", path("work")} + call.mid(2, 4));
        QVERIFY2(built.status == 0, qPrintable(built.err));
        compare(call, {"--netlist", path("work/qx_oxa_netlist.v")});
        QVERIFY(seed != 10 || hasForcedWindow());
    }
}

// Of a core that runs from power-up on, and is stopped and armed again before the waveform begins.
void TestSimulatedCores::aTriggerAtTheFirstSample()
{
    const auto core = coreOf(0, {busOf("n", kCounterBits)}, signalOf("t"), "X", 8, 3);
    core->captureInitDataEnabled = true;
    OXA::writeOXAConfigToXml({core.get()}, path("c.oxa"));
    Random random(1);
    compare(call(randomWaveform(random, {"t"}, {"clk"}), kParts[0]));
}

void TestSimulatedCores::liteCores()
{
    for (const int width : {1, 33}) {
        OXA::AOCore_Lite core;
        core.sampleClock = "clk";
        core.signalList = signalsOf("d", width);
        core.captureAmount = 20;
        core.trigType = core.inputRegisterEnabled = core.captureInitDataEnabled = width > 1;
        OXA::writeOXAConfigToXml_Lite({&core}, path("c.oxa"));
        Random random(1);
        compare(call(randomWaveform(random, core.dataSignals(), {"clk"}), kParts[width % 2]));
    }
}

QTEST_APPLESS_MAIN(TestSimulatedCores)
#include "test_simulated_cores.moc"
