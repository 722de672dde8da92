#ifndef OXACAPTURE_TARGET_CAPTURE_SESSION_H
#define OXACAPTURE_TARGET_CAPTURE_SESSION_H

#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/built_configuration.h"
#include "oxacapture/target/window_decoder.h"

#include <QElapsedTimer>

#include <functional>

namespace OXA_CAPTURE {

/// What a core that was armed is doing.
struct CoreProgress {
    enum State {
        NoClock, ///< armed, but its sample clock has not ticked since
        Waiting, ///< for its trigger
        Taking, ///< samples: of an open window, or of a Lite core
        Finished, ///< everything is captured
    };
    State state = NoClock;
    bool clockRan = false; ///< the sample clock, since the core was armed
    bool clockRuns = false; ///< and it did within the last second
    int level = 0; ///< expressions of the sequence satisfied
    int levels = 0; ///< of the sequence; 0: only force triggers
    qint64 window = 0; ///< the one that is waited for or taken, from 0 on
    qint64 windows = 0; ///< that the run takes
    std::vector<int> units; ///< the match units' numbers
    std::vector<int> matches; ///< of each while the core waited, up to `kCountedMatches`

    /// For its user: "waiting for level 2 of 3, window 1 of 4; M0 matched 12 times".
    OXACAPTURE_EXPORT QString text() const;
    /// What is wrong with its sample clock; empty when that runs.
    OXACAPTURE_EXPORT QString clockText() const;
};

/// What was read out of a core.
struct ReadOut {
    std::vector<DecodedWindow> windows; ///< in the order in which they were taken
    qint64 whole = 0; ///< windows that are; the one behind them was cut short by a stop
    /// The last samples of a core that waited for a trigger when it was stopped; may be none.
    SampleTable waiting;
    bool waited = false; ///< it did
    TriggerProgress progress; ///< how far the run got; without `firstUnknown`
};

/// A core of the session's build and what it is to look for in a run.
struct CoreRun {
    size_t core = 0; ///< its place among the build's cores
    TriggerSetup setup; ///< of a Standard core; else not used
};

/// The analyzer in one target, from finding it to its samples.
///
///     CaptureSession session(link, instruction);
///     session.begin() && session.match(builds) && session.arm(runs)
///         && session.wait(cores, goesOn) && session.stop(core) && session.read(core, readOut)
///
/// Every call returns within seconds, but for `wait` and what large memories take on slow links.
/// After a false one, `error` says why; the session can go on unless the link is gone.
class OXACAPTURE_EXPORT CaptureSession {
public:
    /// `instruction` selects the cores' data register in the device. The link has to stay.
    CaptureSession(JtagLink& link, const BitString& instruction);

    /// Finds the target's cores; they go on with what they do.
    bool begin();
    const std::vector<CoreIdentity>& identities() const { return m_identities; }

    /// Looks which of `builds` the target is made of; false, with what differs, when of none. Names
    /// of clocks and signals count as far as the target knows them.
    bool match(const std::vector<BuiltConfiguration>& builds);
    /// The one that `match` found.
    const BuiltConfiguration& build() const { return m_build; }

    /// Whether `match` could compare the names of the build's core with the target's: it knows none
    /// when it was built without the file of their sums.
    bool knowsNames(size_t core) const { return !m_nameSums[core].isEmpty(); }
    /// What to tell the user about cores that know no names; empty when there are none.
    QString namesWarning() const;

    /// What becomes of dynamic expressions when a core is armed. Writing them takes long; they can
    /// be kept when nobody wrote others since power-up.
    enum class Tables { Written, Kept };

    /// Ends what the cores are doing, writes their settings, and only then arms one after the
    /// other. False, and nothing armed, when a core is not built for its setup.
    bool arm(const std::vector<CoreRun>& runs, Tables tables = Tables::Written);

    /// Takes over the run that a core began by itself at power-up, with the settings and the
    /// `powerUpPosition` that it was built with; arms it when there is none.
    bool adopt(size_t core);

    /// The same, but false when the core has no such run any more.
    bool resume(size_t core);

    /// What a core that was armed is doing; false, too, when it is not armed any more.
    bool poll(size_t core, CoreProgress& progress);

    /// Polls `cores`, again and again, until all have finished or `goesOn`, which is told each
    /// time, returns false.
    bool wait(const std::vector<size_t>& cores,
        const std::function<bool(const std::vector<CoreProgress>&)>& goesOn);

    /// The next sample is a trigger, unless a window is open.
    bool force(size_t core);

    /// Ends the run; what was captured stays. Without effect on a core that is not armed.
    bool stop(size_t core);

    /// Waits until a core that was stopped keeps still, which takes seven edges of its sample
    /// clock. False when that clock stands still; then the core cannot be armed.
    bool rest(size_t core);

    /// Reads what a core captured in the run that was armed last, complete or not: nothing when its
    /// sample clock stood still. False when it has neither finished nor been stopped. What a core
    /// had that still waited is read only `withWaiting`.
    bool read(size_t core, ReadOut& readOut, bool withWaiting = false);

    /// Why the last call failed.
    const QString& error() const { return m_error; }

private:
    bool fail(const QString& error);
    bool failAt(size_t core, const QString& error);
    bool matchStructure(const std::vector<CorePlan>& cores);
    bool matchNames(const std::vector<CorePlan>& cores);
    bool checkLevels(size_t core, const TriggerSetup& setup);
    bool prepare(const CoreRun& run, Tables tables);
    bool readStatus(size_t core, CoreStatus& status);
    bool settle(size_t core, CoreStatus& status);
    bool failUnlessAtRest(size_t core, const CoreStatus& status);
    bool readMemory(size_t core, const CoreStatus& status, bool withWaiting, ReadOut& readOut);
    void seeClock(size_t core, const CoreStatus& status, CoreProgress& progress);

    AnalyzerClient m_client;
    std::vector<CoreIdentity> m_identities;
    std::vector<quint32> m_fingerprints;
    std::vector<QList<quint32>> m_nameSums;
    BuiltConfiguration m_build;
    std::vector<TriggerSetup> m_setups; // of the runs
    std::vector<bool> m_begun; // the sample clock was seen to have noticed the arming
    std::vector<CoreStatus> m_before; // when it was armed
    std::vector<QElapsedTimer> m_ticked; // since the sample clock was seen to run; invalid: never
    QString m_error;
};

/// What was read out, as it is written to files. Nothing numbers a chip's samples: those of each
/// window are counted from 0 on.
OXACAPTURE_EXPORT CapturedCore capturedCore(
    const CorePlan& core, const ReadOut& readOut, const TriggerSetup& setup);

}

#endif
