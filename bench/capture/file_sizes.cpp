// SPDX-License-Identifier: Apache-2.0
// The sizes of a capture as files, and the times to write them: 200,000 samples of a bus of 32 bits
// and two signals. The bus counts, as most buses do, or has random values, which nothing
// compresses.
#include "oxacapture/files/capture_file.h"
#include "support/signals.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <random>

using namespace OXA_CAPTURE;

namespace {

constexpr int kSamples = 200000;
constexpr int kWidth = 34;
constexpr double kMostOfVcd = 0.125; // that an FST file may have

Capture captureOf(bool random)
{
    std::mt19937_64 numbers(1);
    SampleTable table(SampleLayout({kWidth}));
    for (quint64 sample = 0; sample < kSamples; ++sample) {
        const quint64 bus = random ? numbers() & 0xffffffff : sample / 3;
        const quint64 row[] = {bus << 2 | (sample / 7 & 3), 0};
        table.append(row);
    }
    CapturedCore core;
    core.items = {busOf("count", kWidth - 2), signalOf("ready"), signalOf("valid")};
    core.windows = cutWindows(
        {
            {0, kSamples, kSamples / 2}
    },
        table);
    return {core};
}

}

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir directory;
    bool ok = true;
    for (const bool random : {false, true}) {
        const Capture capture = captureOf(random);
        double vcd = 0;
        for (const char* suffix : {"vcd", "fst", "csv", "sr"}) {
            const QString path = directory.filePath(QString("c.") + suffix);
            QElapsedTimer timer;
            timer.start();
            QString error;
            if (!writeCapture(path, capture, &error))
                return std::fprintf(stderr, "%s\n", qPrintable(error)), 1;
            const double size = double(QFileInfo(path).size());
            vcd = vcd > 0 ? vcd : size;
            ok = ok && (QString(suffix) != "fst" || size <= kMostOfVcd * vcd);
            std::printf("%-9s .%-3s  %9.0f bytes, 1/%-5.1f of the .vcd, %4lld ms\n",
                random ? "random" : "counting", suffix, size, vcd / size,
                static_cast<long long>(timer.elapsed()));
        }
    }
    return ok ? 0 : 1;
}
