// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_CAPTURE_RUN_H
#define OXACAPTURE_TARGET_CAPTURE_RUN_H

#include "oxacapture/target/capture_session.h"
#include "oxacapture/target/openocd_link.h"
#include "oxacapture/target/serial_link.h"
#include "oxautils/config/configuration.h"
#include "oxautils/generate/remembered_builds.h"
#include "oxautils/generate/uart_defines.h"

#include <QDeadlineTimer>

#include <optional>

/// Captures: waveforms, the model of the trigger, targets and files of samples.
namespace OXA_CAPTURE {

/// Where the target is.
struct ChipAddress {
    QString openocd; ///< its Tcl server, as `OpenOcdLink::connectTo` takes it
    QString tap; ///< the device in the chain; empty: the one that has an analyzer
    QString tapOption; ///< the option that selects the device, for messages: "--tap"
    QString serial; ///< the serial port of an analyzer with a UART link, instead of OpenOCD
    int scanBits = 0; ///< most bits of a scan that the adapter takes; 0: any number
    int baud = OXA::kUsualBaud; ///< bits a second at which this analyzer's port starts
};

/// How the cores of a run start and end.
struct RunOptions {
    bool again = false; ///< like the last run of this object, whose cores have all finished
    /// Stop runs that are already armed: by another program, or before the link was lost.
    bool stopOnly = false;
    bool powerUp = false; ///< read their power-up capture, instead of arming them
    bool immediate = false; ///< trigger every window at once
    qint64 timeout = 0; ///< ms until cores that wait are stopped; 0: no limit
};

/// What one core captured.
struct CoreOutcome {
    CoreRun run; ///< its settings
    bool finished = false; ///< else the core was stopped
    QString error; ///< why it could not be read; else empty
    std::vector<qint64> forced; ///< windows whose trigger was forced, counted from 0
    CapturedCore captured; ///< its samples; none with an `error`
};

/// One run of the analyzer in a target, through OpenOCD or a serial port.
///
///     CaptureRun run;
///     if (run.find(chip, configurations, &error)
///         && run.plan(cores, {}, chosen, messages) && run.capture(options, &error))
///         outcomes = run.read();
///
/// The link to the target ends with the object. The hooks are called in the thread of the call.
class OXACAPTURE_EXPORT CaptureRun {
public:
    /// A configuration that the chip may be built from, by `builtConfigurations`; its cores have to
    /// outlive this object.
    using ReadBuilds = std::function<std::vector<BuiltConfiguration>()>;

    /// Called repeatedly. When it returns false, a search and a wait for triggers end; what the
    /// cores have is then read, unless the target does not answer within a second.
    std::function<bool()> goesOn = [] { return true; };
    /// Called as `goesOn` is: when it returns true, the run ends and nothing more is read.
    std::function<bool()> isAbandoned = [] { return false; };
    /// Called after each status read of the cores: when it returns true, all that wait trigger.
    std::function<bool()> forces = [] { return false; };
    /// Called when all cores are armed.
    std::function<void()> armed = [] {};
    /// Called with what all cores have so far, when one of them has completed another window and
    /// the run goes on, at most twice a second. Empty: windows are read at the end only.
    std::function<void(std::vector<CoreOutcome>& outcomes)> followed;
    /// Called with the progress of each core that runs, when that changes.
    std::function<void(const QStringList& texts)> progress = [](const QStringList&) {};

    /// Finds the device whose analyzer is built from one of `configurations`, else one that is a
    /// remembered build. A later configuration is read, once, when those before do not match.
    /// False, with `error`, after two minutes, too.
    bool find(
        const ChipAddress& chip, const std::vector<ReadBuilds>& configurations, QString* error);

    /// The analyzer that was found.
    const CaptureSession& session() const { return *m_session; }
    /// Which configuration it is built from.
    size_t configuration() const { return m_configuration; }
    /// The remembered build that it is, when it is built from none of the configurations.
    const std::optional<OXA::RememberedBuild>& remembered() const { return m_remembered; }

    /// Plans runs of the cores at the places `chosen`. `cores` or `liteCores` are all of the chip's
    /// as they are to run. False, with `messages`, when one of them needs other hardware.
    bool plan(const QList<OXA::AoCore*>& cores, const QList<OXA::AOCore_Lite*>& liteCores,
        const std::vector<size_t>& chosen, Messages& messages);

    /// What `plan` made; may be changed before `capture`.
    std::vector<CoreRun>& runs() { return m_runs; }

    /// Runs the cores until they have finished or `goesOn` returns false. False, with `error` and
    /// all of them stopped, when the target fails.
    bool capture(const RunOptions& options, QString* error);

    /// Reads the cores one after the other. Those that have not finished are stopped; all that can
    /// be read become idle.
    std::vector<CoreOutcome> read();

private:
    using Matches = std::function<bool(CaptureSession&)>;

    void setGoesOn(const std::function<bool()>& goesOn);
    bool findThroughOpenOcd(
        const ChipAddress& chip, const std::vector<ReadBuilds>& configurations, QString* error);
    bool search(
        const QStringList& taps, const std::vector<ReadBuilds>& configurations, QString* error);
    bool search(const QStringList& taps, const Matches& matches, QString* error);
    std::unique_ptr<CaptureSession> sessionBehind(
        JtagLink& link, const BitString& instruction, const Matches& matches, QString* error);
    bool matchesOneOf(CaptureSession& session, const std::vector<ReadBuilds>& configurations);
    bool matchesRemembered(CaptureSession& session);
    bool start(const RunOptions& options);
    bool wait(const RunOptions& options, const QDeadlineTimer& deadline);
    void tellProgress();
    bool force(bool withoutClock);
    bool follow();
    CoreOutcome outcomeOf(const CoreRun& run, const ReadOut& readOut) const;
    CoreOutcome read(const CoreRun& run, const CoreProgress& last);

    OpenOcdLink m_openocd;
    SerialLink m_serial;
    std::unique_ptr<CaptureSession> m_session;
    std::vector<std::vector<BuiltConfiguration>> m_builds; // of the configurations that were read
    size_t m_configuration = 0;
    std::optional<OXA::RememberedBuild> m_remembered;
    std::unique_ptr<OXA::Configuration> m_rememberedCores;
    bool m_isOtherFound = false; // an analyzer that is built from no given configuration
    std::vector<CoreRun> m_runs;
    std::vector<CoreProgress> m_last; // of the runs
    std::vector<std::vector<qint64>> m_forced; // windows of each run
    std::vector<ReadOut> m_followed; // what was read of each run while it went on
    QDeadlineTimer m_nextFollow; // before the next such reading
    QStringList m_told;
};

}

#endif
