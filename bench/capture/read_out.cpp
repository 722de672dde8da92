// SPDX-License-Identifier: Apache-2.0
// The time to read a core, from a simulated target through the real OpenOCD: milliseconds (the
// minimum and the median of several) in each simulator, and those that OpenOCD needs for as many
// scans of as many cycles with a target that answers at once. Then commands to OpenOCD, and TCK
// cycles for each captured bit, counted at the target's pads. A Standard core's word has a mark
// beside its sample; there are figures for both.

#include "instant_target.h"

#include "oxacapture/target/capture_session.h"
#include "oxacapture/target/openocd_link.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/jtag_proxy.h"
#include "support/live_target.h"
#include "support/waveforms.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>

using namespace OXA_CAPTURE;

namespace {

constexpr int kDepth = 1024;
constexpr int kReads = 15; // timed

QList<OXA::SignalItem> probes(int count)
{
    QList<OXA::SignalItem> items;
    for (int i = 0; i < count; ++i) {
        OXA::SignalItem item;
        item.name = QString("p%1").arg(i);
        items += item;
    }
    return items;
}

std::unique_ptr<OXA::AoCore> standardCore(int width)
{
    auto core = std::make_unique<OXA::AoCore>(0);
    core->sampleClock = "clk";
    core->signalList = core->captureSignals = core->triggers[0]->signalList = probes(width);
    core->matchUnits[0]->enabled = true;
    core->matchUnits[0]->trigger = core->triggers[0];
    core->matchUnits[0]->value0 = QString(width, '1');
    core->expressions = QStringList {"M0"};
    core->storageDepth = core->captureAmount = kDepth;
    return core;
}

void writeWaveform(const QString& path, int width)
{
    QStringList samples;
    for (int i = 0; i < 2 * kDepth; ++i)
        samples += QString(width, i % 3 ? '0' : '1');
    writeFile(path, vcdOf(OXA::flattenedNames(probes(width)), samples));
}

struct Measure {
    double least, median; // ms
    int commands;
    qint64 cycles; // 0: not counted
};

/// Counts the cycles of TCK that pass through a proxy.
class CycleCounter {
public:
    explicit CycleCounter(JtagProxy& proxy)
    {
        proxy.rewrite = [this](const QByteArray& commands) {
            for (const char command : commands) {
                const bool isPads = command >= '0' && command <= '7';
                m_cycles += isPads && command & 4 && !m_isHigh;
                m_isHigh = isPads ? command & 4 : m_isHigh;
            }
            return commands;
        };
    }

    qint64 cycles() const { return m_cycles; }

private:
    std::atomic<qint64> m_cycles {0};
    bool m_isHigh = false; // TCK
};

void setTimes(std::vector<double>& times, Measure& result)
{
    std::sort(times.begin(), times.end());
    result.least = times.front();
    result.median = times[times.size() / 2];
}

// Captures once and reads the core: repeatedly, or once through a slow proxy that counts.
bool measure(const QString& address, const std::vector<BuiltConfiguration>& builds,
    const CycleCounter* counter, Measure& result)
{
    const int reads = counter ? 1 : kReads;
    OpenOcdLink link;
    if (!link.connectTo(address) || !link.selectTap("fpga.tap"))
        return false;
    CaptureSession session(link, link.instruction());
    if (!session.begin() || !session.match(builds)
        || !session.arm({
            {0, session.build().cores[0].setup}
    })
        || !session.wait({0}, [](const std::vector<CoreProgress>&) { return true; }))
        return false;
    std::vector<double> times;
    for (int i = 0; i < reads; ++i) {
        ReadOut readOut;
        const int commands = link.commandCount();
        const qint64 cycles = counter ? counter->cycles() : 0;
        QElapsedTimer timer;
        timer.start();
        if (!session.read(0, readOut) || readOut.windows.size() != 1)
            return false;
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
        result.commands = link.commandCount() - commands;
        result.cycles = counter ? counter->cycles() - cycles : 0;
    }
    setTimes(times, result);
    return session.stop(0);
}

bool measureTarget(const QString& simulator, const QString& configuration, const QString& wave,
    const std::vector<BuiltConfiguration>& builds, Measure& timed, Measure* counted)
{
    LiveTarget live;
    if (!live.start(configuration, wave, {"--simulator", simulator})
        || !measure(live.address(), builds, nullptr, timed))
        return false;
    if (!counted)
        return true;
    live.openocd.end();
    JtagProxy proxy;
    const CycleCounter counter(proxy);
    Service openocd;
    const QString address = startOpenOcd(openocd, proxy.start(live.port()));
    return measure(address, builds, &counter, *counted);
}

// As many scans as reading takes, of as many cycles in all.
bool measureOpenOcd(const Measure& counted, Measure& result)
{
    InstantTarget target;
    Service openocd;
    OpenOcdLink link;
    if (!link.connectTo(startOpenOcd(openocd, target.start())) || !link.selectTap("fpga.tap")
        || !link.reset() || !link.scanIr(link.instruction()))
        return false;
    BitString bits;
    while (bits.size() < counted.cycles / counted.commands)
        bits.append(0, 1);
    std::vector<double> times;
    for (int i = 0; i < kReads; ++i) {
        QElapsedTimer timer;
        timer.start();
        for (int command = 0; command < counted.commands; ++command) {
            BitString in;
            if (!link.scanDr(bits, &in))
                return false;
        }
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    setTimes(times, result);
    return true;
}

void print(const char* what, const Measure& measure, const Measure& openocd)
{
    std::printf("  %-20s least %6.1f ms, median %6.1f ms   %.2f times\n", what, measure.least,
        measure.median, measure.least / openocd.least);
}

bool report(const char* kind, int width, int wordBits, const QString& configuration,
    const QString& wave, const std::vector<BuiltConfiguration>& builds)
{
    Measure icarus {};
    Measure verilator {};
    Measure openocd {};
    Measure counted {};
    if (!measureTarget("icarus", configuration, wave, builds, icarus, &counted)
        || !measureTarget("verilator", configuration, wave, builds, verilator, nullptr)
        || !measureOpenOcd(counted, openocd))
        return false;
    std::printf("%s %d x %d: %d commands, %lld TCK, %.3f a data bit, %.3f a bit of memory\n", kind,
        kDepth, width, counted.commands, static_cast<long long>(counted.cycles),
        double(counted.cycles) / (double(kDepth) * width),
        double(counted.cycles) / (double(kDepth) * wordBits));
    print("an instant target", openocd, openocd);
    print("Icarus", icarus, openocd);
    print("Verilator", verilator, openocd);
    return true;
}

}

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir directory;
    const QString wave = directory.filePath("wave.vcd");
    const QString configuration = directory.filePath("c.oxa");
    bool ok = true;
    for (const int width : {32, 8}) {
        writeWaveform(wave, width);
        Messages messages;
        const auto core = standardCore(width);
        OXA::writeOXAConfigToXml({core.get()}, configuration);
        ok = ok
            && report("Standard", width, width + 1, configuration, wave,
                builtConfigurations(configuration, {core.get()}, {}, messages));
        OXA::AOCore_Lite lite;
        lite.sampleClock = "clk";
        lite.captureAmount = kDepth;
        lite.signalList = probes(width);
        OXA::writeOXAConfigToXml_Lite({&lite}, configuration);
        ok = ok
            && report("Lite", width, width, configuration, wave,
                builtConfigurations(configuration, {}, {&lite}, messages));
    }
    if (!ok)
        std::fprintf(stderr, "the capture fails\n");
    return ok ? 0 : 1;
}
