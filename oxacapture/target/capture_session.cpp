// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/capture_session.h"

#include "oxautils/encoding/crc32.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/name_sums.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr int kRestPatience = 2000; // ms for the sample clock's last edges of a run
constexpr int kRestLooks = 200; // at least, because a busy machine takes longer
constexpr int kPollPause = 20; // ms
constexpr int kClockPatience = 1000; // ms without an edge until a sample clock counts as stopped

// Whether both report the same state of a run, except for whether it is still going on.
bool isSameState(const CoreStatus& a, const CoreStatus& b)
{
    return a.open == b.open && a.wentRound == b.wentRound && a.complete == b.complete
        && a.level == b.level && a.position == b.position && a.windows == b.windows
        && a.snapshot.matches == b.snapshot.matches;
}

// The difference in the names of list number `list`.
QString otherNames(const CoreIdentity& core, int list)
{
    if (list == 0)
        return "the sample clock has another name than in the chip";
    const QString what = list == 1
        ? QString("the data signals")
        : QString("the signals of trigger port %1").arg(core.ports[size_t(list) - 2].number);
    return what + " have other names or another order than in the chip";
}

}

QString CoreProgress::text() const
{
    const QString place = windows > 1
        ? QString(", window %1 of %2").arg(QString::number(window + 1), QString::number(windows))
        : QString();
    switch (state) {
    case NoClock:
        return "armed, no sample clock yet";
    case Taking:
        return "taking samples" + place;
    case Finished:
        return "captured";
    case Waiting:
        break;
    }
    const QString wanted = levels == 0
        ? QString("waiting to be forced")
        : QString("waiting for level %1 of %2")
              .arg(QString::number(level + 1), QString::number(levels));
    QStringList matched;
    for (size_t i = 0; levels > 0 && i < units.size(); ++i)
        matched += matchesText(units[i], matches[i]);
    QStringList texts {wanted + place, clockText(), matched.join(", ")};
    texts.removeAll({});
    return texts.join("; ");
}

QString CoreProgress::clockText() const
{
    return clockRuns ? ""
        : clockRan   ? "its sample clock ran, but has stopped or is very slow"
                     : "its sample clock is stopped, or very slow";
}

CaptureSession::CaptureSession(JtagLink& link, const BitString& instruction)
    : m_client(link, instruction)
{
}

bool CaptureSession::fail(const QString& error)
{
    m_error = error;
    return false;
}

bool CaptureSession::failAt(size_t core, const QString& error)
{
    return fail(m_build.cores[core].name() + ": " + error);
}

bool CaptureSession::begin()
{
    m_build = {};
    m_sums = {};
    if (!m_client.begin() || !m_client.discover(m_identities))
        return fail(m_client.error());
    for (const CoreIdentity& identity : m_identities) {
        quint32 fingerprint = 0;
        OXA::NameSums nameSums;
        if (!m_client.readFingerprint(identity.position, fingerprint)
            || !m_client.readNameSums(identity, nameSums))
            return fail(m_client.error());
        m_sums.fingerprints.push_back(fingerprint);
        m_sums.names += nameSums;
    }
    return true;
}

bool CaptureSession::match(const std::vector<BuiltConfiguration>& builds)
{
    for (const BuiltConfiguration& build : builds) {
        if (!matchStructure(build.cores))
            return false;
        if (build.fingerprints != m_sums.fingerprints)
            continue;
        if (!matchNames(build.cores))
            return false;
        m_build = build;
        for (size_t core = 0; core < build.cores.size(); ++core)
            m_client.setName(m_identities[core].position, build.cores[core].name());
        m_setups.clear();
        m_begun.assign(build.cores.size(), false);
        m_seen.assign(build.cores.size(), false);
        m_before.assign(build.cores.size(), {});
        m_ticked.assign(build.cores.size(), {});
        for (const CorePlan& core : build.cores)
            m_setups.push_back(core.setup);
        return true;
    }
    QStringList found;
    for (const quint32 fingerprint : m_sums.fingerprints)
        found += OXA::hexText(fingerprint);
    return fail(QString("the target was built from another configuration: its cores are of the same"
                        " shape, but values, expressions or memories differ (fingerprint %1)")
                    .arg(found.join(' ')));
}

bool CaptureSession::matchStructure(const std::vector<CorePlan>& cores)
{
    if (m_identities.size() != cores.size())
        return fail(QString("the target has %1 cores instead of %2")
                        .arg(QString::number(m_identities.size()), QString::number(cores.size())));
    for (size_t core = 0; core < cores.size(); ++core) {
        const CorePlan& own = cores[core];
        const QStringList others = differences(m_identities[core], identityOf(own, int(core)));
        if (!others.isEmpty())
            return fail(own.name() + ": the target was built from another configuration; it has "
                + others.join(", "));
    }
    return true;
}

bool CaptureSession::matchNames(const std::vector<CorePlan>& cores)
{
    for (size_t core = 0; core < cores.size(); ++core) {
        const SampleRequest& request = cores[core].request;
        const QList<QStringList> lists(request.fields.begin(), request.fields.end());
        const OXA::NameSums own = OXA::nameSums(request.clock, lists);
        for (int list = 0; list < own.size() && knowsNames(core); ++list) {
            if (own.at(list) != m_sums.names.at(int(core)).at(list))
                return fail(cores[core].name()
                    + ": the target was built from another"
                      " configuration: "
                    + otherNames(m_identities[core], list)
                    + "; capture with the file that the target was built from, or generate and"
                      " synthesize this one");
        }
    }
    return true;
}

QString CaptureSession::namesWarning() const
{
    QStringList unknown;
    for (size_t core = 0; core < m_build.cores.size(); ++core) {
        if (!knowsNames(core))
            unknown += m_build.cores[core].name();
    }
    return unknown.isEmpty() ? QString()
                             : unknown.join(", ") + ": names unknown: the target was built without "
            + OXA::NAME_SUMS_FILE_NAME
            + ", so it cannot be verified that its signals are those that the configuration names";
}

// Static expressions are logic; a run can only use fewer levels.
bool CaptureSession::checkLevels(size_t core, const TriggerSetup& setup)
{
    const std::vector<TriggerTable>& built = m_build.cores[core].setup.levels;
    if (m_identities[core].dynamic)
        return true;
    if (setup.levels.size() <= built.size()
        && std::equal(setup.levels.begin(), setup.levels.end(), built.begin()))
        return true;
    return failAt(core, "its expressions are static: other expressions need another netlist");
}

// Adds the runs of the cores that run `at` forces, and of those that these force, and then itself.
static void addForcedFirst(const std::vector<CoreRun>& runs, size_t at, std::vector<bool>& visited,
    std::vector<CoreRun>& ordered)
{
    if (visited[at])
        return;
    visited[at] = true;
    for (size_t i = 0; i < runs.size(); ++i) {
        if (runs[i].setup.forcedBy.contains(int(runs[at].core)))
            addForcedFirst(runs, i, visited, ordered);
    }
    ordered.push_back(runs[at]);
}

// A core takes no trigger of another one before it is armed, so it is armed before that.
static std::vector<CoreRun> armingOrder(const std::vector<CoreRun>& runs)
{
    std::vector<CoreRun> ordered;
    std::vector<bool> visited(runs.size());
    for (size_t i = 0; i < runs.size(); ++i)
        addForcedFirst(runs, i, visited, ordered);
    return ordered;
}

bool CaptureSession::arm(const std::vector<CoreRun>& runs, Written written)
{
    for (const CoreRun& run : runs) {
        if (!m_identities[run.core].lite && !checkLevels(run.core, run.setup))
            return false;
    }
    for (const CoreRun& run : runs) {
        if (!prepare(run, written))
            return false;
    }
    for (const CoreRun& run : armingOrder(runs)) {
        expectRun(run.core);
        if (!m_client.command(m_identities[run.core].position, CoreCommand::Arm))
            return fail(m_client.error());
    }
    return true;
}

// Stops the core, waits until it is at rest, and writes its settings.
bool CaptureSession::prepare(const CoreRun& run, Written written)
{
    const CoreIdentity& identity = m_identities[run.core];
    CoreStatus status;
    if ((written != Written::Nothing && !stop(run.core)) || !settle(run.core, status))
        return false;
    if (!failUnlessAtRest(run.core, status))
        return false;
    if (status.armed || status.running)
        return failAt(run.core, "it does not end its previous run");
    m_before[run.core] = status;
    if (identity.lite || written == Written::Nothing)
        return true;
    if (!m_client.writeSettings(identity, run.setup)
        || (written == Written::All && identity.dynamic
            && (identity.expressions > 0 || identity.keep == OXA::CoreStorage::When)
            && !m_client.writeTables(identity, run.setup)))
        return fail(m_client.error());
    m_setups[run.core] = run.setup;
    return true;
}

// Nothing is known of the run that the core begins or continues.
void CaptureSession::expectRun(size_t core)
{
    m_begun[core] = false;
    m_seen[core] = false;
    m_ticked[core].invalidate();
}

bool CaptureSession::adopt(size_t core)
{
    const CorePlan& own = m_build.cores[core];
    CoreStatus status;
    expectRun(core);
    if (!readStatus(core, status))
        return false;
    m_before[core] = status;
    if (!status.armed)
        return arm({
            {core, own.setup}
        });
    m_setups[core] = own.setup;
    m_setups[core].triggerPos = own.powerUpPosition;
    return true;
}

bool CaptureSession::takeOver(const CoreRun& run)
{
    CoreStatus status;
    expectRun(run.core);
    m_setups[run.core] = run.setup;
    return readStatus(run.core, status)
        && (status.armed || failAt(run.core, "it is not armed, so there is no run to stop"));
}

bool CaptureSession::resume(size_t core)
{
    CoreStatus status;
    return readStatus(core, status)
        && (status.armed
            || failAt(core, "its power-up capture was ended; load the chip again for another"))
        && adopt(core);
}

bool CaptureSession::poll(size_t core, CoreProgress& progress)
{
    CoreStatus status;
    const bool wasBegun = m_begun[core];
    if (!readStatus(core, status))
        return false;
    if (!status.armed)
        return failAt(
            core, "it is no longer armed: another program stopped it, or the chip was reset");
    const CoreSnapshot& now = status.snapshot;
    const TriggerSetup& setup = m_setups[core];
    progress.level = now.level;
    progress.levels = int(setup.levels.size());
    progress.window = now.windows;
    progress.windows = setup.windowNum;
    progress.matches = now.matches;
    progress.units.clear();
    for (const CoreIdentity::Unit& unit : m_identities[core].units)
        progress.units.push_back(unit.number);
    progress.state = status.finished          ? CoreProgress::Finished
        : !status.running                     ? CoreProgress::NoClock
        : now.open || m_identities[core].lite ? CoreProgress::Taking
                                              : CoreProgress::Waiting;
    // The status scan before asked for the snapshot: the first one may be of the run before.
    m_seen[core] = m_seen[core] || (wasBegun && now.fresh);
    const bool answers = m_seen[core] && m_identities[core].mostWindows > 1;
    progress.complete = m_identities[core].lite ? 0
        : status.finished                       ? setup.windowNum
        : answers                               ? std::min(now.windows, setup.windowNum)
                                                : 0;
    seeClock(core, status, progress);
    return true;
}

// A snapshot that is not fresh does not mean a stopped clock: a played waveform has pauses.
void CaptureSession::seeClock(size_t core, const CoreStatus& status, CoreProgress& progress)
{
    QElapsedTimer& ticked = m_ticked[core];
    if (status.snapshot.fresh || (status.running && !ticked.isValid()))
        ticked.start();
    progress.clockRan = ticked.isValid();
    progress.clockRuns = progress.clockRan && ticked.elapsed() < kClockPatience;
}

bool CaptureSession::wait(const std::vector<size_t>& cores,
    const std::function<bool(const std::vector<CoreProgress>&)>& goesOn)
{
    for (;;) {
        bool finished = true;
        std::vector<CoreProgress> all(cores.size());
        for (size_t i = 0; i < cores.size(); ++i) {
            if (!poll(cores[i], all[i]))
                return false;
            finished = finished && all[i].state == CoreProgress::Finished;
        }
        if (!goesOn(all) || finished)
            return true;
        QThread::msleep(kPollPause);
    }
}

bool CaptureSession::force(size_t core)
{
    return m_client.command(m_identities[core].position, CoreCommand::Force)
        || fail(m_client.error());
}

// Until its sample clock has had an edge after arming, a core reports the run before.
bool CaptureSession::readStatus(size_t core, CoreStatus& status)
{
    if (!m_client.readStatus(m_identities[core], status))
        return fail(m_client.error());
    m_begun[core] = m_begun[core] || (status.armed && status.running);
    return true;
}

bool CaptureSession::stop(size_t core)
{
    CoreStatus status;
    if (!readStatus(core, status))
        return false;
    return m_client.command(m_identities[core].position, CoreCommand::Stop)
        || fail(m_client.error());
}

// Waits until the core's state no longer changes.
bool CaptureSession::settle(size_t core, CoreStatus& status)
{
    const QDeadlineTimer deadline(kRestPatience);
    for (int looks = 0; looks < kRestLooks || !deadline.hasExpired(); ++looks) {
        if (!readStatus(core, status))
            return false;
        if (status.atRest())
            return true;
        QThread::msleep(1);
    }
    return true;
}

bool CaptureSession::failUnlessAtRest(size_t core, const CoreStatus& status)
{
    return status.atRest()
        || failAt(core,
            status.armed ? "it has not finished, nor was it stopped"
                         : "its sample clock is stopped, so it is not at rest");
}

bool CaptureSession::rest(size_t core)
{
    CoreStatus status;
    return settle(core, status) && failUnlessAtRest(core, status);
}

bool CaptureSession::readMemory(
    size_t core, const CoreStatus& status, bool withWaiting, ReadOut& readOut)
{
    const CoreIdentity& identity = m_identities[core];
    const TriggerSetup& setup = m_setups[core];
    const qint64 words = usedWords(identity, status, setup)
        + (withWaiting ? waitingWords(identity, status, setup) : 0);
    BitString windowWords;
    BitString memory;
    QString error;
    if ((!identity.lite && !m_client.readWindows(identity, setup.windowNum, windowWords))
        || (words > 0
            && !(samplesSuffice(identity, status, setup)
                    ? m_client.readSamples(identity, words, memory)
                    : m_client.readMemory(identity, words, memory))))
        return fail(m_client.error());
    return (decodeWindows(identity, status, setup, windowWords, memory, readOut.windows, &error)
               && (!withWaiting
                   || decodeWaiting(identity, status, setup, memory, readOut.waiting, &error)))
        || failAt(core, error);
}

bool CaptureSession::read(size_t core, ReadOut& readOut, bool withWaiting)
{
    CoreStatus status;
    if (!readStatus(core, status))
        return false;
    // A core stopped before its run was seen to begin, with an unchanged state, may report the run
    // before, at rest or not.
    const bool nothing = !status.armed && !m_begun[core]
        && (!status.atRest() || isSameState(status, m_before[core]));
    if (!nothing && !settle(core, status))
        return false;
    readOut = {};
    readOut.progress.matches.assign(m_setups[core].units.size(), 0);
    readOut.waited = !m_identities[core].lite;
    if (nothing)
        return true;
    if (!failUnlessAtRest(core, status))
        return false;
    readOut.waited = readOut.waited && !status.complete && !status.open;
    readOut.whole = status.complete ? m_setups[core].windowNum : status.windows;
    readOut.progress.reached = status.level;
    const std::vector<int>& matches = status.snapshot.matches;
    readOut.progress.matches.assign(matches.begin(), matches.end());
    return readMemory(core, status, withWaiting, readOut);
}

bool CaptureSession::readComplete(size_t core, qint64 windows, ReadOut& readOut)
{
    CoreStatus status; // as of a core that was stopped behind these windows
    status.windows = windows;
    readOut = {};
    readOut.whole = windows;
    readOut.progress.matches.assign(m_setups[core].units.size(), 0);
    return windows == 0 || readMemory(core, status, false, readOut);
}

// Its numbers count from its first sample.
static Window placeOf(const DecodedWindow& window)
{
    Window place {0, window.samples.size(), kNoSample, window.stored, window.forced, window.stamp};
    if (window.triggerOffset != kNoSample)
        place.triggerSample = place.offset(window.triggerOffset);
    return place;
}

CapturedCore capturedCore(const CorePlan& core, const ReadOut& readOut, const TriggerSetup& setup)
{
    CapturedCore captured = capturedCore(core);
    for (const DecodedWindow& window : readOut.windows)
        captured.windows.push_back({placeOf(window), window.samples});
    if (readOut.waiting.samples.size() > 0)
        captured.windows.push_back({placeOf(readOut.waiting), readOut.waiting.samples, true});
    if (!core.core)
        return captured;
    captured.progress = progressText(setup, readOut.progress);
    captured.waited = readOut.waited;
    captured.level = readOut.progress.reached;
    captured.window = readOut.whole;
    for (size_t i = 0; i < setup.units.size(); ++i)
        captured.matches.push_back({setup.units[i].index, readOut.progress.matches[i]});
    return captured;
}

}
