// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APPS_CAPTURE_FIXTURE_H
#define TESTS_APPS_CAPTURE_FIXTURE_H

#include "oxautils/config/standard_config.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/signals.h"
#include "support/waveforms.h"

#include <memory>
#include <random>

constexpr char kPart[] = "QX3A-10ALV-QFN88-C8";
constexpr char kDeeperPart[] = "QX1N-9LV-QFN88-C6"; // power-up takes a sample more in front
constexpr int kSamples = 500;
constexpr int kRound = 280; // of the counter

/// Two windows of 50 samples around the second of two levels. The bus n counts the samples, up to
/// kRound.
inline std::unique_ptr<OXA::AoCore> countingCore(int index, const QString& clock)
{
    const QList<OXA::SignalItem> data {busOf("n", 10), signalOf("a,b"), signalOf("top/x_y")};
    auto core = coreOf(index, data, data.first(), "0010000000", 50, 20);
    core->sampleClock = clock;
    core->triggers[1]->signalList = data.mid(1);
    enableUnit(*core, 1, 1, "1X");
    core->matchUnits[1]->counterEnable = true;
    core->matchUnits[1]->counterWidth = 4;
    core->matchUnits[1]->counter = 3;
    core->expressions = QStringList {"M0", "M1"};
    core->storageDepth = 256;
    core->windowNum = 2;
    return core;
}

/// What such cores watch; the clock "slow" ticks at every second sample.
inline QByteArray countingWaveform()
{
    std::minstd_rand random(7);
    QStringList names = OXA::flattenedNames({busOf("n", 10)});
    names += QStringList {"a,b", "x_y"};
    QStringList samples;
    for (int i = 0; i < kSamples; ++i)
        samples += QString::number(i % kRound, 2).rightJustified(10, '0')
            + QString::number(random() >> 8 & 3, 2).rightJustified(2, '0');
    return vcdOf(names, samples, {"clk", "slow"});
}

/// The CSV of what the model captures of wave.vcd by c.oxa, both in `directory`; empty when that
/// fails.
inline QByteArray modelOf(const QString& directory)
{
    const Result result = oxa({"simulate", directory + "/c.oxa", "--part", kPart, "--stimulus",
        directory + "/wave.vcd", "--model", "-o", directory + "/live.csv"});
    return result.status == 0 ? bytesOf(directory + "/live.csv") : QByteArray();
}

/// Writes the configuration c.oxa of one such core, and wave.vcd, into `directory`; `modelOf` them.
inline QByteArray modelCapture(const QString& directory)
{
    writeFile(directory + "/wave.vcd", countingWaveform());
    const auto core = countingCore(0, "clk");
    OXA::writeOXAConfigToXml({core.get()}, directory + "/c.oxa");
    return modelOf(directory);
}

#endif
