// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_CAPTURE_SESSION_H
#define OXACAPTURE_TARGET_CAPTURE_SESSION_H

#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/built_configuration.h"
#include "oxacapture/target/window_decoder.h"
#include "oxautils/generate/fingerprint.h"

#include <QElapsedTimer>

#include <functional>

namespace OXA_CAPTURE {

/// What a core that was armed is doing.
struct CoreProgress {
    /// In the order of a run.
    enum State {
        NoClock, ///< armed, but its sample clock had no edge since
        Waiting, ///< for its trigger
        Taking, ///< samples: of an open window, or of a Lite core
        Finished, ///< everything is captured
    };
    State state = NoClock; ///< when it was last read
    bool clockRan = false; ///< the sample clock had an edge since the core was armed
    bool clockRuns = false; ///< it had one within the last second
    int level = 0; ///< expressions of the sequence satisfied
    int levels = 0; ///< of the sequence; 0: only force triggers
    qint64 window = 0; ///< the window that is waited for or taken, from 0
    qint64 windows = 0; ///< number of windows of the run
    std::vector<int> units; ///< the match units' numbers
    std::vector<int> matches; ///< of each while the core waited, up to `kCountedMatches`
    qint64 complete = 0; ///< windows that `CaptureSession::readComplete` can read

    /// For users: "waiting for level 2 of 3, window 1 of 4; M0 matched 12 times".
    OXACAPTURE_EXPORT QString text() const;
    /// The problem with its sample clock; empty when that runs.
    OXACAPTURE_EXPORT QString clockText() const;
};

/// What was read out of a core.
struct ReadOut {
    std::vector<DecodedWindow> windows; ///< in the order in which they were taken
    qint64 whole = 0; ///< complete windows; a stop ended the one after them early
    /// The last samples of a core that waited for a trigger when it was stopped; may be empty.
    DecodedWindow waiting;
    bool waited = false; ///< the core waited for a trigger when it was stopped
    TriggerProgress progress; ///< how far the run got; without `firstUnknown`
};

/// A core of the session's build and its settings for a run.
struct CoreRun {
    size_t core = 0; ///< its place among the build's cores
    TriggerSetup setup; ///< of a Standard core; else not used
};

/// The analyzer in one target: finds, arms and reads its cores.
///
///     CaptureSession session(link, instruction);
///     session.begin() && session.match(builds) && session.arm(runs)
///         && session.wait(cores, goesOn) && session.stop(core) && session.read(core, readOut)
///
/// Every call returns within seconds, except `wait` and the reading of large memories on slow
/// links. When a call returns false, `error` has the reason; the session is usable while the link
/// is.
class OXACAPTURE_EXPORT CaptureSession {
public:
    /// `instruction` selects the cores' data register in the device. The link has to outlive this.
    CaptureSession(JtagLink& link, const BitString& instruction);

    /// Finds the target's cores, without changing what they do.
    bool begin();
    const std::vector<CoreIdentity>& identities() const { return m_identities; } ///< found ones
    /// What they were built from, for `OXA::rememberedBuilds`.
    const OXA::BuildSums& sums() const { return m_sums; }

    /// Finds which of `builds` the target was made from; false, with the difference, when none.
    /// Names of clocks and signals are compared when the target has sums of names.
    bool match(const std::vector<BuiltConfiguration>& builds);
    /// The one that `match` found.
    const BuiltConfiguration& build() const { return m_build; }

    /// Whether `match` could compare the names of the build's core with the target's sums of names:
    /// a target built without the file of these sums has none.
    bool knowsNames(size_t core) const { return !m_sums.names.at(int(core)).isEmpty(); }
    /// The warning about cores without sums of names; empty when all have them.
    QString namesWarning() const;

    /// What is written when a core is armed.
    enum class Written {
        All,
        /// Not the dynamic expressions, which take long: when none were written since power-up.
        Settings,
        Nothing, ///< for another run like the last one, which has been read
    };

    /// Stops the cores, writes their settings, and then arms one after the other: those that others
    /// of them force before these. False, and
    /// nothing armed, when a core is not built for its setup.
    bool arm(const std::vector<CoreRun>& runs, Written written = Written::All);

    /// Continues the power-up capture of a core, with the settings and the `powerUpPosition` that
    /// it was built with; arms the core when there is none.
    bool adopt(size_t core);

    /// The same, but false when the core's power-up capture was ended.
    bool resume(size_t core);

    /// Continues a run of a core that was armed before this session, with the settings of `run`;
    /// false when it is not armed.
    bool takeOver(const CoreRun& run);

    /// What a core that was armed is doing; false also when it is no longer armed.
    bool poll(size_t core, CoreProgress& progress);

    /// Polls `cores` until all have finished or `goesOn`, which is called each time, returns
    /// false.
    bool wait(const std::vector<size_t>& cores,
        const std::function<bool(const std::vector<CoreProgress>&)>& goesOn);

    /// The next sample is a trigger sample, unless a window is open.
    bool force(size_t core);

    /// Ends the run; what was captured is kept. No effect on a core that is not armed.
    bool stop(size_t core);

    /// Waits until a core that was stopped is at rest, which takes seven edges of its sample
    /// clock. False when that clock is stopped; then the core cannot be armed.
    bool rest(size_t core);

    /// Reads what a core captured in its last run, complete or not: nothing when its sample clock
    /// was stopped. False when the core has neither finished nor been stopped. The last samples of
    /// a core that waited for a trigger are read only `withWaiting`.
    bool read(size_t core, ReadOut& readOut, bool withWaiting = false);

    /// Reads the first `windows` windows of a core whose run may go on; they have to be complete,
    /// as `poll` told in `CoreProgress::complete`.
    bool readComplete(size_t core, qint64 windows, ReadOut& readOut);

    /// Why the last call failed.
    const QString& error() const { return m_error; }

private:
    bool fail(const QString& error);
    bool failAt(size_t core, const QString& error);
    void expectRun(size_t core);
    bool matchStructure(const std::vector<CorePlan>& cores);
    bool matchNames(const std::vector<CorePlan>& cores);
    bool checkLevels(size_t core, const TriggerSetup& setup);
    bool prepare(const CoreRun& run, Written written);
    bool readStatus(size_t core, CoreStatus& status);
    bool settle(size_t core, CoreStatus& status);
    bool failUnlessAtRest(size_t core, const CoreStatus& status);
    bool readMemory(size_t core, const CoreStatus& status, bool withWaiting, ReadOut& readOut);
    void seeClock(size_t core, const CoreStatus& status, CoreProgress& progress);

    AnalyzerClient m_client;
    std::vector<CoreIdentity> m_identities;
    OXA::BuildSums m_sums;
    BuiltConfiguration m_build;
    std::vector<TriggerSetup> m_setups; // of the runs
    std::vector<bool> m_begun; // the status showed that the arming reached the sample clock
    std::vector<bool> m_seen; // so did a snapshot
    std::vector<CoreStatus> m_before; // when it was armed
    std::vector<QElapsedTimer> m_ticked; // since the sample clock last ran; invalid: never
    QString m_error;
};

/// What was read, as it is written to files. A target does not number its samples: those of each
/// window are counted from 0.
OXACAPTURE_EXPORT CapturedCore capturedCore(
    const CorePlan& core, const ReadOut& readOut, const TriggerSetup& setup);

}

#endif
