// SPDX-License-Identifier: Apache-2.0
// Captures through a UART link whose line loses, doubles or flips one of a hundred characters: how
// many are right, refused and wrong. Then the characters that reading 32 x 1024 samples takes.
//
//   capture_serial_errors [CAPTURES [SEED]]

#include "serial_bridge.h"

#include "apps/capture_fixture.h"
#include "oxacapture/target/capture_run.h"
#include "support/processes.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>

using namespace OXA_CAPTURE;

namespace {

constexpr int kMostSamples = 1024;
constexpr int kWidth = 32;
constexpr int kReads = 5; // on a busy machine the client may repeat a frame

/// Starts a target of `directory`/c.oxa; the port of its pads, 0 without one.
quint16 startTarget(Service& target, const QString& directory)
{
    target.start(OXA_PROGRAM,
        {"target", directory + "/c.oxa", "--part", kPart, "--port", "0", "--stimulus",
            directory + "/wave.vcd"});
    return target.after("waits at port ").split(';').first().toUShort();
}

/// What is captured, as CSV; nothing when the capture is refused.
QByteArray captureAt(const QString& device, const std::vector<BuiltConfiguration>& builds,
    OXA::AoCore* core, QString* error)
{
    const QTemporaryDir directory;
    ChipAddress chip;
    chip.serial = device;
    CaptureRun run;
    Messages messages;
    if (!run.find(chip, {[&builds] { return builds; }}, error)
        || !run.plan({core}, {}, {0}, messages) || !run.capture({}, error))
        return {};
    Capture capture;
    for (const CoreOutcome& outcome : run.read()) {
        *error += outcome.error;
        capture.push_back(outcome.captured);
    }
    const QString csv = directory.filePath("c.csv");
    return error->isEmpty() && writeCapture(csv, capture, error) ? bytesOf(csv) : QByteArray();
}

bool countErrors(int captures, unsigned seed)
{
    const QTemporaryDir directory;
    const QByteArray expected = modelCapture(directory.path());
    const auto core = countingCore(0, "clk");
    Messages messages;
    const auto builds
        = builtConfigurations(directory.filePath("c.oxa"), {core.get()}, {}, messages);
    Service target;
    const quint16 port = startTarget(target, directory.path());
    SerialBridge bridge;
    const QString device = bridge.start(port);
    int right = 0;
    int refused = 0;
    for (int i = 0; i < captures; ++i) {
        SerialProxy line;
        line.lost = 4;
        line.doubled = line.flipped = 3;
        QString error;
        const QByteArray captured
            = captureAt(line.start(device, seed + unsigned(i)), builds, core.get(), &error);
        right += captured == expected ? 1 : 0;
        refused += captured.isEmpty() ? 1 : 0;
        if (!error.isEmpty())
            std::printf("%s\n", qPrintable(error));
    }
    std::printf("%d captures at 1 %% damaged characters: %d right, %d refused, %d wrong\n",
        captures, right, refused, captures - right - refused);
    return port != 0 && !expected.isEmpty() && right + refused == captures;
}

bool countReadOut()
{
    const QTemporaryDir directory;
    const auto core = countingCore(0, "clk");
    core->signalList = {busOf("n", kWidth)};
    core->captureSignals = core->signalList;
    core->storageDepth = kMostSamples;
    OXA::writeOXAConfigToXml({core.get()}, directory.filePath("c.oxa"));
    writeFile(directory.filePath("wave.vcd"),
        vcdOf(OXA::flattenedNames({busOf("n", kWidth), signalOf("a,b"), signalOf("x_y")}),
            {QString(kWidth + 2, '0')}, {"clk"}));
    Service target;
    SerialBridge bridge;
    SerialProxy line;
    SerialLink link;
    AnalyzerClient client(link, {});
    std::vector<CoreIdentity> cores;
    BitString samples;
    if (!link.connectTo(
            line.start(bridge.start(startTarget(target, directory.path())), 1), OXA::kUsualBaud)
        || !client.begin() || !client.discover(cores))
        return false;
    qint64 least = 0;
    for (int i = 0; i < kReads; ++i) {
        const qint64 before = line.characters;
        if (!client.readSamples(cores.front(), kMostSamples, samples))
            return false;
        const qint64 characters = line.characters - before;
        least = i == 0 ? characters : std::min(least, characters);
    }
    std::printf("%d x %d samples: %lld characters, in both directions\n", kWidth, kMostSamples,
        static_cast<long long>(least));
    return true;
}

}

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const int captures = argc > 1 ? std::atoi(argv[1]) : 1000;
    const unsigned seed = argc > 2 ? unsigned(std::atoi(argv[2])) : 1;
    const bool ok = countErrors(captures, seed) & countReadOut();
    if (!ok)
        std::fprintf(stderr, "a capture is wrong, or the target fails\n");
    return ok ? 0 : 1;
}
