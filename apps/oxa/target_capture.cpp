#include "target_capture.h"

#include "capture/fingerprint.h"

#include <algorithm>

using namespace OXA_CAPTURE;

namespace {

constexpr int kInstructionEr1 = 0x08; // of the simulated target (docs/simulated-target.md)
constexpr int kInstructionBits = 5;
constexpr qint64 kStepsAnOrder = 5000; // between two reports of progress
constexpr int kMostStatusReads = 16; // until a stopped core is at rest

/// The step of the stimulus at which each core takes its sample `sample`; none past the last one.
std::vector<std::pair<qint64, size_t>> stepsOfSample(
    const SampledWaveform& waveform, const std::vector<SimulatedCore>& cores, qint64 sample)
{
    std::vector<std::pair<qint64, size_t>> steps;
    std::vector<qint64> taken(cores.size());
    qint64 step = -1;
    for (const ClockEdge& edge : waveform.edges) {
        step += edge.sameTime ? 0 : 1;
        for (size_t core = 0; core < cores.size(); ++core) {
            const SampleRequest& request = cores[core].request;
            if (waveform.clocks.at(edge.clock) == request.clock && edge.level != request.fallingEdge
                && taken[core]++ == sample)
                steps.emplace_back(step, core);
        }
    }
    return steps;
}

bool isAt(const SampleTable& samples, const SampleTable& waveform, qint64 first)
{
    for (qint64 sample = 0; sample < samples.size(); ++sample) {
        const quint64* read = samples.value(sample, 0);
        const quint64* there = waveform.value(first + sample, 0);
        if (!std::equal(read, read + samples.layout().words(0), there))
            return false;
    }
    return true;
}

}

TargetCapture::TargetCapture(SimulatedTarget& target, const std::vector<SimulatedCore>& cores,
    const SampledWaveform& waveform)
    : m_target(target)
    , m_client(target.jtag(), BitString(kInstructionEr1, kInstructionBits))
    , m_cores(cores)
    , m_waveform(waveform)
{
}

bool TargetCapture::fail(const QString& error)
{
    m_error = error;
    return false;
}

bool TargetCapture::failAt(size_t core, const QString& error)
{
    return fail(m_cores[core].name() + ": " + error);
}

bool TargetCapture::begin(const QString& generatedDir)
{
    if (!m_client.begin() || !m_client.discover(m_identities))
        return fail(m_client.error());
    if (m_identities.size() != m_cores.size())
        return fail(QString("the target has %1 cores instead of %2")
                        .arg(m_identities.size())
                        .arg(m_cores.size()));
    for (size_t core = 0; core < m_cores.size(); ++core) {
        if (!checkCore(core, generatedDir))
            return false;
    }
    return true;
}

bool TargetCapture::checkCore(size_t core, const QString& generatedDir)
{
    const SimulatedCore& own = m_cores[core];
    const QStringList others = own.core ? differences(m_identities[core], *own.core)
                                        : differences(m_identities[core], *own.lite);
    if (!others.isEmpty())
        return failAt(
            core, "the target was built from another configuration; it has " + others.join(", "));
    quint32 wanted = 0;
    quint32 found = 0;
    QString error;
    const bool known = own.core
        ? generatedFingerprint(generatedDir, int(core), *own.core, wanted, error)
        : generatedLiteFingerprint(generatedDir, wanted, error);
    if (!known)
        return failAt(core, error);
    if (!m_client.readFingerprint(int(core), found))
        return fail(m_client.error());
    return found == wanted
        || failAt(core,
            QString("the target was built from another configuration or for another part; its"
                    " fingerprint is %1 instead of %2")
                .arg(found, 8, 16, QChar('0'))
                .arg(wanted, 8, 16, QChar('0')));
}

bool TargetCapture::commandAll(CoreCommand command)
{
    for (const CoreIdentity& core : m_identities) {
        if (!m_client.command(core.position, command))
            return fail(m_client.error());
    }
    return true;
}

bool TargetCapture::play(qint64 steps)
{
    while (steps > 0) {
        const qint64 now = std::min(steps, kStepsAnOrder);
        if (!m_target.play(now))
            return fail(m_target.error());
        steps -= now;
        m_played += now;
        if (m_progress && !m_progress(int(100 * m_played / m_toPlay)))
            return fail({});
    }
    return true;
}

bool TargetCapture::run(qint64 steps, qint64 leadOut, qint64 forceAt, const Progress& progress)
{
    m_progress = progress;
    m_played = 0;
    m_toPlay = steps + leadOut;
    for (const CoreIdentity& core : m_identities) {
        CoreStatus status;
        // What is armed from power-up on has not seen a clock yet.
        if (!m_client.readStatus(core, status)
            || (!status.armed && !m_client.command(core.position, CoreCommand::Arm)))
            return fail(m_client.error());
    }
    for (const auto& [step, core] : stepsOfSample(m_waveform, m_cores, forceAt)) {
        if (!play(step - m_played))
            return false;
        if (!m_client.command(int(core), CoreCommand::Force))
            return fail(m_client.error());
    }
    return play(steps - m_played) && commandAll(CoreCommand::Stop) && play(leadOut);
}

bool TargetCapture::readWindows(
    size_t core, const CoreStatus& status, std::vector<DecodedWindow>& windows)
{
    const CoreIdentity& identity = m_identities[core];
    const TriggerSetup& setup = m_cores[core].setup;
    const qint64 words = usedWords(identity, status, setup);
    BitString shortOnes;
    BitString memory;
    QString error;
    if ((!identity.lite && !m_client.readWindows(identity, setup.windowNum, shortOnes))
        || (words > 0 && !m_client.readMemory(identity, words, memory)))
        return fail(m_client.error());
    return decodeWindows(identity, status, setup, shortOnes, memory, windows, error)
        || failAt(core, error);
}

bool TargetCapture::read(size_t core, const std::vector<Window>& expected, ModelRun& captured)
{
    CoreStatus status;
    int reads = 0;
    do {
        if (!m_client.readStatus(m_identities[core], status))
            return fail(m_client.error());
    } while (!status.atRest() && ++reads < kMostStatusReads);
    if (!status.atRest())
        return failAt(core, "it does not stop");

    captured = {};
    captured.progress.reached = status.level;
    captured.progress.matches.assign(status.matches.begin(), status.matches.end());
    std::vector<DecodedWindow> windows;
    if (!readWindows(core, status, windows))
        return false;
    qint64 earliest = 0;
    for (size_t i = 0; i < windows.size(); ++i) {
        const qint64 guess = i < expected.size() ? expected[i].firstSample : earliest;
        Window place;
        if (!locate(core, windows[i], earliest, guess, place))
            return failAt(core, QString("the samples of window %1 are not in the waveform").arg(i));
        captured.windows.push_back(place);
        earliest = place.firstSample + place.samples;
    }
    return true;
}

bool TargetCapture::locate(
    size_t core, const DecodedWindow& window, qint64 earliest, qint64 guess, Window& place)
{
    const SampleTable& waveform = m_waveform.cores[core];
    const qint64 last = waveform.size() - window.samples.size();
    place.samples = window.samples.size();
    place.firstSample = guess;
    if (guess < earliest || guess > last || !isAt(window.samples, waveform, guess)) {
        place.firstSample = earliest;
        while (place.firstSample <= last && !isAt(window.samples, waveform, place.firstSample))
            ++place.firstSample;
    }
    place.triggerSample
        = window.triggerOffset == kNoSample ? kNoSample : place.firstSample + window.triggerOffset;
    return place.firstSample <= last;
}
