// SPDX-License-Identifier: Apache-2.0
// Reading and writing a configuration of 200,000 signals, compared with only parsing the same
// bytes.
#include "ratio_reporter.h"

#include "oxautils/config/standard_config.h"

#include <benchmark/benchmark.h>

#include <QDomDocument>
#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr int kSignals = 200000;
constexpr int kBusBits = 16;

OXA::SignalItem signal(const QString& name)
{
    OXA::SignalItem item;
    item.name = name;
    return item;
}

// Half single signals, half in buses of 16.
QList<OXA::SignalItem> manySignals()
{
    QList<OXA::SignalItem> items;
    for (int i = 0; i < kSignals / 2; ++i)
        items += signal(QString("top/unit_%1/state_%2").arg(i / 100).arg(i));
    for (int i = 0; i < kSignals / 2; i += kBusBits) {
        const QString name = QString("top/unit_%1/data_%2").arg(i / 100).arg(i);
        items += signal(name);
        for (int bit = kBusBits - 1; bit >= 0; --bit)
            items.last().subItems += signal(QString("%1[%2]").arg(name).arg(bit));
    }
    return items;
}

struct Large {
    Large()
        : core(0)
        , path(directory.filePath("large.oxa"))
    {
        core.sampleClock = "clk";
        core.signalList = core.captureSignals = manySignals();
        OXA::writeOXAConfigToXml({&core}, path);
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            bytes = file.readAll();
    }

    QTemporaryDir directory;
    OXA::AoCore core;
    QString path;
    QByteArray bytes;
};

Large& large()
{
    static Large instance;
    return instance;
}

void rates(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * kSignals);
    state.SetBytesProcessed(state.iterations() * large().bytes.size());
}

void parse(benchmark::State& state)
{
    for (auto _ : state) {
        QDomDocument document;
        benchmark::DoNotOptimize(document.setContent(large().bytes));
    }
    rates(state);
}

void read(benchmark::State& state)
{
    for (auto _ : state) {
        const QList<OXA::AoCore*> cores = OXA::readOXAConfigFromXml(large().path);
        benchmark::DoNotOptimize(cores.size());
        qDeleteAll(cores);
    }
    rates(state);
}

void write(benchmark::State& state)
{
    const QString path = large().directory.filePath("written.oxa");
    for (auto _ : state)
        OXA::writeOXAConfigToXml({&large().core}, path);
    rates(state);
}

}

int main(int argc, char** argv)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::RegisterBenchmark("QDomDocument", parse)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("read", read)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("write", write)->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter({
        {"read a configuration of 200,000 signals",  "read",  "QDomDocument", "signals"},
        {"write a configuration of 200,000 signals", "write", "QDomDocument", "signals"},
    });
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
