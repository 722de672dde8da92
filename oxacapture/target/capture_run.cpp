// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/capture_run.h"

#include "oxacapture/target/hardware_changes.h"

#include "files/fail.h"

#include <QElapsedTimer>

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr int kSearchTime = 120; // s
constexpr int kSecond = 1000; // ms
constexpr int kFollowPause = 500; // ms between two readings of a run that goes on

// True for a second longer than `goesOn`, the time to stop armed cores.
std::function<bool()> aSecondLonger(const std::function<bool()>& goesOn)
{
    return [goesOn, since = QElapsedTimer()]() mutable {
        if (!since.isValid() && !goesOn())
            since.start();
        return !since.isValid() || since.elapsed() < kSecond;
    };
}

}

bool CaptureRun::find(
    const ChipAddress& chip, const std::vector<ReadBuilds>& configurations, QString* error)
{
    m_builds = {configurations.front()()};
    setGoesOn(goesOn);
    if (chip.serial.isEmpty())
        return findThroughOpenOcd(chip, configurations, error);
    if (!m_serial.connectTo(chip.serial, chip.baud))
        return OXA::fail(error, m_serial.error());
    return search({}, configurations, error);
}

bool CaptureRun::findThroughOpenOcd(
    const ChipAddress& chip, const std::vector<ReadBuilds>& configurations, QString* error)
{
    m_openocd.setScanBits(chip.scanBits);
    if (!m_openocd.connectTo(chip.openocd))
        return OXA::fail(error, m_openocd.error());
    const QStringList taps = chip.tap.isEmpty() ? m_openocd.candidates() : QStringList(chip.tap);
    if (taps.isEmpty())
        return OXA::fail(error,
            QString("the chain has several devices; choose one of %1 with %2")
                .arg(m_openocd.taps().join(", "), chip.tapOption));
    const QDeadlineTimer deadline(qint64(kSearchTime) * kSecond);
    setGoesOn([this, deadline] { return goesOn() && !deadline.hasExpired(); });
    const bool isFound = search(taps, configurations, error);
    if (!isFound && deadline.hasExpired())
        return OXA::fail(error,
            QString("no analyzer was found within %1 s: OpenOCD answers too slowly")
                .arg(kSearchTime));
    return isFound;
}

// A device that matches a configuration comes before another one that is a remembered build.
bool CaptureRun::search(
    const QStringList& taps, const std::vector<ReadBuilds>& configurations, QString* error)
{
    const Matches given
        = [&](CaptureSession& session) { return matchesOneOf(session, configurations); };
    const Matches remembered
        = [this](CaptureSession& session) { return matchesRemembered(session); };
    return search(taps, given, error) || (m_isOtherFound && search(taps, remembered, nullptr));
}

/// Searches behind each TAP, or behind the serial port when there is none.
bool CaptureRun::search(const QStringList& taps, const Matches& matches, QString* error)
{
    if (taps.isEmpty())
        m_session = sessionBehind(m_serial, {}, matches, error);
    for (int i = 0; i < taps.size() && !m_session; ++i) {
        if (m_openocd.selectTap(taps.at(i)))
            m_session = sessionBehind(m_openocd, m_openocd.instruction(), matches, error);
        else
            OXA::fail(error, m_openocd.error());
    }
    return m_session != nullptr;
}

void CaptureRun::setGoesOn(const std::function<bool()>& goesOn)
{
    m_openocd.setGoesOn(goesOn);
    m_serial.setGoesOn(goesOn);
}

/// The analyzer behind the link, if it matches.
std::unique_ptr<CaptureSession> CaptureRun::sessionBehind(
    JtagLink& link, const BitString& instruction, const Matches& matches, QString* error)
{
    auto session = std::make_unique<CaptureSession>(link, instruction);
    if (session->begin()) {
        if (matches(*session))
            return session;
        m_isOtherFound = true;
    }
    OXA::fail(error,
        session->error().isEmpty() ? "no configuration to compare the chip with can be built"
                                   : session->error());
    return nullptr;
}

bool CaptureRun::matchesOneOf(
    CaptureSession& session, const std::vector<ReadBuilds>& configurations)
{
    for (size_t i = 0; i < configurations.size(); ++i) {
        if (i == m_builds.size())
            m_builds.push_back(configurations[i]());
        m_configuration = i;
        if (!m_builds[i].empty() && session.match(m_builds[i]))
            return true;
    }
    return false;
}

// What was remembered may be damaged, so that it has to match too.
bool CaptureRun::matchesRemembered(CaptureSession& session)
{
    for (const OXA::RememberedBuild& build : OXA::rememberedBuilds(session.sums())) {
        m_rememberedCores = std::make_unique<OXA::Configuration>();
        Messages messages;
        if (OXA::readConfiguration(build.configuration, *m_rememberedCores, nullptr)
            && session.match(builtConfigurations(build.configuration, m_rememberedCores->cores,
                m_rememberedCores->liteCores, messages))) {
            m_remembered = build;
            return true;
        }
    }
    return false;
}

bool CaptureRun::plan(const QList<OXA::AoCore*>& cores, const QList<OXA::AOCore_Lite*>& liteCores,
    const std::vector<size_t>& chosen, Messages& messages)
{
    const std::vector<CorePlan> wanted
        = corePlans(cores, liteCores, m_session->build().arg, messages);
    const std::vector<CorePlan>& built = m_session->build().cores;
    if (messages.isEmpty() && !fitsHardware(m_session->identities(), built, wanted, messages)
        && m_remembered)
        messages.append(Message {{},
            QString("the chip was built from %1; %2 is a copy of that file")
                .arg(m_remembered->text(), m_remembered->configuration)});
    m_runs.clear();
    for (size_t place = 0; place < wanted.size(); ++place) {
        if (std::find(chosen.begin(), chosen.end(), place) != chosen.end())
            m_runs.push_back({place, wanted[place].setup});
    }
    if (messages.isEmpty() && m_runs.empty())
        messages.append(Message {{}, "no core is chosen"});
    return messages.isEmpty();
}

bool CaptureRun::capture(const RunOptions& options, QString* error)
{
    setGoesOn([this, more = aSecondLonger(goesOn)] { return !isAbandoned() && more(); });
    const QDeadlineTimer deadline = options.timeout > 0 ? QDeadlineTimer(options.timeout)
                                                        : QDeadlineTimer(QDeadlineTimer::Forever);
    m_forced.assign(m_runs.size(), {});
    m_followed.assign(m_runs.size(), {});
    for (size_t i = 0; i < m_runs.size(); ++i)
        m_session->readComplete(m_runs[i].core, 0, m_followed[i]);
    m_nextFollow = {};
    const bool isArmed = start(options);
    if (isArmed)
        armed();
    if (isArmed && wait(options, deadline))
        return true;
    const QString fault = m_session->error();
    for (const CoreRun& run : m_runs)
        m_session->stop(run.core);
    return OXA::fail(error, fault);
}

bool CaptureRun::start(const RunOptions& options)
{
    const auto each
        = [this](const auto& begin) { return std::all_of(m_runs.begin(), m_runs.end(), begin); };
    if (options.powerUp)
        return each([this](const CoreRun& run) { return m_session->resume(run.core); });
    if (options.stopOnly)
        return each([this](const CoreRun& run) { return m_session->takeOver(run); });
    return m_session->arm(
        m_runs, options.again ? CaptureSession::Written::Nothing : CaptureSession::Written::All);
}

bool CaptureRun::wait(const RunOptions& options, const QDeadlineTimer& deadline)
{
    std::vector<size_t> cores;
    for (const CoreRun& run : m_runs)
        cores.push_back(run.core);
    bool first = true;
    bool works = true;
    const bool polled = m_session->wait(cores, [&](const std::vector<CoreProgress>& now) {
        m_last = now;
        tellProgress();
        const bool asked = forces() || (options.immediate && first);
        first = false;
        works = ((!asked && !options.immediate) || force(asked)) && follow();
        return works && goesOn() && !options.stopOnly && !deadline.hasExpired();
    });
    return polled && works;
}

void CaptureRun::tellProgress()
{
    QStringList texts;
    for (const CoreProgress& core : m_last)
        texts += core.text();
    if (texts != m_told)
        progress(texts);
    m_told = texts;
}

/// Triggers the cores that wait; `withoutClock` also those without a clock edge so far.
bool CaptureRun::force(bool withoutClock)
{
    for (size_t i = 0; i < m_runs.size(); ++i) {
        const bool waits = m_last[i].state == CoreProgress::Waiting
            || (withoutClock && m_last[i].state == CoreProgress::NoClock);
        if (!waits)
            continue;
        if (!m_session->force(m_runs[i].core))
            return false;
        if (m_forced[i].empty() || m_forced[i].back() != m_last[i].window)
            m_forced[i].push_back(m_last[i].window);
    }
    return true;
}

/// Reads the windows that are complete, when there are more than before and the run goes on.
bool CaptureRun::follow()
{
    bool goesOn = false;
    bool hasMore = false;
    for (size_t i = 0; i < m_runs.size(); ++i) {
        goesOn = goesOn || m_last[i].state != CoreProgress::Finished;
        hasMore = hasMore || m_last[i].complete > m_followed[i].whole;
    }
    if (!followed || !goesOn || !hasMore || !m_nextFollow.hasExpired())
        return true;
    m_nextFollow.setRemainingTime(kFollowPause);
    std::vector<CoreOutcome> outcomes;
    for (size_t i = 0; i < m_runs.size(); ++i) {
        const qint64 complete = m_last[i].complete;
        if (complete > m_followed[i].whole
            && !m_session->readComplete(m_runs[i].core, complete, m_followed[i]))
            return false;
        outcomes.push_back(outcomeOf(m_runs[i], m_followed[i]));
        outcomes.back().forced = m_forced[i];
    }
    followed(outcomes);
    return true;
}

std::vector<CoreOutcome> CaptureRun::read()
{
    // A stop ends the reading too, unless a stop has already ended the wait.
    const bool wasStopped = !goesOn();
    setGoesOn([this, wasStopped] { return !isAbandoned() && (wasStopped || goesOn()); });
    std::vector<CoreOutcome> outcomes;
    for (size_t i = 0; i < m_runs.size(); ++i) {
        outcomes.push_back(read(m_runs[i], m_last[i]));
        outcomes.back().forced = m_forced[i];
    }
    return outcomes;
}

CoreOutcome CaptureRun::outcomeOf(const CoreRun& run, const ReadOut& readOut) const
{
    const std::vector<CorePlan>& cores = m_session->build().cores;
    CoreOutcome outcome;
    outcome.run = run;
    outcome.captured = capturedCore(cores[run.core], readOut, run.setup);
    outcome.captured.forcedBy = forcingIndexes(cores, run.setup);
    outcome.captured.names = m_session->knowsNames(run.core) ? "verified" : "unknown";
    return outcome;
}

CoreOutcome CaptureRun::read(const CoreRun& run, const CoreProgress& last)
{
    const bool isFinished = last.state == CoreProgress::Finished;
    ReadOut readOut;
    if ((!isFinished && !m_session->stop(run.core)) || !m_session->read(run.core, readOut, true)) {
        CoreOutcome failed;
        failed.run = run;
        failed.finished = isFinished;
        failed.error = m_session->error();
        return failed;
    }
    CoreOutcome outcome = outcomeOf(run, readOut);
    outcome.finished = isFinished;
    QString& progress = outcome.captured.progress;
    if (!outcome.finished && !last.clockRuns)
        progress += (progress.isEmpty() ? "" : "; ") + last.clockText();
    // What was read is complete, even if the chip fails now.
    if (outcome.finished && m_session->stop(run.core))
        m_session->rest(run.core);
    return outcome;
}

}
