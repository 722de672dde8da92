// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/target_capture.h"

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr int kInstructionEr1 = 0x08; // of the simulated target (docs/simulated-target.md)
constexpr int kInstructionBits = 5;
constexpr qint64 kStepsAnOrder = 5000; // between two progress reports
constexpr qint64 kFirstPause = 32; // steps between two checks whether the cores have finished

// Whether the samples of `place`, read as `samples`, are there in the waveform.
bool isAt(const SampleTable& samples, const SampleTable& waveform, const Window& place)
{
    for (qint64 sample = 0; sample < samples.size(); ++sample) {
        const quint64* read = samples.value(sample, 0);
        const quint64* there = waveform.value(place.firstSample + place.offset(sample), 0);
        if (!std::equal(read, read + samples.layout().words(0), there))
            return false;
    }
    return true;
}

}

qint64 stepOfSample(const SampledWaveform& waveform, const SampleRequest& request, qint64 sample)
{
    const int clock = waveform.clocks.indexOf(request.clock);
    qint64 step = -1;
    qint64 taken = 0;
    for (const ClockEdge& edge : waveform.edges) {
        step += edge.sameTime ? 0 : 1;
        if (edge.clock == clock && edge.level != request.fallingEdge && taken++ == sample)
            return step;
    }
    return -1;
}

TargetCapture::TargetCapture(SimulatedTarget& target, const std::vector<CorePlan>& built,
    const std::vector<CorePlan>& cores, const SampledWaveform& waveform)
    : m_target(target)
    , m_session(target.jtag(), BitString(kInstructionEr1, kInstructionBits))
    , m_built(built)
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
    BuiltConfiguration built;
    built.cores = m_built;
    QString error;
    if (!generatedFingerprints(generatedDir, m_built, built.fingerprints, &error))
        return fail(error);
    return (m_session.begin() && m_session.match({built})) || fail(m_session.error());
}

bool TargetCapture::play(qint64 steps)
{
    while (steps > 0) {
        const qint64 now = std::min(steps, kStepsAnOrder);
        if (!m_target.play(now))
            return fail(m_target.error());
        steps -= now;
        m_played += now;
        if (m_progress && !m_progress(int(std::min<qint64>(100, 100 * m_played / m_toPlay))))
            return fail({});
    }
    return true;
}

// A core that runs from power-up on has had no clock edge yet: it can continue, or be stopped,
// which takes some edges, and armed again.
bool TargetCapture::arm(qint64 leadIn)
{
    std::vector<CoreRun> runs;
    for (size_t core = 0; core < m_cores.size(); ++core) {
        const bool isArmed = m_session.identities()[core].armedAtPowerUp;
        if (isArmed && !(leadIn > 0 ? m_session.stop(core) : m_session.adopt(core)))
            return fail(m_session.error());
        if (!isArmed || leadIn > 0)
            runs.push_back({core, m_cores[core].setup});
    }
    const auto written
        = &m_built == &m_cores ? CaptureSession::Written::Settings : CaptureSession::Written::All;
    return play(leadIn) && (m_session.arm(runs, written) || fail(m_session.error()));
}

// To a step of the waveform, unless that was played.
bool TargetCapture::playTo(qint64 step) { return play(m_steps.leadIn + step - m_played); }

bool TargetCapture::haveFinished(bool& finished)
{
    finished = true;
    for (size_t core = 0; finished && core < m_cores.size(); ++core) {
        CoreProgress progress;
        if (!m_session.poll(core, progress))
            return fail(m_session.error());
        finished = progress.state == CoreProgress::Finished;
    }
    return true;
}

// A check takes as long as hundreds of steps.
bool TargetCapture::playUntilFinished(bool& finished)
{
    finished = false;
    qint64 pause = kFirstPause;
    for (qint64 next = m_steps.expected; next < m_steps.waveform && !finished; next += pause) {
        if (!playTo(next) || !haveFinished(finished))
            return false;
        m_toPlay = m_steps.leadIn + m_steps.waveform + m_steps.leadOut;
        pause *= 2;
    }
    return finished || playTo(m_steps.waveform);
}

bool TargetCapture::run(const PlayedSteps& steps, qint64 forceAt, const Progress& progress)
{
    m_steps = steps;
    m_progress = progress;
    m_played = 0;
    m_toPlay = steps.leadIn + steps.expected;
    if (!arm(steps.leadIn))
        return false;
    std::vector<std::pair<qint64, size_t>> forces;
    for (size_t core = 0; forceAt >= 0 && core < m_cores.size(); ++core)
        forces.emplace_back(stepOfSample(m_waveform, m_cores[core].request, forceAt), core);
    std::sort(forces.begin(), forces.end());
    for (const auto& [step, core] : forces) {
        if (step >= 0 && !playTo(step))
            return false;
        if (step >= 0 && !m_session.force(core))
            return fail(m_session.error());
    }
    bool finished = false;
    if (!playUntilFinished(finished))
        return false;
    for (size_t core = 0; !finished && core < m_cores.size(); ++core) {
        if (!m_session.stop(core))
            return fail(m_session.error());
    }
    return finished || play(steps.leadOut);
}

bool TargetCapture::read(size_t core, const std::vector<Window>& expected, ModelRun& captured)
{
    ReadOut readOut;
    if (!m_session.read(core, readOut))
        return fail(m_session.error());
    captured = {};
    captured.progress = readOut.progress;
    const std::vector<DecodedWindow>& windows = readOut.windows;
    qint64 earliest = 0;
    for (size_t i = 0; i < windows.size(); ++i) {
        Window place;
        place.firstSample = i < expected.size() ? expected[i].firstSample : earliest;
        place.samples = windows[i].samples.size();
        place.stored = windows[i].stored;
        place.forced = windows[i].forced;
        place.stamp = windows[i].stamp;
        // A core that stores no gaps does not tell the distances.
        if (place.stored.empty() && i < expected.size())
            place.stored = expected[i].stored;
        if (!locate(core, windows[i], earliest, place))
            return failAt(core, QString("the samples of window %1 are not in the waveform").arg(i));
        captured.windows.push_back(place);
        earliest = place.firstSample + place.span();
    }
    return true;
}

bool TargetCapture::locate(size_t core, const DecodedWindow& window, qint64 earliest, Window& place)
{
    const SampleTable& waveform = m_waveform.cores[core];
    const qint64 last = waveform.size() - place.span();
    if (place.firstSample < earliest || place.firstSample > last
        || !isAt(window.samples, waveform, place)) {
        place.firstSample = earliest;
        while (place.firstSample <= last && !isAt(window.samples, waveform, place))
            ++place.firstSample;
    }
    place.triggerSample = window.triggerOffset == kNoSample
        ? kNoSample
        : place.firstSample + place.offset(window.triggerOffset);
    return place.firstSample <= last;
}

}
