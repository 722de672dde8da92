// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/probe.h"

#include "files/fail.h"

#include <QElapsedTimer>

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr int kLeastDelay = 64; // cycles of TCK before a read of the status
constexpr int kMostDelay = 1 << 16;
constexpr int kEdges = 3; // of the sample clock, from a request for a snapshot to its arrival
// Cycles of TCK in which a snapshot can arrive, from the end of one read to bit 4 of the next:
// those of the address, less those of the two crossings.
constexpr int kLeastCycles = 16;
constexpr double kSecond = 1e9; // ns

// Reads the status until its snapshot is fresh or the clock stands. `request` is the time since a
// read that requested a snapshot began; invalid when that is not known.
bool watchUntilFresh(
    AnalyzerClient& client, const CoreIdentity& core, QElapsedTimer& request, ProbedClock& clock)
{
    const int repeats = client.repeats();
    QElapsedTimer patience;
    patience.start();
    qint64 cycles = 0; // in which no snapshot arrived
    CoreStatus status;
    for (int delay = 0; patience.elapsed() < kStandingTime;
         delay = std::clamp(2 * delay, kLeastDelay, kMostDelay)) {
        QElapsedTimer thisRead;
        thisRead.start();
        if (!client.readStatus(core, status, delay))
            return false;
        if (status.snapshot.fresh) {
            clock.state = ProbedClock::Running;
            if (request.isValid())
                clock.leastHz = (kEdges - 1) * kSecond / double(request.nsecsElapsed());
            request = thisRead;
            return true;
        }
        cycles += (cycles > 0 ? statusBits(core) : 0) + kLeastCycles + delay;
        // A read that has to be repeated may have requested another snapshot.
        clock.mostOfTck = client.repeats() == repeats ? kEdges / double(cycles) : 0;
    }
    clock.state = ProbedClock::Standing;
    return true;
}

// A Lite core shows its clock only by its progress.
bool watchLite(AnalyzerClient& client, const ProbedCore& core, ProbedClock& clock)
{
    if (!core.status.armed || core.status.finished)
        return true;
    QElapsedTimer patience;
    patience.start();
    CoreStatus now = core.status;
    const auto hasMoved = [&] {
        return now.running != core.status.running || now.finished
            || now.position != core.status.position;
    };
    while (!hasMoved() && patience.elapsed() < kStandingTime) {
        if (!client.readStatus(core.identity, now))
            return false;
    }
    clock.state = hasMoved() ? ProbedClock::Running : ProbedClock::Standing;
    return true;
}

bool watchClock(AnalyzerClient& client, ProbedCore& core)
{
    if (core.identity.lite)
        return watchLite(client, core, core.clock);
    // The first fresh snapshot may have been requested long ago.
    QElapsedTimer request;
    ProbedClock first;
    if (!watchUntilFresh(client, core.identity, request, first))
        return false;
    if (first.state == ProbedClock::Running)
        return watchUntilFresh(client, core.identity, request, core.clock);
    core.clock = first;
    return true;
}

void probeDevice(JtagLink& link, const BitString& instruction,
    const std::vector<std::vector<BuiltConfiguration>>& configurations, ProbedDevice& device)
{
    CaptureSession session(link, instruction);
    if (!session.begin()) {
        device.error = session.error();
        return;
    }
    AnalyzerClient client(link, instruction);
    for (size_t i = 0; i < session.identities().size(); ++i) {
        ProbedCore core;
        core.identity = session.identities()[i];
        core.fingerprint = session.sums().fingerprints[i];
        core.names = session.sums().names.at(int(i));
        if (!client.readStatus(core.identity, core.status) || !watchClock(client, core)) {
            device.error = client.error();
            return;
        }
        device.cores.push_back(core);
    }
    device.remembered = OXA::rememberedBuilds(session.sums());
    for (const std::vector<BuiltConfiguration>& builds : configurations)
        device.differences += session.match(builds) ? QString() : session.error();
}

bool probeChain(OpenOcdLink& link, const ChipAddress& chip,
    const std::vector<std::vector<BuiltConfiguration>>& configurations,
    std::vector<ProbedDevice>& devices, QString* error)
{
    link.setScanBits(chip.scanBits);
    if (!link.connectTo(chip.openocd) || (!chip.tap.isEmpty() && !link.selectTap(chip.tap)))
        return OXA::fail(error, link.error());
    const QStringList tried = chip.tap.isEmpty() ? link.candidates() : QStringList(chip.tap);
    for (const QString& tap : link.taps()) {
        ProbedDevice device;
        device.name = tap;
        device.idCode = link.idCode(tap);
        if (tried.contains(tap) && link.selectTap(tap)) {
            const BitString instruction = link.instruction();
            device.instruction
                = QString("0x%1").arg(instruction.number(0, instruction.size()), 2, 16, QChar('0'));
            probeDevice(link, instruction, configurations, device);
        }
        devices.push_back(device);
    }
    return true;
}

}

bool probe(const ChipAddress& chip,
    const std::vector<std::vector<BuiltConfiguration>>& configurations,
    const std::function<bool()>& goesOn, std::vector<ProbedDevice>& devices, QString* error)
{
    devices.clear();
    if (chip.serial.isEmpty()) {
        OpenOcdLink link;
        link.setGoesOn(goesOn);
        return probeChain(link, chip, configurations, devices, error);
    }
    SerialLink link;
    link.setGoesOn(goesOn);
    if (!link.connectTo(chip.serial, chip.baud))
        return OXA::fail(error, link.error());
    ProbedDevice device;
    device.name = chip.serial;
    probeDevice(link, {}, configurations, device);
    devices.push_back(device);
    return true;
}

}
